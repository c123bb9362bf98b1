#pragma once

#include "tools/Stroke.h"

/// What the tools share that span a box from the press to the pointer.
namespace zelvane {

/// Spans the overlay from the press to the pointer, in whichever direction. A pointer's place
/// beyond 16 bits leaves the side that it was to set, and only that.
void SpanBox(ShapeOverlay& box, const Stroke& stroke);

/// Spans a marquee likewise, clipped to the picture and on whole pixels of it.
void SpanMarquee(ShapeOverlay& marquee, const Stroke& stroke);
/// The image pixels that a marquee stands on.
Rect PixelsOf(const ShapeOverlay& marquee, Single R);
/// The pointer is more than one pixel from the press on either axis; anything less is a click.
bool IsDragged(const Stroke& stroke);

/// Fill style, fill colour and width of both layers by the style of the Rectangle and the Circle tool.
void SetBoxStyle(const Stroke& stroke, double border_width);

}  // namespace zelvane
