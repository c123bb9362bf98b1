#include "codecs/PictureSamples.h"

#include <zlib.h>

#include <QBuffer>
#include <QImageWriter>
#include <algorithm>
#include <cstdlib>

#include "surface/codecs/PictureDecoder.h"

namespace zelvane::test {

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

std::vector<Bytes> Cuts(const Bytes& bytes) {
  std::vector<Bytes> cuts{Bytes(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(bytes.size() / 2))};
  const size_t step = bytes.size() / 50 + 1;
  for (size_t size = 0; size + 8 < bytes.size(); size += step) {
    cuts.emplace_back(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(size));
  }
  return cuts;
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

void AppendNumber(Bytes& bytes, uint64_t value, int count, bool big_endian) {
  for (int i = 0; i < count; ++i) {
    const int byte = big_endian ? count - 1 - i : i;
    bytes.push_back(static_cast<unsigned char>(byte < 8 ? value >> 8 * byte : 0));
  }
}

void AppendText(Bytes& bytes, const std::string& text) {
  bytes.insert(bytes.end(), text.begin(), text.end());
}

void AppendChunk(Bytes& bytes, const std::string& name, const Bytes& data) {
  AppendNumber(bytes, data.size(), 4, true);
  const size_t from = bytes.size();
  AppendText(bytes, name);
  bytes.insert(bytes.end(), data.begin(), data.end());
  AppendNumber(bytes, crc32(0, bytes.data() + from, static_cast<uInt>(bytes.size() - from)), 4, true);
}

Bytes Mng(uint32_t width, uint32_t height, const Bytes& png, uint32_t left, uint32_t top) {
  Bytes bytes{0x8A, 'M', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  Bytes header;
  AppendNumber(header, width, 4, true);
  AppendNumber(header, height, 4, true);
  header.resize(28);
  AppendChunk(bytes, "MHDR", header);
  AppendChunk(bytes, "LOOP", {0, 0x7F, 0xFF, 0xFF, 0xFF});  // a player that plays this is busy for hours
  AppendChunk(bytes, "ENDL", {0});
  Bytes place{0, 0, 0, 0};
  AppendNumber(place, left, 4, true);
  AppendNumber(place, top, 4, true);
  AppendChunk(bytes, "DEFI", place);
  bytes.insert(bytes.end(), png.begin() + 8, png.end());
  AppendChunk(bytes, "MEND", {});
  return bytes;
}

Bytes BmpHeader(int32_t width, int32_t height, uint32_t depth, uint32_t compression, uint32_t colors) {
  Bytes bytes{'B', 'M'};
  const uint32_t masks = compression == 3 ? 12 : 0;
  for (const auto& [number, size] : {std::pair<uint64_t, int>{0, 8},
                                     {54 + masks + colors * 4, 4},
                                     {40, 4},
                                     {static_cast<uint32_t>(width), 4},
                                     {static_cast<uint32_t>(height), 4},
                                     {1, 2},
                                     {depth, 2},
                                     {compression, 4},
                                     {0, 12},
                                     {colors, 4},
                                     {0, 4}})
    AppendNumber(bytes, number, size);
  return bytes;
}

Bytes Gif() {
  Bytes bytes;
  AppendText(bytes, "GIF89a");
  for (const unsigned char byte : {5, 0, 4, 0, 0x81, 0, 0}) bytes.push_back(byte);
  for (const unsigned char byte : {255, 0, 0, 0, 255, 0, 0, 0, 255, 9, 9, 9}) bytes.push_back(byte);
  for (const unsigned char byte : {0x21, 0xF9, 4, 1, 0, 0, 3, 0}) bytes.push_back(byte);
  for (const unsigned char byte : {0x2C, 1, 0, 1, 0, 3, 0, 2, 0, 0, 2}) bytes.push_back(byte);
  // Codes of three bits, kept at that width by clearing: clear, 0, 1, clear, 2, 3, clear, 0, 1, end.
  uint32_t bits = 0;
  for (const uint32_t code : {5u, 1u, 0u, 4u, 3u, 2u, 4u, 1u, 0u, 4u}) bits = bits << 3 | code;
  bytes.push_back(4);
  AppendNumber(bytes, bits, 4);
  AppendNumber(bytes, 0x3B00, 2);
  return bytes;
}

}  // namespace zelvane::test
