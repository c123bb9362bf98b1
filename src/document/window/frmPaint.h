#pragma once

#include "document/layers/ImageDocument.h"
#include "document/window/ViewScroller.h"
#include "surface/forms/controls/Timer.h"

namespace zelvane {

/// The window of a document: turns pointer events on the picture into strokes, and asks before it goes.
class frmPaint final : public ImageDocument {
 public:
  frmPaint();

  void ChangeZoomFactor() override;
  void Form_Activate() override;
  void ShowReach() override;

 private:
  void PaintArea_MouseDown(int16_t Button, Single X, Single Y);
  void PaintArea_MouseMove(Single X, Single Y);
  void PaintArea_MouseUp(int16_t Button, Single X, Single Y);
  void PaintArea_GotFocus();
  void PaintArea_MouseWheel(int16_t Shift, Single across, Single along);
  void PaintArea_KeyDown(int16_t KeyCode, int16_t Shift);

  void ShowImageInfo();
  void EndStroke(int16_t Button, Single X, Single Y);
  bool Magnify(int16_t Button);
  void Relay(double vertical, double horizontal);
  void ShowZoomInBox();
  void ShowArea(Single X, Single Y);
  void ShowCoords(Single X, Single Y);
  void ZoomAtPointer(int16_t Button);
  void ScrollWithStroke();
  void ShowCaret();
  void ViewMoved();
  void PaintAt(Single X, Single Y);

  ViewScroller Scroller{*this};
  IntervalTimer EdgeTimer;       ///< runs while a stroke is held beyond the edge of the view
  bool pointer_inside_ = false;  ///< it has moved over the picture since it left
};

}  // namespace zelvane
