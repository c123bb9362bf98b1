#pragma once

#include "surface/system/files/PictureFile.h"

namespace zelvane {

/// Shows how far a reading is and lets events run until it's done, or the person gives it up by Esc or the
/// window's close. For `OnLongReading`.
void ShowReading(PictureReading& reading);

}  // namespace zelvane
