#include "surface/codecs/LittleBytes.h"
#include "surface/codecs/PictureEncoder.h"

namespace zelvane {

namespace {

constexpr int kLargestIcon = 256;
constexpr Pixel kWhitePixel = 0xFFFFFFFFu, kColours = 0x00FFFFFFu;

bool IsClear(const Bitmap& mask, int x, int y) {
  return mask.Row(y)[x] == kWhitePixel;
}

/// With opacity, since readers of today look at the mask only where there are fewer than 32 bits, and not all
/// of them even then.
void PutColours(Bytes& bytes, const Bitmap& image, const Bitmap& mask) {
  for (int y = image.Height() - 1; y >= 0; --y) {
    for (int x = 0; x < image.Width(); ++x)
      PutLittle(bytes, IsClear(mask, x, y) ? image.Row(y)[x] & kColours : image.Row(y)[x], 4);
  }
}

/// A bit a pixel, set where the ground shows; each row is filled up to four bytes.
void PutMask(Bytes& bytes, const Bitmap& mask) {
  for (int y = mask.Height() - 1; y >= 0; --y) {
    for (int left = 0; left < (mask.Width() + 31) / 32 * 32; left += 8) {
      unsigned eight = 0;
      for (int x = left; x < left + 8; ++x) eight = eight << 1 | (x < mask.Width() && IsClear(mask, x, y));
      PutLittle(bytes, eight, 1);
    }
  }
}

/// The picture's header and its two parts, one above the other.
Bytes Picture(const Bitmap& image, const Bitmap& mask) {
  constexpr uint64_t kHeader = 40;
  Bytes bytes;
  PutLittle(bytes, kHeader, 4);
  PutLittle(bytes, static_cast<uint64_t>(image.Width()), 4);
  PutLittle(bytes, static_cast<uint64_t>(image.Height() + mask.Height()), 4);
  PutLittle(bytes, 1, 2);   // planes
  PutLittle(bytes, 32, 2);  // bits a pixel
  bytes.resize(kHeader);    // no compression, no palette
  PutColours(bytes, image, mask);
  PutMask(bytes, mask);
  return bytes;
}

/// A side of 256 is told as 0.
uint64_t SideByte(int side) {
  return static_cast<uint64_t>(side % kLargestIcon);
}

}  // namespace

bool EncodeIco(const Bitmap& image, const Bitmap& mask, const PieceSink& sink) {
  if (image.IsEmpty() || image.Width() > kLargestIcon || image.Height() > kLargestIcon) return false;
  const Bytes picture = Picture(image, mask);
  Bytes directory;
  PutLittle(directory, 0, 2);
  PutLittle(directory, 1, 2);  // icons, not pointers
  PutLittle(directory, 1, 2);  // one picture
  PutLittle(directory, SideByte(image.Width()), 1);
  PutLittle(directory, SideByte(image.Height()), 1);
  PutLittle(directory, 0, 2);   // no palette
  PutLittle(directory, 1, 2);   // planes
  PutLittle(directory, 32, 2);  // bits a pixel
  PutLittle(directory, picture.size(), 4);
  PutLittle(directory, directory.size() + 4, 4);  // where the picture starts
  return sink(directory.data(), directory.size()) && sink(picture.data(), picture.size());
}

}  // namespace zelvane
