#pragma once

#include <cstdint>
#include <optional>
#include <utility>

#include "surface/codecs/ByteView.h"
#include "surface/codecs/ReadingWatch.h"
#include "surface/raster/Bitmap.h"

/// Pictures out of the bytes of a file, one reader a kind. What a header claims is checked before anything is
/// allocated, and a picture whose data doesn't reach its last row is no picture.
namespace zelvane {

/// How large a picture may claim to be.
struct SizeLimit {
  /// Width times height.
  int64_t pixels = 0;

  /// For a reader that needs half as much memory again while it works.
  SizeLimit WithHalfAgain() const { return {pixels - pixels / 3}; }
  /// What the picture and its copy may take together, in bytes.
  int64_t Bytes() const { return pixels * 2 * int64_t{sizeof(Pixel)}; }
  bool Admits(int64_t width, int64_t height) const {
    return width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide &&
           width * height <= pixels;
  }
};

/// The picture and one copy of it fit into the memory that is available.
SizeLimit LimitByMemory();

/// The beginning of a file tells that one of the readers might take it.
bool LooksLikePicture(ByteView start);
/// How many bytes `LooksLikePicture` wants to see.
inline constexpr size_t kPictureStart = 64;

/// The kinds of files that are written too.
enum class WrittenKind : uint8_t { None, Bitmap, Gif, Jpeg, Tiff, Icon };

/// A picture as it was read, and the kind of file that would hold all of it again. None where the file held
/// more (further frames or pages, more than 8 bits a channel, inks, transparency), or is of no written kind.
struct DecodedPicture : Bitmap {
  DecodedPicture(Bitmap bitmap, WrittenKind kind = WrittenKind::None)
      : Bitmap(std::move(bitmap)), whole_as(kind) {}
  WrittenKind whole_as;
};

/// No value where the bytes are no whole picture of a known kind, or one that the limit doesn't admit, or
/// where the watch stopped it.
std::optional<DecodedPicture> DecodePicture(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
inline std::optional<DecodedPicture> DecodePicture(ByteView bytes, SizeLimit limit) {
  ReadingWatch nobody;
  return DecodePicture(bytes, limit, nobody);
}

/// The readers. Each trusts that the first bytes are those of its kind.
std::optional<DecodedPicture> DecodeBmp(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
std::optional<DecodedPicture> DecodeGif(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
std::optional<DecodedPicture> DecodeIcon(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
std::optional<DecodedPicture> DecodeJpeg(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
std::optional<DecodedPicture> DecodeMng(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
std::optional<DecodedPicture> DecodePcx(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
std::optional<DecodedPicture> DecodePng(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
std::optional<DecodedPicture> DecodeTiff(ByteView bytes, SizeLimit limit, ReadingWatch& watch);
std::optional<DecodedPicture> DecodeXbm(ByteView bytes, SizeLimit limit, ReadingWatch& watch);

}  // namespace zelvane
