#include "surface/codecs/IconLibrary.h"

#include <algorithm>
#include <bit>
#include <tuple>
#include <utility>

#include "surface/codecs/Flatten.h"
#include "surface/codecs/IconImage.h"
#include "surface/raster/Canvas.h"

namespace zelvane {

namespace {

constexpr size_t kHeader = 6;
constexpr size_t kGroupEntry = 14, kFileEntry = 16;  // the last field is a number, or a place in the file
constexpr size_t kLargestGroup = kHeader + 65535 * kGroupEntry;
/// Larger ones aren't drawn: many times what any icon has.
constexpr SizeLimit kLargestPicture{2048 * 2048};
constexpr size_t kLargestData = size_t{20} << 20;

bool IsIconFile(ByteView start) {
  return start.StartsWith("\0\0\1\0", 4) || start.StartsWith("\0\0\2\0", 4);
}

/// Bits a pixel as a directory tells them; where it doesn't, as many as its number of colours needs.
uint32_t DepthOf(ByteView entry) {
  constexpr uint32_t kDeepest = 32;
  const uint32_t colours = entry.At(2), told = entry.Little16(6);
  if (told != 0) return std::min(told, kDeepest);
  return colours == 0 ? 8 : static_cast<uint32_t>(std::bit_width(colours - 1));
}

/// How far a picture's side is from the one wanted. One that has to be enlarged is twice as far as one that
/// shrinks.
int DistanceOf(uint32_t side) {
  constexpr int kSide = IconLibrary::kSide;
  const int pixels = side == 0 ? 256 : static_cast<int>(side);
  return pixels < kSide ? 2 * (kSide - pixels) : pixels - kSide;
}

/// The entry of the picture that suits best: the nearest size, of those the deepest, then the largest data.
ByteView BestEntry(ByteView directory, size_t entry_size) {
  using Merit = std::tuple<int, uint32_t, uint32_t>;
  ByteView best;
  Merit best_merit;
  const uint32_t count = directory.Little16(4);
  for (uint32_t i = 0; i < count && directory.Has(kHeader + i * entry_size, entry_size); ++i) {
    const ByteView entry = directory.Part(kHeader + i * entry_size, entry_size);
    const int distance = DistanceOf(entry.At(0)) + DistanceOf(entry.At(1));
    const Merit merit{-distance, DepthOf(entry), entry.Little32(8)};
    if (best.Size() > 0 && merit <= best_merit) continue;
    best = entry;
    best_merit = merit;
  }
  return best;
}

void LayOn(Bitmap& picture, Pixel ground) {
  for (int y = 0; y < picture.Height(); ++y) {
    Pixel* const row = picture.WritableRow(y);
    std::transform(row, row + picture.Width(), row, [=](Pixel pixel) { return LaidOn(pixel, ground); });
  }
}

Bitmap Scaled(Bitmap picture, int side) {
  if (picture.Width() == side && picture.Height() == side) return picture;
  Canvas whole, scaled;
  whole.SetImage(std::move(picture));
  scaled.ResizeToOverwrite(side, side);
  scaled.StretchBlt(0, 0, side, side, whole, 0, 0, whole.ScaleWidth(), whole.ScaleHeight());
  return scaled.Image();
}

}  // namespace

IconLibrary::IconLibrary(RangeReader read) : read_(std::move(read)) {
  const Bytes start = read_(0, kHeader);
  is_icon_file_ = IsIconFile(View(start)) && View(start).Little16(4) > 0;
  if (is_icon_file_) return;
  resources_ = ProgramResources(read_);
  groups_ = resources_.OfType(ProgramResources::kIconGroup);
  images_ = resources_.OfType(ProgramResources::kIcon);
}

Bytes IconLibrary::ImageOf(uint32_t name) const {
  const auto image =
      std::find_if(images_.begin(), images_.end(), [=](const auto& entry) { return entry.name == name; });
  return image == images_.end() ? Bytes{} : resources_.DataOf(*image, kLargestData);
}

/// The bytes of the picture that suits best.
Bytes IconLibrary::PictureOf(int index) const {
  if (index < 0 || index >= Count()) return {};
  if (!is_icon_file_) {
    const Bytes group = resources_.DataOf(groups_[static_cast<size_t>(index)], kLargestGroup);
    return ImageOf(BestEntry(View(group), kGroupEntry).Little16(12));
  }
  const Bytes directory = read_(0, kHeader + View(read_(0, kHeader)).Little16(4) * kFileEntry);
  const ByteView best = BestEntry(View(directory), kFileEntry);
  const size_t size = best.Little32(8);
  return size > kLargestData ? Bytes{} : read_(best.Little32(12), size);
}

std::optional<Bitmap> IconLibrary::Draw(int index, Pixel ground) const {
  ReadingWatch nobody;
  const Bytes data = PictureOf(index);
  std::optional<Bitmap> picture = DecodeIconImage(View(data), kLargestPicture, nobody);
  if (!picture) return std::nullopt;
  LayOn(*picture, ground);
  return Scaled(std::move(*picture), kSide);
}

}  // namespace zelvane
