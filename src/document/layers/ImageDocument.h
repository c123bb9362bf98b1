#pragma once

#include <cstdint>
#include <optional>

#include "files/CImageInfo.h"
#include "surface/forms/controls/MultilineTextBox.h"
#include "surface/forms/controls/Panel.h"
#include "surface/forms/controls/ScrollBar.h"
#include "surface/forms/controls/TextRuler.h"
#include "surface/forms/picture/Overlay.h"
#include "surface/forms/picture/PictureSurface.h"
#include "surface/forms/picture/PictureView.h"
#include "surface/forms/windows/MdiForm.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane {

/// One open picture: a child window of the main window with its layers and overlays. There is no picture
/// apart from the window. Layers measure in image pixels, `PaintArea` and its overlays in image pixels times
/// the zoom multiple.
///
/// While `SelectArea` is visible a floating selection exists: its pixels are in `BufferSelected` and, from
/// the next `RefreshPaintArea` on, also in `Buffer`; `SelectedBack` holds what must return when it moves. A
/// marquee that is still being drawn has lifted nothing: `BufferSelected` is empty.
class ImageDocument : public MdiChild {
 public:
  ImageDocument();

  bool Dirty = false;                   ///< changed since it was last saved
  bool OpenedFile = false;              ///< came in by the open dialog
  FileState File;                       ///< the file as it was read or written last
  std::optional<CImageInfo> ImageInfo;  ///< of the file; none before it's first needed
  int32_t StartX = 0, StartY = 0;       ///< image position of the last press
  double Zoom = 100;                    ///< percent, 100 to 800 in steps of 100
  bool Down = false;                    ///< button 1 or 2 is held on `PaintArea`
  bool ZoomBusy = false;                ///< the document itself moves the zoom box

  Panel Back;             ///< the viewport that clips `PaintArea`
  PictureView PaintArea;  ///< the picture at the zoom; receives all pointer events
  PictureSurface Buffer;  ///< the picture; its `Tag` is the file's path, empty for one never saved
  PictureSurface BufferSelected, SelectedBack;  ///< the floating selection, and what lies beneath it
  PictureSurface Undo;                          ///< the one undo level
  MultilineTextBox TextInput;                   ///< the text being typed by the Text tool
  TextRuler lblTextSize;                        ///< measures it, with one letter more
  ShapeOverlay SelectArea, CropArea;            ///< marquees
  ShapeOverlay DrawBox, DrawCircle;             ///< rubber bands of boxes and ellipses
  RingOverlay BrushOutline;                     ///< how far the brush under the pointer reaches
  LineOverlay FollowLine;                       ///< rubber band of lines
  LineOverlay Temp, Temp2;                      ///< end lines of a gradient, never shown
  ScrollBar HScroll1, VScroll1;                 ///< what part of `PaintArea` is in view

  double GetZoomFactor() const { return Zoom; }
  /// `Zoom` / 100.
  int16_t ZoomMultiple() const { return static_cast<int16_t>(Zoom / 100); }
  void SetDirtyFalse() { Dirty = false; }
  /// `BufferSelected` while a selection floats, else `Buffer`.
  PictureSurface& LiveLayer() { return SelectArea.Visible() ? BufferSelected : Buffer; }

  /// Text is printed in that font from now on. The box in which it's typed shows it at the zoom and takes its
  /// size.
  void SetTextFont(const TextFont& font);

  /// `PaintArea` takes the size of the picture at the zoom, and the window grows with it, as far as there's
  /// room and the person hasn't sized it.
  void SizePaintArea();
  /// The inside of a window, in twips, that shows the whole picture and its bars, and for a tiny picture some
  /// ground to scroll and grasp it by.
  Single FittingWidth() const;
  Single FittingHeight() const;
  /// The caption tells the window's `Tag` and the zoom.
  void ShowCaption();

  /// Takes the zoom that the zoom box shows, as a click of the Magnifying tool would, whatever tool is
  /// selected.
  virtual void ChangeZoomFactor() = 0;
  /// Tells the facts of the file behind the document in the information panel, and its zoom in the zoom box.
  virtual void Form_Activate() = 0;
  /// Outlines what the brush would reach where the pointer is, as it is now; for a pointer that has left the
  /// picture nothing.
  virtual void ShowReach() = 0;
  /// Lays the window out: scroll bars, viewport, and the picture centred or scrolled in it.
  void Form_Resize();
  /// Lays out anew after a change of the picture's size or the zoom, lets the marquees and the text follow
  /// and shows all that is in view. Each argument puts its scroll bar to that fraction (0 to 1) of the bar's
  /// new range; a negative one leaves the bar where it is, as far as the new range allows.
  void RealignZoom(double vertical, double horizontal);

  /// Brings `Buffer` up to date with a floating selection: what was drawn on the selection or beneath it
  /// since the last call, and all of it where it is new or has moved.
  void MergeSelection();
  /// `Buffer` has the floating selection's pixels already, as it has where they were lifted from there.
  void TakeAsMerged();
  /// The marquee of the selection stands on the pixels that float. While no stroke runs, a drag starts from
  /// there.
  void PlaceSelectArea();

 private:
  void LayOutAxis(bool horizontal);
  Rect SelectedPlace() const;
  void PlaceMarquee(ShapeOverlay& marquee);
  void MoveMarquees();
  void MoveTextInput(int multiple_before);
  void FocusPicture();
  void HScroll1_Change();
  void VScroll1_Change();
  void TextInput_Change();

  Rect merged_place_;  ///< where `Buffer` holds the floating selection; empty while it doesn't
};

/// The document whose window is the main window's active child, null without one.
ImageDocument* ActiveDocument();
/// The same, but null while a stroke runs on it, for commands: what they did in its middle, or what was there
/// before it, couldn't be had back.
ImageDocument* DocumentAtRest();
/// The document that a layer belongs to.
ImageDocument& DocumentOf(PictureSurface& layer);

/// The one way to show a change: merges a floating selection into `surface`, the document's `Buffer`, and
/// shows what has changed there since the last call, at the document's zoom.
void RefreshPaintArea(PictureSurface& surface);

}  // namespace zelvane
