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

/// The fonts that can be loaded, sorted as people read them; never none, as there's always one that the
/// desktop falls back on. Each call asks the system anew.
std::vector<ScreenFont> ScreenFonts();

}  // namespace zelvane
