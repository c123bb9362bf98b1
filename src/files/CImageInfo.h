#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// What the first bytes of a picture file tell of it, without decoding the picture. Sizes are in pixels and
/// hold the low 16 bits of what the file says.
class CImageInfo {
 public:
  /// The index into `FileTypeNames`.
  enum ImageTypes : int32_t { kUnknown = 0, kGif = 1, kJpeg = 2, kPng = 3, kBmp = 4 };

  /// Reads at most 65,536 bytes. All is 0 where the file can't be read or is none of the known kinds.
  void ReadImageInfo(const std::string& FileName);

  int32_t Width() const { return Width_; }
  int32_t Height() const { return Height_; }
  /// Bits a pixel.
  uint8_t Depth() const { return Depth_; }
  int32_t ImageType() const { return ImageType_; }

 private:
  class Head;
  void ReadPng(const Head& head);
  void ReadGif(const Head& head);
  void ReadBmp(const Head& head);
  void ReadJpeg(const Head& head);

  int32_t Width_ = 0, Height_ = 0;
  uint8_t Depth_ = 0;
  int32_t ImageType_ = kUnknown;
};

}  // namespace zelvane
