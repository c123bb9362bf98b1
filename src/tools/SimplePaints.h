#pragma once

#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {

/// The tool engine: one call for each press, drag step and release on a picture. `Surface` is the document's
/// `Buffer`, (X, Y) the pointer in image pixels, `Zoom` in percent; `Down` is false on the release only.
/// Writes neither `Dirty` nor the undo layer.
void ApplyTool(PictureSurface& Surface, int16_t X, int16_t Y, double Zoom, bool Down);

}  // namespace zelvane
