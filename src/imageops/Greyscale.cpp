#include "imageops/Greyscale.h"

#include <algorithm>
#include <array>

#include "imageops/ProgressRun.h"
#include "imageops/Undo.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/forms/windows/InputGuard.h"

namespace zelvane {
namespace {

/// The colour of each brightness.
using Tone = std::array<Pixel, 256>;

/// Columns that are worked on together, so that memory is read by whole lines of the cache.
constexpr int kColumns = 64;
constexpr int kSeparators[] = {1, 4, 7};

/// Three colours follow each other, each first towards white, then from black.
Pixel ToneOf(int16_t Index, Pixel grey) {
  if (Index == 0) return 0xFF000000 | grey << 16 | grey << 8 | grey;
  const int shift = 16 - 8 * ((Index - 2) / 3);
  const Pixel colour = Pixel{0xFF} << shift;
  const bool is_from_black = Index % 3 == 0;
  const Pixel others = (grey << 16 | grey << 8 | grey) & ~colour;
  return 0xFF000000 | (is_from_black ? grey << shift : colour | others);
}

Tone MakeTone(int16_t Index) {
  Tone tone;
  for (Pixel grey = 0; grey < tone.size(); ++grey) tone[grey] = ToneOf(Index, grey);
  return tone;
}

/// The weighted sum is whole, so no quotient lies halfway between two numbers.
uint32_t Brightness(Pixel pixel) {
  const uint32_t sum = (pixel >> 8 & 0xFF) * 150 + (pixel >> 16 & 0xFF) * 76 + (pixel & 0xFF) * 28;
  return (sum + 127) / 255;
}

void ToneColumns(const Bitmap::Rows& rows, int height, int begin, int end, const Tone& tone) {
  for (int y = 0; y < height; ++y) {
    Pixel* const row = rows[y];
    for (int x = begin; x < end; ++x) row[x] = tone[Brightness(row[x])];
  }
}

/// What runs meanwhile may paint the layer, so each stretch of columns asks for its rows anew.
void ToneLayer(PictureSurface& layer, const Tone& tone) {
  EventsMeanwhile events;
  const int width = layer.ScaleWidth();
  for (int begin = 0; begin < width; begin += kColumns) {
    const int end = std::min(begin + kColumns, width);
    ToneColumns(layer.WritableRows(), layer.ScaleHeight(), begin, end, tone);
    for (int x = begin; x < end; ++x) {
      ProgressRun::Show(static_cast<float>(x) / static_cast<float>(width));
      events.Run();
    }
  }
  layer.AddDamage(layer.Image().Bounds());
}

}  // namespace

int16_t GreyValue(Color color) {
  return static_cast<int16_t>(Brightness(ToPixel(color)));
}

void Greyscale_Click(int16_t Index) {
  ImageDocument* document = ActiveDocument();
  const bool is_separator = std::ranges::find(kSeparators, Index) != std::end(kSeparators);
  if (!document || Index < 0 || Index > 9 || is_separator || ProgressRun::IsStanding()) return;
  {
    const ProgressRun progress;
    const InputGuard guard;
    TakeUndoSnapshot(*document);
    ToneLayer(document->LiveLayer(), MakeTone(Index));
    RefreshPaintArea(document->Buffer);
  }
  document->Dirty = true;
}

}  // namespace zelvane
