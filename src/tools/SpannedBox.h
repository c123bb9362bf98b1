#pragma once

#include "tools/Stroke.h"

/// What the tools share that span a box from the press to the pointer.
namespace zelvane {

/// Spans the overlay from the press to the pointer, in whichever direction. A coordinate beyond 16 bits
/// leaves what it was to set.
void SpanBox(ShapeOverlay& box, const Stroke& stroke);

/// Fill style, fill colour and width of both layers by the style of the Rectangle and the Circle tool.
void SetBoxStyle(const Stroke& stroke, double border_width);

}  // namespace zelvane
