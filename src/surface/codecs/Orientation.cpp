#include "surface/codecs/Orientation.h"

#include <algorithm>

namespace zelvane {

namespace {

constexpr uint32_t kAsStored = 1, kLast = 8;

/// Where the first pixel shown is stored, and the way from there to the next one in a row and in a column.
struct Path {
  const Pixel* first;
  ptrdiff_t across, down;
};

Path PathThrough(const Bitmap& stored, uint32_t orientation) {
  const bool swapped = orientation >= 5;
  const bool from_right = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
  const bool from_bottom = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
  const ptrdiff_t x_step = from_right ? -1 : 1, y_step = from_bottom ? -stored.Width() : stored.Width();
  const Pixel* first =
      stored.Row(from_bottom ? stored.Height() - 1 : 0) + (from_right ? stored.Width() - 1 : 0);
  return {first, swapped ? y_step : x_step, swapped ? x_step : y_step};
}

}  // namespace

Bitmap Oriented(Bitmap stored, uint32_t orientation) {
  if (orientation <= kAsStored || orientation > kLast || stored.IsEmpty()) return stored;
  const bool swapped = orientation >= 5;
  Bitmap shown = Bitmap::Uninitialised(swapped ? stored.Height() : stored.Width(),
                                       swapped ? stored.Width() : stored.Height());
  const Path path = PathThrough(stored, orientation);
  // In squares that the cache holds, as rows and columns may change places.
  constexpr int kSquare = 32;
  for (int top = 0; top < shown.Height(); top += kSquare) {
    for (int left = 0; left < shown.Width(); left += kSquare) {
      const int right = std::min(shown.Width(), left + kSquare);
      for (int y = top; y < std::min(shown.Height(), top + kSquare); ++y) {
        Pixel* row = shown.WritableRow(y);
        for (int x = left; x < right; ++x) row[x] = path.first[y * path.down + x * path.across];
      }
    }
  }
  return shown;
}

uint32_t ExifOrientation(ByteView notes) {
  constexpr uint64_t kEntry = 12;
  constexpr uint32_t kOrientation = 0x0112, kShort = 3;
  const bool big = notes.StartsWith("MM\0*", 4);
  if (!big && !notes.StartsWith("II*\0", 4)) return kAsStored;
  const auto number16 = [&](uint64_t at) { return big ? notes.Big16(at) : notes.Little16(at); };
  const uint64_t directory = big ? notes.Big32(4) : notes.Little32(4);
  const uint32_t count = number16(directory);
  for (uint32_t i = 0; i < count; ++i) {
    const uint64_t entry = directory + 2 + i * kEntry;
    if (!notes.Has(entry, kEntry)) break;
    if (number16(entry) == kOrientation && number16(entry + 2) == kShort) return number16(entry + 8);
  }
  return kAsStored;
}

}  // namespace zelvane
