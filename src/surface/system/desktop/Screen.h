#pragma once

#include <string>
#include <vector>

/// The screen that the program shows on.
namespace zelvane::Screen {

/// Twips.
double Width();
double Height();
/// What the desktop leaves free of panels, in twips.
double WorkAreaWidth();
double WorkAreaHeight();
/// Names of the fonts, sorted.
std::vector<std::string> Fonts();

/// Logical pixels of the screen.
struct Point {
  int x = 0, y = 0;
};
Point CursorPosition();

}  // namespace zelvane::Screen
