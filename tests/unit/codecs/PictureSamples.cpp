#include "codecs/PictureSamples.h"

#include <zlib.h>

#include <QBuffer>
#include <QImageWriter>
#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "surface/codecs/PictureDecoder.h"

namespace zelvane::test {

std::string Folder::Put(const std::string& name, const std::string& text) const {
  std::ofstream(Path(name)) << text;
  return Path(name);
}

QImage Sample(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      image.setPixel(x, y, qRgb(x * 255 / (width - 1), y * 255 / (height - 1), (x * 7 + y * 13) % 256));
    }
  }
  return image;
}

Bytes Encoded(const QImage& image, const char* format, int quality,
              QImageIOHandler::Transformations transformation, bool progressive) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QImageWriter writer(&buffer, format);
  writer.setQuality(quality);
  writer.setTransformation(transformation);
  writer.setProgressiveScanWrite(progressive);
  writer.write(image);
  return {buffer.data().begin(), buffer.data().end()};
}

std::optional<Bitmap> Decoded(const Bytes& bytes) {
  return DecodePicture({bytes.data(), bytes.size()}, LimitByMemory());
}

std::vector<Pixel> PixelsOf(const Bytes& bytes) {
  const auto bitmap = Decoded(bytes);
  std::vector<Pixel> pixels;
  for (int y = 0; bitmap && y < bitmap->Height(); ++y)
    pixels.insert(pixels.end(), bitmap->Row(y), bitmap->Row(y) + bitmap->Width());
  return pixels;
}

int Difference(const std::optional<Bitmap>& bitmap, const QImage& expected) {
  if (!bitmap || bitmap->Width() != expected.width() || bitmap->Height() != expected.height()) return 256;
  int largest = 0;
  for (int y = 0; y < expected.height(); ++y) {
    for (int x = 0; x < expected.width(); ++x) {
      const QRgb a = bitmap->Row(y)[x], b = expected.pixel(x, y) | 0xFF000000u;
      if (qAlpha(a) != 255) return 256;
      largest = std::max({largest, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                          std::abs(qBlue(a) - qBlue(b))});
    }
  }
  return largest;
}

Bytes operator+(Bytes start, const Bytes& rest) {
  start.insert(start.end(), rest.begin(), rest.end());
  return start;
}

Bytes Part(const Bytes& bytes, size_t from, size_t count) {
  const auto start = bytes.begin() + static_cast<ptrdiff_t>(from);
  return {start, start + static_cast<ptrdiff_t>(count)};
}

Bytes Text(const std::string& text) {
  return {text.begin(), text.end()};
}

Bytes Numbers(const std::vector<uint64_t>& values, int size, bool big_endian) {
  Bytes bytes;
  for (const uint64_t value : values) {
    for (int i = 0; i < size; ++i) {
      const int byte = big_endian ? size - 1 - i : i;
      bytes.push_back(static_cast<unsigned char>(value >> 8 * byte));
    }
  }
  return bytes;
}

Bytes PngChunk(const std::string& name, const Bytes& data) {
  const Bytes summed = Text(name) + data;
  const uint64_t sum = crc32(0, summed.data(), static_cast<uInt>(summed.size()));
  return Numbers({data.size()}, 4, true) + summed + Numbers({sum}, 4, true);
}

Bytes WithChunk(const Bytes& png, const Bytes& chunk) {
  constexpr size_t kHeaderEnd = 33;
  return Part(png, 0, kHeaderEnd) + chunk + Part(png, kHeaderEnd, png.size() - kHeaderEnd);
}

Bytes Packed(const Bytes& bytes) {
  Bytes packed(compressBound(bytes.size()));
  uLongf size = packed.size();
  compress(packed.data(), &size, bytes.data(), bytes.size());
  packed.resize(size);
  return packed;
}

Bytes Mng(uint32_t width, uint32_t height, const Bytes& png, uint32_t left, uint32_t top) {
  constexpr size_t kSignature = 8;
  return Bytes{0x8A, 'M', 'N', 'G', '\r', '\n', 0x1A, '\n'} +
         PngChunk("MHDR", Numbers({width, height, 0, 0, 0, 0, 0}, 4, true)) +
         PngChunk("LOOP", {0, 0x7F, 0xFF, 0xFF, 0xFF}) +  // a player that plays this is busy for hours
         PngChunk("ENDL", {0}) + PngChunk("DEFI", Numbers({0, left, top}, 4, true)) +
         Part(png, kSignature, png.size() - kSignature) + PngChunk("MEND", {});
}

Bytes BmpHeader(int32_t width, int32_t height, uint32_t depth, uint32_t compression, uint32_t colors) {
  const uint32_t masks = compression == 3 ? 12 : 0;
  const auto side = [](int32_t value) { return static_cast<uint32_t>(value); };
  return Text("BM") + Numbers({0, 0, 54 + masks + colors * 4, 40, side(width), side(height)}, 4) +
         Numbers({1, depth}, 2) + Numbers({compression, 0, 0, 0, colors, 0}, 4);
}

Bytes PcxHeader(uint32_t width, uint32_t height, uint32_t depth, uint32_t planes, uint32_t stride,
                const Bytes& palette) {
  Bytes header = Bytes{10, 5, 1, static_cast<unsigned char>(depth)} +
                 Numbers({7, 9, 6 + width, 8 + height, 96, 96}, 2) + palette;
  header.resize(65);
  header = std::move(header) + Numbers({planes}, 1) + Numbers({stride, 1}, 2);
  header.resize(128);
  return header;
}

Bytes Gif() {
  // Codes of three bits, kept at that width by clearing (4), the last first.
  uint64_t bits = 0;
  for (const uint32_t code : {5u, 1u, 0u, 4u, 3u, 2u, 4u, 1u, 0u, 4u}) bits = bits << 3 | code;
  return Text("GIF89a") + Bytes{5, 0, 4, 0, 0x81, 0, 0} + Bytes{255, 0, 0, 0, 255, 0, 0, 0, 255, 9, 9, 9} +
         Bytes{0x21, 0xF9, 4, 1, 0, 0, 3, 0} + Bytes{0x2C, 1, 0, 1, 0, 3, 0, 2, 0, 0, 2, 4} +
         Numbers({bits}, 4) + Numbers({0x3B00}, 2);
}

}  // namespace zelvane::test
