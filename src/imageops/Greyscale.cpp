#include "imageops/Greyscale.h"

#include <algorithm>
#include <cstring>

#include "document/layers/ImageDocument.h"
#include "imageops/ProgressRun.h"
#include "surface/forms/windows/EventLoop.h"
#include "surface/raster/FailingStep.h"

namespace zelvane {
namespace {

/// Four pixels, or their halves, are worked on at once.
using Pixels [[gnu::vector_size(16)]] = Pixel;
using Halves [[gnu::vector_size(16)]] = uint16_t;

/// The channels that are always full, and those that take the brightness.
struct Tone {
  Pixel full, open;
};

constexpr int kAtOnce = 4;
constexpr int kSeparators[] = {1, 4, 7};

/// Three colours follow each other, each first towards white, then from black.
Tone ToneOf(int16_t Index) {
  constexpr Pixel kOpaque = 0xFF000000, kChannels = 0xFFFFFF;
  if (Index == 0) return {kOpaque, kChannels};
  const Pixel colour = Pixel{0xFF0000} >> 8 * ((Index - 2) / 3);
  const bool is_from_black = Index % 3 == 0;
  return is_from_black ? Tone{kOpaque, colour} : Tone{kOpaque | colour, kChannels & ~colour};
}

/// The brightness of each pixel, in all of its bytes. A sum is at most 254 * 255, which 16 bits hold, and
/// whole, so no quotient lies halfway between two numbers: adding 128 and a 256th divides it by 255, rounded.
Pixels Brightness(Pixels pixels) {
  constexpr Halves kBlueAndRed = {28, 76, 28, 76, 28, 76, 28, 76}, kGreen = {150, 0, 150, 0, 150, 0, 150, 0};
  const Halves parts = reinterpret_cast<Halves>(pixels & 0x00FF00FF) * kBlueAndRed +
                       (reinterpret_cast<Halves>(pixels) >> 8) * kGreen;
  const auto words = reinterpret_cast<Pixels>(parts);
  const Halves sums = parts + reinterpret_cast<Halves>(words >> 16 | words << 16) + 128;
  return reinterpret_cast<Pixels>(((sums + (sums >> 8)) >> 8) * 0x0101);
}

Pixels Toned(Pixels pixels, Tone tone) {
  return (Brightness(pixels) & tone.open) | tone.full;
}

void ToneRow(const Pixel* from, Pixel* to, int width, Tone tone) {
  int x = 0;
  for (; x + kAtOnce <= width; x += kAtOnce) {
    Pixels pixels;
    std::memcpy(&pixels, from + x, sizeof pixels);
    pixels = Toned(pixels, tone);
    std::memcpy(to + x, &pixels, sizeof pixels);
  }
  for (; x < width; ++x) to[x] = Toned(Pixels{from[x]}, tone)[0];
}

/// A picture is quicker to go through by its rows, so each column that the display counts stands for as many
/// pixels of whole rows.
void ToneLayer(const PictureSurface& from, PictureSurface& to, Tone tone) {
  EventsMeanwhile events;
  const int width = from.ScaleWidth(), height = from.ScaleHeight();
  for (int x = 0, y = 0; x < width; ++x) {
    const auto end = static_cast<int>((x + int64_t{1}) * height / width);
    for (; y < end; ++y) ToneRow(from.Image().Row(y), to.WritableRow(y), width, tone);
    ProgressRun::Show(static_cast<float>(x) / static_cast<float>(width));
    events.Run();
  }
}

/// The tone is made in the undo layer, and the two change places: that spares a copy, and a window that is
/// painted meanwhile shows the picture as it was. Without the memory for it the tone can't be undone.
void ToneLiveLayer(ImageDocument& document, Tone tone) {
  PictureSurface& layer = document.LiveLayer();
  const bool has_undo =
      Attempt([&] { document.Undo.ResizeToOverwrite(layer.ScaleWidth(), layer.ScaleHeight()); });
  ToneLayer(layer, has_undo ? document.Undo : layer, tone);
  has_undo ? layer.ExchangePixels(document.Undo) : layer.AddDamage(layer.Image().Bounds());
  RefreshPaintArea(document.Buffer);
}

}  // namespace

int16_t GreyValue(Color color) {
  return static_cast<int16_t>(Brightness(Pixels{ToPixel(color)})[0] & 0xFF);
}

void Greyscale_Click(int16_t Index) {
  ImageDocument* document = ActiveDocument();
  const bool is_separator = std::ranges::find(kSeparators, Index) != std::end(kSeparators);
  if (!document || Index < 0 || Index > 9 || is_separator || ProgressRun::IsStanding()) return;
  {
    const ProgressRun progress;
    ToneLiveLayer(*document, ToneOf(Index));
  }
  document->Dirty = true;
}

}  // namespace zelvane
