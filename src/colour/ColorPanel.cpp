#include "colour/ColorPanel.h"

#include <algorithm>
#include <array>

namespace zelvane {
namespace {

constexpr int kMarkerWidth = 9, kMarkerHeight = 5;
constexpr int kRowHeight = 24;  // from one channel to the next
constexpr int kButtonSize = 10;

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
  SwatchesBg.Move(2, 2, 156, 124);
  lblHeading.Move(81, -2, 61, 15);
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
  Gradient.Move(81, 14, 61, 17);
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
  const auto down = static_cast<Single>(channel * kRowHeight);
  lblChannel[channel].SetCaption(facts.letter);
  lblChannel[channel].Move(0, 46 + down, 9, 19);
  lblChannel[channel].SetAlignment(kAlignCentre);
  ColorBar[channel].Move(12, 51 + down, 101, 9);
  ColorBar[channel].SetAccessibleName(facts.bar);
  FrameRamp(ColorBar[channel]);
  ColorScroll[channel].Move(12, 61 + down);
  ColorScroll[channel].SetAccessibleName(facts.marker);
  NumberBox& number = lblColor[channel];
  number.Move(117, 46 + down, 37, 19);
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
