#include "document/window/frmPaint.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "document/layers/InfoPanel.h"
#include "document/layers/ReadOuts.h"
#include "document/window/ClosePicture.h"
#include "imageops/Undo.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/FailingStep.h"
#include "tools/BrushOutline.h"
#include "tools/EyedropperTool.h"
#include "tools/OptionBars.h"
#include "tools/SelectTool.h"
#include "tools/SimplePaints.h"

namespace zelvane {
namespace {

constexpr double kSmallestZoom = 100, kLargestZoom = 800;

/// A position measured from the middle of its zoomed pixel.
Single Centred(Single position, double zoom) {
  return static_cast<Single>(position - zoom / 200);
}

/// The image column or row of a centred position.
std::optional<int16_t> ImagePosition(Single centred, double zoom) {
  return ToInt16(centred / zoom * 100);
}

constexpr Single kNotch = 72;      // units of the view
constexpr int kEdgeInterval = 20;  // ms

std::string Pair(int16_t a, const char* between, int16_t b) {
  return std::to_string(a) + between + std::to_string(b);
}

}  // namespace

frmPaint::frmPaint() : EdgeTimer(kEdgeInterval) {
  SetKeyPreview(true);
  OnActivate = [this] { Form_Activate(); };
  OnQueryUnload = [this](bool& Cancel, UnloadModes) { Cancel = !MayClose(*this); };
  EdgeTimer.OnTimer = [this] { ScrollWithStroke(); };
  PaintArea.OnMouseDown = [this](int16_t Button, int16_t, Single X, Single Y) {
    Scroller.PutPointer(X, Y);
    PaintArea_MouseDown(Button, X, Y);
    if (Button == kMiddleButton) Scroller.Grab();
  };
  PaintArea.OnMouseMove = [this](int16_t, int16_t, Single X, Single Y) {
    pointer_inside_ = true;
    Scroller.PutPointer(X, Y);
    Scroller.Drag();
    PaintArea_MouseMove(Scroller.PointerX(), Scroller.PointerY());
    EdgeTimer.SetEnabled(Down && Scroller.IsPointerBeyondView());
  };
  PaintArea.OnMouseUp = [this](int16_t Button, int16_t, Single X, Single Y) {
    Scroller.PutPointer(X, Y);
    if (Button == kMiddleButton) Scroller.LetGo();
    PaintArea_MouseUp(Button, X, Y);
  };
  PaintArea.OnMouseWheel = [this](int16_t Shift, Single X, Single Y, Single across, Single along) {
    Scroller.PutPointer(X, Y);
    PaintArea_MouseWheel(Shift, across, along);
  };
  PaintArea.OnMouseLeave = [this] {
    pointer_inside_ = false;
    ShowReach();
  };
  PaintArea.OnKeyDown = [this](int16_t KeyCode, int16_t Shift) { PaintArea_KeyDown(KeyCode, Shift); };
  PaintArea.OnGotFocus = [this] { PaintArea_GotFocus(); };
  TextInput.OnMouseWheel = [this](int16_t Shift, Single X, Single Y, Single across, Single along) {
    FireEvent(PaintArea.OnMouseWheel, Shift, X + TextInput.Left(), Y + TextInput.Top(), across, along);
  };
  TextInput.OnCaretMove = [this] { ShowCaret(); };
}

/// The panel tells what the file on the disk holds, not the picture in memory.
void frmPaint::Form_Activate() {
  ShowZoomInBox();
  if (Buffer.Tag().empty()) return InfoPanel->SetVisible(false);
  if (!ImageInfo) ImageInfo.emplace();
  ImageInfo->ReadImageInfo(Buffer.Tag());
  if (ImageInfo->ImageType() != CImageInfo::kUnknown) ShowImageInfo();
  InfoPanel->SetVisible(ImageInfo->ImageType() != CImageInfo::kUnknown);
}

void frmPaint::ShowImageInfo() {
  InfoPanel->IWidth.SetCaption(std::to_string(ImageInfo->Width()));
  InfoPanel->IHeight.SetCaption(std::to_string(ImageInfo->Height()));
  InfoPanel->IBits.SetCaption(std::to_string(ImageInfo->Depth()));
  InfoPanel->iType.SetCaption(State.FileTypeNames.at(static_cast<size_t>(ImageInfo->ImageType())));
}

void frmPaint::PaintArea_MouseDown(int16_t Button, Single X, Single Y) {
  State.PointerButton = kNoButton;
  Down = false;
  if (Button != kLeftButton && Button != kRightButton) return;
  State.PointerButton = Button;
  TakeUndoSnapshot(*this);
  if (SelectArea.Visible()) PlaceSelectArea();
  Down = true;
  const auto k = static_cast<Single>(100 / Zoom);
  Buffer.SetCurrentX(k * Centred(X, Zoom));
  Buffer.SetCurrentY(k * Centred(Y, Zoom));
  Assign(StartX, ToInt32(Buffer.CurrentX()));
  Assign(StartY, ToInt32(Buffer.CurrentY()));
  BufferSelected.SetCurrentX(Buffer.CurrentX() - BufferSelected.Left());
  BufferSelected.SetCurrentY(Buffer.CurrentY() - BufferSelected.Top());
  PaintAt(X, Y);
}

/// A position beyond 16 bits reaches no tool.
void frmPaint::PaintAt(Single X, Single Y) {
  const auto column = ImagePosition(Centred(X, Zoom), Zoom), row = ImagePosition(Centred(Y, Zoom), Zoom);
  if (column && row) ApplyTool(Buffer, *column, *row, Zoom, Down);
}

void frmPaint::PaintArea_MouseMove(Single X, Single Y) {
  if (Down) {
    PaintAt(X, Y);
    ShowArea(X, Y);
  }
  ShowCoords(X, Y);
  ShowToolPointer(*this);
  ShowReach();
  if (State.CurrentTool != kEyedropperTool) return;
  const auto column = static_cast<Single>(Centred(X, Zoom) / Zoom * 100);
  ShowPixelInfo(Buffer, column, static_cast<Single>(Centred(Y, Zoom) / Zoom * 100));
}

void frmPaint::ShowReach() {
  if (!pointer_inside_) return BrushOutline.SetVisible(false);
  const auto column = ImagePosition(Centred(Scroller.PointerX(), Zoom), Zoom);
  const auto row = ImagePosition(Centred(Scroller.PointerY(), Zoom), Zoom);
  if (column && row) ShowBrushOutline(*this, *column, *row);
}

void frmPaint::ShowArea(Single X, Single Y) {
  const double x = Zoom == 100 ? X : Centred(X, Zoom) * (100 / Zoom);
  const double y = Zoom == 100 ? Y : Centred(Y, Zoom) * (100 / Zoom);
  const auto width = ToInt16(std::fabs(StartX - x)), height = ToInt16(std::fabs(StartY - y));
  if (width && height) ReadOuts->lblArea.SetCaption(Pair(*width, " x ", *height));
}

void frmPaint::ShowCoords(Single X, Single Y) {
  const auto column = Zoom == 100 ? ToInt16(X) : ImagePosition(Centred(X, Zoom), Zoom);
  const auto row = Zoom == 100 ? ToInt16(Y) : ImagePosition(Centred(Y, Zoom), Zoom);
  if (column && row) ReadOuts->lblCoords.SetCaption(Pair(*column, ", ", *row));
}

void frmPaint::PaintArea_MouseUp(int16_t Button, Single X, Single Y) {
  if (State.CurrentTool == kMagnifyingTool) Magnify(Button);
  const bool was_dirty = Dirty;
  EndStroke(Button, X, Y);
  if (State.CurrentTool == kSelectAreaTool) Dirty = was_dirty;
}

/// The left button goes one step nearer, the right one away. False: there's no further step.
bool frmPaint::Magnify(int16_t Button) {
  if (Button == kLeftButton && Zoom < kLargestZoom)
    Zoom += 100;
  else if (Button == kRightButton && Zoom > kSmallestZoom)
    Zoom -= 100;
  else
    return false;
  ShowZoomInBox();
  return true;
}

/// Scrolls; with Ctrl zooms by a step, but not in the middle of a stroke.
void frmPaint::PaintArea_MouseWheel(int16_t Shift, Single across, Single along) {
  if (Shift == kCtrl) {
    if (!Down && along != 0) ZoomAtPointer(along > 0 ? kLeftButton : kRightButton);
    return;
  }
  if (Shift == kShift) std::swap(across, along);
  if (Scroller.ScrollBy(-across * kNotch, -along * kNotch)) ViewMoved();
}

/// The view goes along with the caret and the letter before it, which is about as wide as high at most.
void frmPaint::ShowCaret() {
  if (Down || !TextInput.Visible()) return;
  const Rect caret = TextInput.Caret();
  const int third = static_cast<int>(Back.Width()) / 3;
  const int letter = std::min({caret.left, caret.bottom - caret.top, third});
  const auto left = static_cast<int>(TextInput.Left()), top = static_cast<int>(TextInput.Top());
  Scroller.ScrollInto({caret.left - letter + left, caret.top + top, caret.right + left, caret.bottom + top});
}

/// The pixel under the pointer stays there, as far as there is picture to scroll.
void frmPaint::ZoomAtPointer(int16_t Button) {
  const int multiple = ZoomMultiple();
  const Single X = Scroller.PointerX(), Y = Scroller.PointerY();
  if (!Magnify(Button)) return;
  Relay(-1, -1);
  Scroller.KeepPixel(multiple, X, Y);
  ViewMoved();
}

void frmPaint::PaintArea_KeyDown(int16_t KeyCode, int16_t Shift) {
  if (Shift == 0 && Scroller.ScrollByKey(KeyCode)) ViewMoved();
}

void frmPaint::ScrollWithStroke() {
  const bool scrolled = Down && Scroller.ScrollToPointer();
  EdgeTimer.SetEnabled(scrolled);
  if (scrolled) ViewMoved();
}

/// The pointer is over another pixel, although it hasn't moved.
void frmPaint::ViewMoved() {
  if (Down)
    PaintArea_MouseMove(Scroller.PointerX(), Scroller.PointerY());
  else
    ShowReach();
}

void frmPaint::EndStroke(int16_t Button, Single X, Single Y) {
  const double w = PaintArea.ScaleWidth(), h = PaintArea.ScaleHeight();
  if (State.CurrentTool != kMagnifyingTool) Dirty = true;
  Down = false;
  if (Button != kLeftButton && Button != kRightButton) return;
  PaintAt(X, Y);
  if (State.CurrentTool == kMagnifyingTool) Relay(Y / h, X / w);
}

/// Lays the picture out at a new zoom, with the fractions of the scroll range that stay in view.
void frmPaint::Relay(double vertical, double horizontal) {
  SizePaintArea();
  ShowCaption();
  RealignZoom(vertical, horizontal);
  ShowReach();
}

void frmPaint::ChangeZoomFactor() {
  if (ZoomBusy) return;
  const double chosen = (frmControls->comboZoom.ListIndex() + 1) * 100.0;
  if (chosen == Zoom) return;
  Zoom = chosen;
  const auto fraction = [](const ScrollBar& bar) {
    return bar.Max() > 0 ? static_cast<double>(bar.Value()) / bar.Max() : 0.0;
  };
  Relay(fraction(VScroll1), fraction(HScroll1));
}

void frmPaint::ShowZoomInBox() {
  ZoomBusy = true;
  frmControls->comboZoom.SetListIndex(ZoomMultiple() - 1);
  ZoomBusy = false;
}

/// Text that is being typed keeps the keyboard.
void frmPaint::PaintArea_GotFocus() {
  if (State.CurrentTool == kTextTool && TextInput.Visible()) return TextInput.SetFocus();
  if (State.CurrentTool == kMagnifyingTool) ShowZoomInBox();
  PaintArea.Refresh();
}

}  // namespace zelvane
