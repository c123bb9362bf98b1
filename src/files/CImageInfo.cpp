#include "files/CImageInfo.h"

#include <optional>
#include <string_view>
#include <vector>

#include "surface/raster/FailingStep.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

constexpr size_t kHeadSize = 65536;

int32_t MakeWord(int low, int high) {
  return high * 256 + low;
}

/// Bits a pixel, no value beyond 8 bits.
std::optional<uint8_t> BitsOf(int channels, int bits) {
  const int depth = channels * bits;
  return depth <= 255 ? std::optional(static_cast<uint8_t>(depth)) : std::nullopt;
}

/// Frame headers tell the size; the three left out are tables and the like.
bool IsFrameHeader(int marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

}  // namespace

/// The start of a file; bytes past the end of a shorter one are 0.
class CImageInfo::Head {
 public:
  explicit Head(const std::string& path) : bytes_(FileStart(path, kHeadSize)) { bytes_.resize(kHeadSize); }

  int operator[](size_t at) const { return bytes_[at]; }
  bool Shows(size_t at, std::string_view signature) const {
    for (size_t i = 0; i < signature.size(); ++i)
      if (bytes_[at + i] != static_cast<unsigned char>(signature[i])) return false;
    return true;
  }
  int32_t Little(size_t at) const { return MakeWord(bytes_[at], bytes_[at + 1]); }
  int32_t Big(size_t at) const { return MakeWord(bytes_[at + 1], bytes_[at]); }

  /// The marker byte of the first frame header of a JPEG stream, which may begin anywhere.
  std::optional<size_t> FrameHeader() const {
    size_t i = 0;
    while (!Shows(i, "\xFF\xD8\xFF") && i < kScanEnd) ++i;
    // On to the second 0xFF, which begins the first segment.
    for (i += 2; i < kScanEnd;) {
      if (bytes_[i] != 0xFF || bytes_[i + 1] == 0xFF) {
        ++i;
        continue;
      }
      if (IsFrameHeader(bytes_[++i])) return i;
      i += static_cast<size_t>(Big(i + 1));
    }
    return std::nullopt;
  }

 private:
  /// Behind it a frame header wouldn't be in the head as a whole.
  static constexpr size_t kScanEnd = 0xFFF5;
  std::vector<unsigned char> bytes_;
};

void CImageInfo::ReadImageInfo(const std::string& FileName) {
  *this = CImageInfo{};
  const Head head(FileName);
  if (head.Shows(0, "\x89PN")) return ReadPng(head);
  if (head.Shows(0, "GIF")) return ReadGif(head);
  if (head.Shows(0, "BM")) return ReadBmp(head);
  ReadJpeg(head);
}

void CImageInfo::ReadPng(const Head& head) {
  const int bits = head[24];
  switch (head[25]) {
    case 0:
      Assign(Depth_, BitsOf(1, bits));
      break;
    case 2:
      Assign(Depth_, BitsOf(3, bits));
      break;
    case 3:
      Depth_ = 8;
      break;
    case 4:
      Assign(Depth_, BitsOf(2, bits));
      break;
    case 6:
      Assign(Depth_, BitsOf(4, bits));
      break;
    default:
      return;
  }
  ImageType_ = kPng;
  Width_ = head.Big(18);
  Height_ = head.Big(22);
}

void CImageInfo::ReadGif(const Head& head) {
  ImageType_ = kGif;
  Width_ = head.Little(6);
  Height_ = head.Little(8);
  Depth_ = static_cast<uint8_t>((head[10] & 7) + 1);
}

void CImageInfo::ReadBmp(const Head& head) {
  ImageType_ = kBmp;
  Width_ = head.Little(18);
  Height_ = head.Little(22);
  Depth_ = static_cast<uint8_t>(head[28]);
}

void CImageInfo::ReadJpeg(const Head& head) {
  With(head.FrameHeader(), [&](size_t marker) {
    ImageType_ = kJpeg;
    Assign(Depth_, BitsOf(head[marker + 8], 8));
    Height_ = head.Big(marker + 4);
    Width_ = head.Big(marker + 6);
  });
}

}  // namespace zelvane
