#pragma once

#include <string>

#include "surface/system/desktop/Instance.h"

/// The program runs once: what is started later hands its picture to the instance that runs. The picture
/// waits there until the interface stands, no handler is running, and the main window takes input.
namespace zelvane {

/// This process's place among the instances.
inline Instance ThisInstance;

/// Begins this instance, before there is anything of the toolkit. True where another one has opened the
/// picture, "" for none, and this process has nothing left to do. Who started it doesn't wait for that: once
/// the picture is taken, a copy of the process stands by unseen, and goes on here where the other one ends
/// without having opened it. One that doesn't answer is left alone after three seconds.
bool HandOver(const std::string& path);

/// From now on later starts are answered. Each brings the main window to the front.
void ListenToStarts();
/// The interface stands and is free: from here on, what waits opens.
void OpenHandedOver();
/// Later starts are on their own, and so are those whose pictures still wait.
void EndHandOver();

}  // namespace zelvane
