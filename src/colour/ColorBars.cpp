#include "colour/ColorBars.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "colour/ColorRamp.h"
#include "document/layers/ImageDocument.h"
#include "shell/state/State.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/FailingStep.h"

namespace zelvane {
namespace {

constexpr int kFullChannel = 255;
/// A marker reads its channel from steps of 1/256 of the bar, and shows it in steps of 1/255.
constexpr double kChannelSteps = 256;

Label& SelectedLabel() {
  return ColorPanel->SelColor[ColorPanel->SelectedColor];
}

/// The three numbers, none where one of them leaves 16 bits.
std::optional<Channels> Numbers() {
  const auto& box = ColorPanel->lblColor;
  const auto red = ToInt16(box[0].Value()), green = ToInt16(box[1].Value()), blue = ToInt16(box[2].Value());
  if (!red || !green || !blue) return std::nullopt;
  return Channels{*red, *green, *blue};
}

double MarkerPlace(int channel, int value) {
  const Control &bar = ColorPanel->ColorBar[channel], &marker = ColorPanel->ColorScroll[channel];
  return static_cast<double>(value) / kFullChannel * bar.Width() + bar.Left() - marker.Width() / 2.0;
}

/// The channel value that a marker points at, 0 to 256; no value beyond 16 bits.
std::optional<int16_t> MarkerValue(int channel) {
  const Control &bar = ColorPanel->ColorBar[channel], &marker = ColorPanel->ColorScroll[channel];
  const double left = marker.Left(), half = marker.Width() / 2.0;
  // Where the bar begins is told in whole pixels, how far the marker is along it isn't.
  if (left - (bar.Left() - RoundHalfEven(half)) <= 0) return int16_t{0};
  return ToInt16((left - (bar.Left() - half)) / bar.Width() * kChannelSteps);
}

void ShowColor(Color color) {
  const Channels split = Split(color);
  const std::array<int, kChannelCount> values{std::clamp(split.red, 0, kFullChannel),
                                              std::clamp(split.green, 0, kFullChannel),
                                              std::clamp(split.blue, 0, kFullChannel)};
  for (int i = 0; i < kChannelCount; ++i) ColorPanel->lblColor[i].SetValue(values.at(static_cast<size_t>(i)));
  for (int i = 0; i < kChannelCount; ++i)
    ColorPanel->ColorScroll[i].SetLeft(
        static_cast<Single>(MarkerPlace(i, values.at(static_cast<size_t>(i)))));
}

void ReadMarkers() {
  for (int i = 0; i < kChannelCount; ++i)
    With(MarkerValue(i), [&](int16_t value) { ColorPanel->lblColor[i].SetValue(value); });
}

void TakeNumbers() {
  With(Numbers(), [](Channels c) { SelectedLabel().SetBackColor(RGB(c.red, c.green, c.blue)); });
}

void PaintBars(Channels c) {
  auto& bar = ColorPanel->ColorBar;
  PaintColorBar(bar[0], RGB(0, c.green, c.blue), RGB(kFullChannel, c.green, c.blue));
  PaintColorBar(bar[1], RGB(c.red, 0, c.blue), RGB(c.red, kFullChannel, c.blue));
  PaintColorBar(bar[2], RGB(c.red, c.green, 0), RGB(c.red, c.green, kFullChannel));
}

void SetColors(Color foreground, Color background) {
  ColorPanel->SelectedColor = 0;
  ColorPanel->SelColor[0].SetBackColor(foreground);
  ColorPanel->SelColor[1].SetBackColor(background);
  SetColorBars();
  PaintGradient();
  SyncDocumentColors();
}

/// A number that is being typed counts before the pointer does something else with the colours.
void TakeKeyboard(Control& pressed) {
  for (int i = 0; i < kChannelCount; ++i)
    if (ColorPanel->lblColor[i].GotFocus()) pressed.SetFocus();
}

/// Handlers get the whole pixel, which the arithmetic of the markers adds up.
template <class Handler>
Control::PointerEvent OnWholePixels(Handler handler) {
  return [handler](int16_t Button, int16_t, Single X, Single Y) {
    if (ColorPanel) handler(Button, std::floor(X), std::floor(Y));
  };
}

void WireChannel(int16_t i) {
  PictureSurface& bar = ColorPanel->ColorBar[i];
  PictureSurface& marker = ColorPanel->ColorScroll[i];
  bar.OnMouseDown = OnWholePixels([&bar, i](int16_t, Single X, Single) {
    TakeKeyboard(bar);
    ColorBar_MouseDown(i, X);
  });
  bar.OnMouseMove = OnWholePixels([i](int16_t, Single X, Single) { ColorBar_MouseMove(i, X); });
  marker.OnMouseDown = OnWholePixels([&marker, i](int16_t, Single X, Single) {
    TakeKeyboard(marker);
    ColorScroll_MouseDown(i, X);
  });
  marker.OnMouseMove = OnWholePixels([i](int16_t, Single X, Single) { MoveColorMarker(i, X); });
  bar.OnMouseUp = marker.OnMouseUp = OnWholePixels([](auto...) { ColorScroll_MouseUp(); });

  NumberBox& number = ColorPanel->lblColor[i];
  number.OnKeyUp = [](int16_t KeyCode, int16_t) {
    if (KeyCode == kKeyEnter) ApplyColorNumbers();
  };
  number.OnLostFocus = [] {
    if (ColorPanel) ApplyColorNumbers();
  };
}

}  // namespace

void WireColorPanel() {
  for (int16_t i = 0; i < kChannelCount; ++i) WireChannel(i);
  for (int16_t i = 0; i < 2; ++i) {
    ColorPanel->SelColor[i].OnClick = [i] { SelColor_Click(i); };
    ColorPanel->SelColor[i].OnDblClick = [i] { FireEvent(ColorPanel->OnEditColor, i); };
  }
  ColorPanel->Gradient.OnMouseDown = OnWholePixels([](int16_t Button, Single X, Single Y) {
    TakeKeyboard(ColorPanel->Gradient);
    Gradient_MouseDown(Button, X, Y);
  });
  ColorPanel->ShiftColors.OnClick = ShiftColors_Click;
  ColorPanel->RestoreColors.OnClick = RestoreColors_Click;
}

int16_t GetSelectedColor() {
  return ColorPanel->SelectedColor;
}

void SetColorBars() {
  if (ColorPanel->ColorDragging) {
    ReadMarkers();
  } else {
    ShowColor(SelectedLabel().BackColor());
  }
  TakeNumbers();
  With(Numbers(), PaintBars);
}

void PaintColorBar(RampSurface& surface, const Color& left, const Color& right) {
  const RampSurface::Ends ends{left, right};
  if (surface.Painted == ends) return;
  PaintRamp(surface, left, right);
  surface.Refresh();
  surface.Painted = ends;
}

void PaintGradient() {
  PaintColorBar(ColorPanel->Gradient, ColorPanel->SelColor[0].BackColor(),
                ColorPanel->SelColor[1].BackColor());
}

void ApplyColorNumbers() {
  for (int i = 0; i < kChannelCount; ++i) {
    NumberBox& number = ColorPanel->lblColor[i];
    if (number.Value() > kFullChannel) number.SetValue(kFullChannel);
  }
  TakeNumbers();
  ColorPanel->ColorDragging = false;
  SetColorBars();
  PaintGradient();
}

void SyncDocumentColors() {
  ImageDocument* document = ActiveDocument();
  if (!document) return;
  const Color foreground = ColorPanel->SelColor[0].BackColor();
  document->Buffer.SetForeColor(foreground);
  document->TextInput.SetForeColor(foreground);
  document->TextInput.SetBackColor(ColorPanel->SelColor[1].BackColor());
}

void ColorScroll_MouseDown(int16_t, Single X) {
  Assign(ColorPanel->ColorDragX, ToInt16(X));
  ColorPanel->ColorDragging = true;
}

void MoveColorMarker(int16_t Index, Single X) {
  if (!ColorPanel->ColorDragging) return;
  const Control& bar = ColorPanel->ColorBar[Index];
  MarkerSurface& marker = ColorPanel->ColorScroll[Index];
  const double half = marker.Width() / 2.0;
  const double lowest = bar.Left() - half, highest = static_cast<double>(bar.Left()) + bar.Width() - half;
  // The limits round too: a drag ends on whole pixels.
  double place = RoundHalfEven(static_cast<double>(marker.Left()) + X - ColorPanel->ColorDragX);
  if (place < lowest) place = RoundHalfEven(lowest);
  if (place > highest) place = RoundHalfEven(highest);
  marker.SetLeft(static_cast<Single>(place));
  SetColorBars();
  SyncDocumentColors();
}

void ColorScroll_MouseUp() {
  ColorPanel->ColorDragging = false;
  PaintGradient();
}

void ColorBar_MouseDown(int16_t Index, Single X) {
  ColorScroll_MouseDown(Index, X);
  // The marker's left edge goes to the pointer, and the move with the same X leaves it there.
  ColorPanel->ColorScroll[Index].SetLeft(ColorPanel->ColorBar[Index].Left() + X);
  MoveColorMarker(Index, X);
}

void ColorBar_MouseMove(int16_t Index, Single X) {
  if (ColorPanel->ColorDragging) ColorBar_MouseDown(Index, X);
}

void SelColor_Click(int16_t Index) {
  ColorPanel->SelectedColor = Index;
  SetColorBars();
}

void Gradient_MouseDown(int16_t Button, Single X, Single Y) {
  const int16_t target = Button == kLeftButton ? 0 : 1;
  const Color picked = ColorPanel->Gradient.Point(X, Y);
  if (picked != kNoColor) ColorPanel->SelColor[target].SetBackColor(picked);
  State.ColorDialogTarget = target;
  ColorPanel->SelectedColor = target;
  SetColorBars();
  PaintGradient();
}

void ShiftColors_Click() {
  SetColors(ColorPanel->SelColor[1].BackColor(), ColorPanel->SelColor[0].BackColor());
}

void RestoreColors_Click() {
  SetColors(kBlack, kWhite);
}

}  // namespace zelvane
