#pragma once

#include <vector>

/// The screen that the program shows on.
namespace zelvane::Screen {

/// Twips.
double Width();
double Height();
/// What the desktop leaves free of panels, in twips.
double WorkAreaWidth();
double WorkAreaHeight();
/// What a window's title bar adds to its height, in twips: as much as desktops have, or so.
inline constexpr double kTitleBar = 450;
/// A part of the desktop, in twips.
struct Area {
  double left = 0, top = 0, width = 0, height = 0;
  friend bool operator==(const Area&, const Area&) = default;
};
/// What the desktop leaves free of panels on each screen.
std::vector<Area> WorkAreas();
/// The area moved by as little as brings all of it onto `screens`, which may stand side by side; its top left
/// where it's larger than any. It stays where there is no screen.
Area BroughtOnto(const std::vector<Area>& screens, Area area);

/// Logical pixels of the screen.
struct Point {
  int x = 0, y = 0;
};
Point CursorPosition();

}  // namespace zelvane::Screen
