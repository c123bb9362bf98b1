#include "colour/ColorPanel.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "surface/forms/controls/TextGrowth.h"

namespace zelvane {
namespace {

constexpr int kMarkerWidth = 9, kMarkerHeight = 5;
constexpr int kButtonSize = 10;
// The channels, pixels at a font of 10 points.
constexpr Single kFirstRow = 46, kRowHeight = 19, kPitch = 24, kLeastGap = 2, kBarLeft = 12;
constexpr Single kBarWidth = 101, kBarHeight = 9, kBesideBar = 3, kNumberWidth = 37;

/// From one channel to the next.
Single Pitch() {
  return std::max(kPitch, kRowHeight + LineGrowth() + kLeastGap);
}
/// How much higher the panel is with the desktop's font: by a heading and by the channels.
Single Growth() {
  return 2 * LineGrowth() + (kChannelCount - 1) * (Pitch() - kPitch);
}
/// Right of the letters.
Single BarLeft() {
  return Widened(kBarLeft);
}
Single NumberLeft() {
  return BarLeft() + kBarWidth + kBesideBar + 1;
}

struct ChannelFacts {
  const char *letter, *name, *bar, *marker;
};
constexpr std::array<ChannelFacts, kChannelCount> kChannels{{
    {"R", "Red", "Red bar", "Red marker"},
    {"G", "Green", "Green bar", "Green marker"},
    {"B", "Blue", "Blue bar", "Blue marker"},
}};

void MakeButton(PictureSurface& button, Single left, Single top, const char* icon, const char* tooltip) {
  button.SetBackColor(SystemColor::ButtonFace);
  button.Move(left, top, kButtonSize, kButtonSize);
  button.SetIcon(icon, kButtonSize);
  button.SetToolTip(tooltip);
  button.SetAccessibleName(tooltip);
}

}  // namespace

MarkerSurface::MarkerSurface(Control& parent, const std::string& name) : PictureSurface(parent, name) {
  SetBackColor(SystemColor::ButtonFace);
  Move(0, 0, kMarkerWidth, kMarkerHeight);
  // The last row is no wider than the one above: at fractional screen scales it would stick out.
  constexpr int kMiddle = kMarkerWidth / 2, kWidest = kMiddle - 1;
  for (int y = 0; y < kMarkerHeight; ++y) {
    const int reach = std::min(y, kWidest);
    const auto row = static_cast<Single>(y);
    Line(static_cast<Single>(kMiddle - reach), row, static_cast<Single>(kMiddle + reach), row,
         SystemColor::ButtonText);
  }
}

ColorPanelControls::ColorPanelControls(Control& parent)
    : SwatchesBg(parent, "SwatchesBg"),
      lblHeading(SwatchesBg, "lblHeading", "Color:"),
      SelFrame(2, SwatchesBg, "SelFrame"),
      SelColor(2, SwatchesBg, "SelColor"),
      ShiftColors(SwatchesBg, "ShiftColors"),
      RestoreColors(SwatchesBg, "RestoreColors"),
      Gradient(SwatchesBg, "Gradient"),
      lblChannel(kChannelCount, SwatchesBg, "lblChannel"),
      ColorBar(kChannelCount, SwatchesBg, "ColorBar"),
      ColorScroll(kChannelCount, SwatchesBg, "ColorScroll"),
      lblColor(kChannelCount, SwatchesBg, "lblColor"),
      FocusMark(SwatchesBg, "FocusMark") {
  SwatchesBg.SetBackColor(SystemColor::ButtonFace);
  SwatchesBg.Move(2, 2, NumberLeft() + Widened(kNumberWidth) + 2, kColorPanelHeight + Growth());
  lblHeading.Move(81, -2, Widened(61), 15 + LineGrowth());
  // What comes into a parent stands above what is there: the foreground lies over the background.
  for (Control* part : {static_cast<Control*>(&SelFrame[0]), static_cast<Control*>(&SelColor[0])}) {
    part->SetParent(parent);
    part->SetParent(SwatchesBg);
  }
  PlaceColor(0, 31, 2, "Foreground color");
  PlaceColor(1, 47, 18, "Background color");
  SelColor[0].SetBackColor(kBlack);
  SelColor[1].SetBackColor(kWhite);
  FocusMark.SetForeColor(SystemColor::ActiveCaption);
  FocusMark.SetVisible(false);
  MakeButton(ShiftColors, 63, 5, "swap", "Swap Colors");
  MakeButton(RestoreColors, 34, 30, "restore", "Restore Colors");
  Gradient.Move(81, 14 + LineGrowth(), 61, 17);
  Gradient.SetAccessibleName("Color strip");
  FrameRamp(Gradient);
  for (int channel = 0; channel < kChannelCount; ++channel) PlaceChannel(channel);
}

/// The frame is a line and a gap beyond it, so that two colours alike are still seen as two.
void ColorPanelControls::PlaceColor(int index, Single left, Single top, const char* name) {
  constexpr int kWidth = 29, kHeight = 25, kFrame = 2;
  PictureSurface& frame = SelFrame[index];
  frame.SetBackColor(SystemColor::ButtonFace);
  frame.Move(left - kFrame, top - kFrame, kWidth + 2 * kFrame, kHeight + 2 * kFrame);
  frame.SetFillStyle(kFillTransparent);
  frame.Box(1, 1, kWidth + kFrame, kHeight + kFrame, SystemColor::ButtonText);
  SelColor[index].Move(left, top, kWidth, kHeight);
  SelColor[index].SetAccessibleName(name);
  SelColor[index].SetToolTip(name);
}

void ColorPanelControls::PlaceChannel(int channel) {
  const ChannelFacts& facts = kChannels.at(static_cast<size_t>(channel));
  const Single row = kRowHeight + LineGrowth();
  const Single top = kFirstRow + LineGrowth() + static_cast<Single>(channel) * Pitch();
  const Single bar = top + std::floor((row - kBarHeight) / 2);
  lblChannel[channel].SetCaption(facts.letter);
  lblChannel[channel].Move(0, top, BarLeft() - kBesideBar, row);
  lblChannel[channel].SetAlignment(kAlignCentre);
  ColorBar[channel].Move(BarLeft(), bar, kBarWidth, kBarHeight);
  ColorBar[channel].SetAccessibleName(facts.bar);
  FrameRamp(ColorBar[channel]);
  ColorScroll[channel].Move(BarLeft(), bar + kBarHeight + 1);
  ColorScroll[channel].SetAccessibleName(facts.marker);
  NumberBox& number = lblColor[channel];
  number.Move(NumberLeft(), top, Widened(kNumberWidth), row);
  number.SetAccessibleName(facts.name);
  number.SetFormat("##0");
  number.SetPositiveOnly(true);
  number.SetMaxValue(255);
  number.FitFont("255");
  number.SetValue(0.0);
}

/// A thin line round a ramp, which sets it off from the panel whatever its colours.
void ColorPanelControls::FrameRamp(const RampSurface& ramp) {
  const Single left = ramp.Left() - 1, top = ramp.Top() - 1;
  const Single right = ramp.Left() + ramp.Width(), bottom = ramp.Top() + ramp.Height();
  SwatchesBg.SetFillStyle(kFillTransparent);
  SwatchesBg.Box(left, top, right, bottom, SystemColor::ButtonShadow);
  SwatchesBg.Refresh();
}

}  // namespace zelvane
