#include "surface/codecs/IndexedPicture.h"

#include "surface/codecs/Dither.h"

namespace zelvane {

namespace {

/// For each colour of the picture the place of the nearest in a palette.
using Places = std::vector<unsigned char>;

Places NearestPlaces(const ColourCounts& counts, const Palette& palette) {
  const std::vector<ColourPoint> points = PointsOf(palette);
  const NearestColour nearest(points);
  Places places;
  for (const auto& [colour, count] : counts.Entries())
    places.push_back(static_cast<unsigned char>(nearest.PlaceOf(PointOf(colour))));
  return places;
}

/// Nine in ten pixels have colours of the palette, as in a drawing with smooth edges.
bool HoldsNearlyAll(const ColourCounts& counts, const Palette& palette, const Places& places) {
  uint64_t held = 0, all = 0;
  for (size_t i = 0; i < places.size(); ++i) {
    const auto& [colour, count] = counts.Entries()[i];
    all += count;
    if (palette[places[i]] == colour) held += count;
  }
  return held * 10 >= all * 9;
}

std::vector<unsigned char> Mapped(const Bitmap& picture, const ColourCounts& counts, const Places& places) {
  std::vector<unsigned char> mapped;
  mapped.reserve(static_cast<size_t>(picture.Width()) * static_cast<size_t>(picture.Height()));
  Pixel last = 0;
  unsigned char place = 0;
  for (int y = 0; y < picture.Height(); ++y) {
    const Pixel* row = picture.Row(y);
    for (int x = 0; x < picture.Width(); ++x) {
      if (row[x] != last) place = places[counts.PlaceOf(last = row[x])];
      mapped.push_back(place);
    }
  }
  return mapped;
}

Palette ExactPalette(const ColourCounts& counts) {
  Palette palette;
  for (const auto& [colour, count] : counts.Entries()) palette.push_back(colour);
  return palette;
}

}  // namespace

IndexedPicture ToIndexed(const Bitmap& picture) {
  ColourCounts counts(picture);
  if (counts.Entries().size() <= kPaletteSize) return {ExactPalette(counts), counts.TakeLowBytes()};
  const Palette palette = Quantise(counts.AreMany() ? MeanColoursOf(picture) : ColoursOf(counts));
  if (!counts.AreMany()) {
    const Places places = NearestPlaces(counts, palette);
    if (HoldsNearlyAll(counts, palette, places)) return {palette, Mapped(picture, counts, places)};
  }
  return {palette, Dither(picture, palette)};
}

}  // namespace zelvane
