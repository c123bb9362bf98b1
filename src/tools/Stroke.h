#pragma once

#include "document/layers/ImageDocument.h"
#include "shell/state/State.h"

namespace zelvane {

/// One call of the tool engine: what the pointer did, and what all tools derive from it.
struct Stroke {
  ImageDocument& Document;
  PictureSurface& Surface;  ///< the document's `Buffer`
  int16_t X, Y;             ///< the pointer in image pixels, wherever it is
  bool Down;                ///< true on press and drag, false on release
  int16_t Z;                ///< whole zoom multiple, image pixels to `PaintArea` units
  Single R;                 ///< 100 / zoom, the way back
};

/// Where a tool draws: the picture, or the floating selection with its place taken off.
struct Target {
  PictureSurface& Layer;
  Single Left, Top;

  Single X(Single x) const { return x - Left; }
  Single Y(Single y) const { return y - Top; }
};

/// `BufferSelected` while `SelectArea` is visible, else `Surface`; asked at the moment of drawing.
Target TargetOf(const Stroke& stroke);

/// The current colour of the stroke's button: foreground for the left one, background for any other.
Color StrokeColor();
/// The other of the two current colours.
Color OtherColor();

/// The current point of the surface is more than half a pixel from (X, Y) on either axis.
bool PointerMoved(const PictureSurface& Surface, int16_t X, int16_t Y);

/// `DrawWidth` of both layers, for `Surface` as a whole number.
void SetDrawWidths(const Stroke& stroke, double width);

/// A stroke of a pen through the target's current point: a line to the pointer where it has moved, else a
/// dot, which a release leaves out.
void DrawFreehand(const Stroke& stroke);

/// Spans `FollowLine` from the press to the pointer and shows it.
void ShowFollowLine(const Stroke& stroke);

// The tools, one source each.
void CursorTool(const Stroke& stroke);
void PenTool(const Stroke& stroke);
void FloodfillTool(const Stroke& stroke);
void GradientTool(const Stroke& stroke);
void SelectAreaTool(const Stroke& stroke);
void AirbrushTool(const Stroke& stroke);
void CropTool(const Stroke& stroke);
void EyedropperTool(const Stroke& stroke);
void RectangleTool(const Stroke& stroke);
void CircleTool(const Stroke& stroke);
void BrightenTool(const Stroke& stroke);
void TextTool(const Stroke& stroke);
void BlurTool(const Stroke& stroke);
void EraserTool(const Stroke& stroke);

}  // namespace zelvane
