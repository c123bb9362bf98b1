#pragma once

#include <cstdint>

#include "surface/raster/Color.h"

namespace zelvane {

/// How bright a colour is: (150 green + 76 red + 28 blue) / 255, rounded. 0 to 254, as the weights make 254.
int16_t GreyValue(Color color);

/// Gives each pixel of the active document's live layer its brightness in the tone of the menu's entry
/// `Index`: 0 grey; 2, 5, 8 from red, green, blue to white; 3, 6, 9 from black to red, green, blue. The main
/// window shows how far it is and takes no input meanwhile.
void Greyscale_Click(int16_t Index);

}  // namespace zelvane
