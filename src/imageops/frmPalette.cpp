#include "imageops/frmPalette.h"

#include <algorithm>
#include <array>

#include "document/layers/ImageDocument.h"
#include "shell/state/State.h"
#include "surface/forms/windows/BusyPointer.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/raster/Units.h"
#include "surface/system/desktop/Screen.h"

namespace zelvane {
namespace {

constexpr size_t kMostColors = 2000;
constexpr int kColumns = 20, kRowsInView = 7;
constexpr Single kCell = 225, kMargin = 120;  // twips
/// Cells overlap by a pixel, so that neighbours share an edge.
constexpr Single kStep = kCell - kTwipsPerPixel;
constexpr Single kRowWidth = kColumns * kStep + kTwipsPerPixel;
constexpr Single kViewHeight = kRowsInView * kStep + kTwipsPerPixel;
/// What is left free to the window's right and below, in twips.
constexpr Single kBesideDocument = 2340, kBelowDocument = 135, kInsideMain = 45;

/// The colours met so far. Half of its slots stay free, so that a colour is found in a step or two.
class SeenColors {
 public:
  /// Whether the colour is new.
  bool Add(Pixel pixel) {
    size_t slot = pixel * 2654435761u >> 20;
    while (slots_[slot] != pixel) {
      if (slots_[slot] == 0) return slots_[slot] = pixel, true;
      slot = (slot + 1) % slots_.size();
    }
    return false;
  }

 private:
  std::array<Pixel, 4096> slots_{};  // no pixel is 0, as its top byte is set
};

/// The end of a window of size `size` beside a part of the main window, kept inside that.
Single PlaceInside(Single wanted, Single size, Single main_start, Single main_size) {
  const Single end = main_start + main_size;
  return wanted + size + kInsideMain > end ? end - size - kInsideMain : wanted;
}

int ToPixels(Single twips) {
  return static_cast<int>(twips) / kTwipsPerPixel;
}

}  // namespace

std::vector<Color> ColorsOf(const Bitmap& picture) {
  std::vector<Color> colors;
  EventsMeanwhile events;
  SeenColors seen;
  seen.Add(ToPixel(kBlack));
  for (int y = 0; y < picture.Height(); ++y) {
    const Pixel* const row = picture.Row(y);
    for (int x = 0; x < picture.Width(); ++x) {
      if (!seen.Add(row[x])) continue;
      colors.push_back(ToColor(row[x]));
      if (colors.size() == kMostColors) return colors;
    }
    events.Run();
  }
  return colors;
}

PaletteWindow::PaletteWindow()
    : DialogForm("frmPalette", DialogLook::Titled),
      Background(*this, "Background"),
      Display(Background, "Display"),
      VScroll1(*this, "VScroll1", ScrollBar::Direction::Vertical) {
  SetCaption(" Image Palette");
  SetKeyPreview(true);
  SetResizable(false);
  SetScaleMode(Scale::Twips);
  Background.SetScaleMode(Scale::Twips);
  const Single bar = VScroll1.NaturalWidth();
  Background.Move(kMargin, kMargin, kRowWidth, kViewHeight);
  VScroll1.Move(kMargin + kRowWidth + kMargin / 2, kMargin, bar, kViewHeight);
  VScroll1.SetEnabled(false);
  VScroll1.SetLargeChange(kRowsInView);
  VScroll1.SetTabStop(true);
  SetWidth(VScroll1.Left() + bar + kMargin);
  SetHeight(kViewHeight + 2 * kMargin);
  Display.SetAccessibleName("Colors of the image");
  VScroll1.OnChange = VScroll1.OnScroll = [this] { VScroll1_Change(); };
  Display.OnMouseWheel = [this](int16_t, Single, Single, Single, Single down) {
    With(ToInt16(VScroll1.Value() - down), [this](int16_t row) { VScroll1.SetValue(row); });
  };
  OnDeactivate = [this] { Unload(); };
}

void PaletteWindow::TakePlace(const Form& document) {
  const MdiForm* main = MdiForm::Main();
  if (!main) return;
  const Single top = main->Top() + document.Top() + document.Height() +
                     static_cast<Single>(State.MainFrameHeight) - Height() - kBelowDocument;
  const Single left = main->Left() + document.Left() + document.Width() +
                      static_cast<Single>(State.MainFrameWidth) - Width() - kBesideDocument;
  const Screen::Area place = Screen::BroughtOnto(
      Screen::WorkAreas(), {PlaceInside(left, Width(), main->Left(), main->Width()),
                            PlaceInside(top, Height(), main->Top(), main->Height()), Width(), Height()});
  Move(static_cast<Single>(place.left), static_cast<Single>(place.top));
}

void PaletteWindow::ShowColors(const std::vector<Color>& colors) {
  LayOutCells(colors);
  DrawCells();
  if (rows_ <= kRowsInView) return;
  VScroll1.SetEnabled(true);
  VScroll1.SetMax(static_cast<int16_t>(rows_ - kRowsInView));
  VScroll1.SetFocus();
}

/// Each cell but the first comes where the first one stands, which moves on: it ends up last.
void PaletteWindow::LayOutCells(const std::vector<Color>& colors) {
  Single x = 0, y = 0;
  Swatch.assign(1, {0, 0, SystemColor::ButtonFace});
  for (size_t i = 0; i < colors.size(); ++i) {
    if (i > 0) Swatch.push_back(Swatch[0]);
    Swatch[0].Left = x;
    Swatch[0].Top = y;
    Swatch[i].BackColor = colors[i];
    x += kStep;
    if (x + kCell <= Background.Width()) continue;
    ++rows_;
    y += kStep;
    x = 0;
  }
}

void PaletteWindow::DrawCells() {
  Display.Move(0, 0, kRowWidth, kCell + static_cast<Single>(rows_ - 1) * kStep);
  Display.SetBackColor(SystemColor::ButtonFace);
  Display.SetFillStyle(kFillSolid);
  for (const Cell& cell : Swatch) {
    const int left = ToPixels(cell.Left), top = ToPixels(cell.Top), side = ToPixels(kCell) - 1;
    Display.SetFillColor(cell.BackColor);
    Display.Box(static_cast<Single>(left), static_cast<Single>(top), static_cast<Single>(left + side),
                static_cast<Single>(top + side), SystemColor::ButtonShadow);
  }
  Display.Refresh();
}

void PaletteWindow::VScroll1_Change() {
  Display.SetTop(-kStep * static_cast<Single>(VScroll1.Value()));
}

/// Events run while the colours are looked for: the picture is held on to, and the document asked for again.
void ImagePalette_Click() {
  ImageDocument* document = ActiveDocument();
  if (!document || BusyPointer::IsStanding()) return;
  const BusyPointer busy;
  const Bitmap picture = document->LiveLayer().Image();
  const std::vector<Color> colors = ColorsOf(picture);
  document = ActiveDocument();
  if (!document) return;
  PaletteWindow& window = frmPalette.Load();
  window.ShowColors(colors);
  window.TakePlace(*document);
  window.Show();
}

}  // namespace zelvane
