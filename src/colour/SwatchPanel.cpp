#include "colour/SwatchPanel.h"

#include <algorithm>

#include "surface/forms/controls/Events.h"
#include "surface/forms/controls/TextGrowth.h"

namespace zelvane {
namespace {

constexpr Single kPanelWidth = 156, kHeadingHeight = 16;                 // pixels, at a font of 10 points
constexpr Single kGridWidth = 121, kGridHeight = 85, kFirstHeight = 21;  // pixels, seven rows of ten
constexpr Single kBarWidth = 17, kBeside = 2;                            // pixels
constexpr size_t kLongestTip = 100;                                      // bytes

/// The whole name, unless it would fill the screen.
std::string TipOf(const std::string& name) {
  if (name.size() <= kLongestTip) return name;
  size_t end = kLongestTip;
  while (end > 0 && (name[end] & 0xC0) == 0x80) --end;
  return name.substr(0, end) + "...";
}

}  // namespace

SwatchTile::SwatchTile(Control& parent, const std::string& name) : PictureSurface(parent, name) {
  Move(0, 0, kSwatchSide, kSwatchSide);
  SetFillStyle(kFillTransparent);
}

void SwatchTile::ShowEntry(int index, const SwatchEntry& entry) {
  index_ = index;
  Move(static_cast<Single>(entry.Left), static_cast<Single>(entry.Top));
  SetBackColor(entry.BackColor);
  Box(0, 0, kSwatchSide - 1, kSwatchSide - 1, SystemColor::ButtonShadow);
  Refresh();
  SetToolTip(TipOf(entry.ToolTipText));
  SetAccessibleName(TipOf(entry.ToolTipText));
  SetVisible(true);
}

SwatchPanelControls::SwatchPanelControls(Control& RightBar, Single top)
    : Picture3(RightBar, "Picture3"),
      lblHeading(Picture3, "Label1(1)", "Swatches:"),
      Background(Picture3, "Background"),
      Display(Background, "Display"),
      SwatchScroll(Display, "SwatchScroll"),
      ScrollSwatch(Picture3, "ScrollSwatch", ScrollBar::Direction::Vertical),
      FocusMark(Background, "FocusMark") {
  Picture3.SetBackColor(SystemColor::ButtonFace);
  const Single heading = kHeadingHeight + LineGrowth();
  Picture3.Move(2, top, Widened(kPanelWidth), heading + kGridHeight);
  lblHeading.Move(0, 0, Widened(kGridWidth), heading);
  Background.SetBackColor(SystemColor::ButtonFace);
  Background.Move(0, heading, kGridWidth, kGridHeight);
  // Its frame and the outer borders of the swatches are one line.
  Background.SetFillStyle(kFillTransparent);
  Background.Box(0, 0, kGridWidth - 1, kGridHeight - 1, SystemColor::ButtonShadow);
  Display.Move(0, 0, kGridWidth, kSwatchSide);
  SwatchScroll.Move(0, 0, kGridWidth, kFirstHeight);
  ScrollSwatch.Move(kGridWidth + kBeside, heading, kBarWidth, kGridHeight);
  ScrollSwatch.SetAccessibleName("Swatches");
  ScrollSwatch.SetEnabled(false);
  FocusMark.SetVisible(false);
  for (Control* free : {static_cast<Control*>(&Background), static_cast<Control*>(&SwatchScroll)}) {
    free->SetToolTip(kAddSwatch);
    free->SetAccessibleName(kAddSwatch);
  }
}

void SwatchPanelControls::ShowTiles() {
  const auto top = static_cast<int>(-Display.Top()), bottom = top + static_cast<int>(kGridHeight);
  // They stand row by row. Of rows that only their border brings into view, the frame shows as much.
  const auto is_above = [&](const SwatchEntry& entry) { return entry.Top + kSwatchSide - 1 <= top; };
  const auto first = std::partition_point(Swatch.begin(), Swatch.end(), is_above);
  int shown = 0;
  for (auto entry = first; entry != Swatch.end() && entry->Top + 1 < bottom; ++entry, ++shown) {
    if (shown == Tiles.Count()) FireEvent(OnTileMade, Tiles.Add(Display, "Swatch"));
    Tiles[shown].ShowEntry(static_cast<int>(entry - Swatch.begin()), *entry);
  }
  for (; shown < Tiles.Count(); ++shown) Tiles[shown].SetVisible(false);
  PlaceMark();
}

/// Within the border.
void SwatchPanelControls::PlaceMark() {
  const int left = Marked % kSwatchesInRow * kSwatchPitch, top = Marked / kSwatchesInRow * kSwatchPitch;
  FocusMark.Move(static_cast<Single>(left + 1), Display.Top() + static_cast<Single>(top + 1), kSwatchSide - 2,
                 kSwatchSide - 2);
}

}  // namespace zelvane
