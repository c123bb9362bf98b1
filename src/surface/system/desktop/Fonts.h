#pragma once

#include <string>
#include <vector>

namespace zelvane {

/// A font of the screen. How far its lines reach is told in sizes of the font.
struct ScreenFont {
  std::string name;  ///< of the family
  double above = 0;  ///< the line
  double below = 0;
};

/// Begins to read the font configuration, which the first text on the screen needs, on a thread of its own:
/// it takes about as long as the toolkit takes to reach the desktop. Needs nothing of the toolkit.
void ReadFontsAhead();

/// The fonts that can be loaded, sorted as people read them; never none, as there's always one that the
/// desktop falls back on. Each call asks the system anew.
std::vector<ScreenFont> ScreenFonts();

}  // namespace zelvane
