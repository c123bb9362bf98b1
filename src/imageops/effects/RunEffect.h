#pragma once

#include <string>
#include <vector>

namespace zelvane {

/// The file names of the effect programs, sorted without regard to case.
std::vector<std::string> EffectPrograms();
/// "sharpen.exe" is called "Sharpen".
std::string EffectName(const std::string& fileName);

/// Has the program of that file name work on the live layer of the active document, and returns once it has
/// ended. The main window is disabled meanwhile.
///
/// The program gets the path of a bitmap file as its one argument. What stands there in the end becomes the
/// picture, which counts as changed and can be undone; what can't be read leaves the pixels as they are. No
/// file, or a program that the person has stopped, changes nothing. What "rotate.exe" leaves becomes a
/// document in place of the active one. Does nothing without a document, while a stroke runs, or while the
/// main window is disabled.
void RunEffect(const std::string& fileName);

}  // namespace zelvane
