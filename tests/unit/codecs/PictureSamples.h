#pragma once

#include <QImage>
#include <QImageIOHandler>
#include <QTemporaryDir>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "surface/raster/Bitmap.h"

/// Files that the tests make.
namespace zelvane::test {

using Bytes = std::vector<unsigned char>;

inline constexpr Pixel kRed = 0xFFFF0000u, kGreen = 0xFF00FF00u, kBlue = 0xFF0000FFu,
                       kWhitePixel = 0xFFFFFFFFu, kBlackPixel = 0xFF000000u;

/// A folder of its own, gone at the end of the test.
class Folder {
 public:
  /// A name may be any bytes.
  std::string Path(const std::string& name) const { return folder_.path().toStdString() + '/' + name; }
  /// Writes a file and returns its path.
  std::string Put(const std::string& name, const std::string& text) const;

 private:
  QTemporaryDir folder_;
};

/// No two pixels alike, every channel over its whole range.
QImage Sample(int width = 37, int height = 23);

Bytes Encoded(const QImage& image, const char* format, int quality = -1,
              QImageIOHandler::Transformations transformation = {}, bool progressive = false);

std::optional<Bitmap> Decoded(const Bytes& bytes);
/// Row by row; none where the file doesn't open.
std::vector<Pixel> PixelsOf(const Bytes& bytes);

/// The largest difference of a channel; 256 where the sizes differ.
int Difference(const std::optional<Bitmap>& bitmap, const QImage& expected);
inline int Difference(const Bytes& bytes, const QImage& expected) {
  return Difference(Decoded(bytes), expected);
}

Bytes operator+(Bytes start, const Bytes& rest);
Bytes Part(const Bytes& bytes, size_t from, size_t count);
Bytes Text(const std::string& text);
/// Each value in that many bytes.
Bytes Numbers(const std::vector<uint64_t>& values, int size, bool big_endian = false);

/// A chunk of PNG's kind, with its checksum; the file with a chunk more, behind the header; bytes packed as
/// PNG packs them.
Bytes PngChunk(const std::string& name, const Bytes& data);
Bytes WithChunk(const Bytes& png, const Bytes& chunk);
Bytes Packed(const Bytes& bytes);

/// An animation of one PNG at a place on a canvas.
Bytes Mng(uint32_t width, uint32_t height, const Bytes& png, uint32_t left = 0, uint32_t top = 0);

/// A bitmap file's headers; the pixels or the palette follow.
Bytes BmpHeader(int32_t width, int32_t height, uint32_t depth, uint32_t compression, uint32_t colors = 0);

/// The header of a Paintbrush file, whose packed rows follow.
Bytes PcxHeader(uint32_t width, uint32_t height, uint32_t depth, uint32_t planes, uint32_t stride,
                const Bytes& palette = {});

/// One frame of 3 x 2 at (1, 1) on a screen of 5 x 4; colours 0 red, 1 green, 2 blue, 3 see-through.
Bytes Gif();

}  // namespace zelvane::test
