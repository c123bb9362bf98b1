#pragma once

#include <QImage>
#include <QImageIOHandler>
#include <QTemporaryDir>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "surface/raster/Bitmap.h"

/// Files that the tests of the readers make.
namespace zelvane::test {

using Bytes = std::vector<unsigned char>;

/// A folder of its own, gone at the end of the test.
class Folder {
 public:
  std::string Path(const std::string& name) const {
    return folder_.filePath(QString::fromStdString(name)).toStdString();
  }

 private:
  QTemporaryDir folder_;
};

/// No two pixels alike, every channel over its whole range.
QImage Sample(int width = 37, int height = 23);

Bytes Encoded(const QImage& image, const char* format, int quality = -1,
              QImageIOHandler::Transformations transformation = {}, bool progressive = false);

std::optional<Bitmap> Decoded(const Bytes& bytes);

/// Every size shorter than the whole; the step keeps large files quick.
std::vector<Bytes> Cuts(const Bytes& bytes);

/// The largest difference of a channel; 256 where the sizes differ.
int Difference(const std::optional<Bitmap>& bitmap, const QImage& expected);

void AppendNumber(Bytes& bytes, uint64_t value, int count, bool big_endian = false);
void AppendText(Bytes& bytes, const std::string& text);

/// A chunk of PNG's kind, with a checksum of its own.
void AppendChunk(Bytes& bytes, const std::string& name, const Bytes& data);

/// An animation of one PNG at a place on a canvas.
Bytes Mng(uint32_t width, uint32_t height, const Bytes& png, uint32_t left, uint32_t top);

/// A bitmap file's headers; the pixels or the palette follow.
Bytes BmpHeader(int32_t width, int32_t height, uint32_t depth, uint32_t compression, uint32_t colors = 0);

/// One frame of 3 x 2 at (1, 1) on a screen of 5 x 4; colours 0 red, 1 green, 2 blue, 3 see-through.
Bytes Gif();

}  // namespace zelvane::test
