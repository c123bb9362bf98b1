#include "surface/codecs/PngNotes.h"

#include <zlib.h>

#include <algorithm>
#include <string_view>

#include "surface/codecs/Orientation.h"

namespace zelvane {

namespace {

using Bytes = std::vector<unsigned char>;

/// The text behind its keyword and the zero after that; unpacked where the chunk is of the packed kind, as
/// far as `most` bytes.
Bytes TextOf(const Chunk& chunk, size_t keyword, size_t most) {
  const bool packed = chunk.name == ChunkName("zTXt");
  const ByteView stored = chunk.data.From(keyword + (packed ? 2 : 1));
  if (!packed) return {stored.Data(), stored.Data() + std::min(stored.Size(), most)};
  Bytes text(most);
  uLongf size = most;
  uncompress(text.data(), &size, stored.Data(), stored.Size());  // what came out before a fault will do
  text.resize(size);
  return text;
}

int HexValue(unsigned char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  const int letter = digit | 0x20;
  return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

/// Notes as text: mostly an empty line, a line with their name, one with their length, and pairs of digits in
/// lines.
Bytes FromHex(const Bytes& text) {
  auto at = text.begin();
  for (int line = !text.empty() && text[0] == '\n' ? 0 : 1; line < 3; ++line) {
    at = std::find(at, text.end(), '\n');
    if (at != text.end()) ++at;
  }
  Bytes bytes;
  int high = -1;
  for (; at != text.end(); ++at) {
    const int value = HexValue(*at);
    if (value < 0) continue;
    if (high >= 0) bytes.push_back(static_cast<unsigned char>(high << 4 | value));
    high = high < 0 ? value : -1;
  }
  return bytes;
}

uint32_t OrientationIn(ByteView notes) {
  constexpr char kName[] = "Exif\0";
  return ExifOrientation(notes.StartsWith(kName, sizeof kName) ? notes.From(sizeof kName) : notes);
}

/// No bytes where the packed ones don't suffice.
Bytes Unpacked(ByteView packed, size_t count) {
  Bytes bytes(count);
  uLongf size = count;
  uncompress(bytes.data(), &size, packed.Data(), packed.Size());
  if (size < count) bytes.clear();
  return bytes;
}

}  // namespace

uint32_t PngOrientation(const std::vector<Chunk>& chunks) {
  constexpr std::string_view kKeyword = "Raw profile type exif", kOtherKeyword = "Raw profile type APP1";
  constexpr size_t kMostText = size_t{1} << 18;
  for (const Chunk& chunk : chunks) {
    if (chunk.name == ChunkName("eXIf")) return OrientationIn(chunk.data);
  }
  for (const Chunk& chunk : chunks) {
    if (chunk.name != ChunkName("zTXt") && chunk.name != ChunkName("tEXt")) continue;
    if (!chunk.data.StartsWith(kKeyword.data(), kKeyword.size() + 1) &&
        !chunk.data.StartsWith(kOtherKeyword.data(), kOtherKeyword.size() + 1)) {
      continue;
    }
    const Bytes notes = FromHex(TextOf(chunk, kKeyword.size(), kMostText));
    return OrientationIn({notes.data(), notes.size()});
  }
  return 1;
}

std::vector<unsigned char> PngProfile(const std::vector<Chunk>& chunks) {
  constexpr size_t kMost = size_t{1} << 22, kName = 80;
  const Chunk* found = nullptr;
  for (const Chunk& chunk : chunks) {
    if (chunk.name == ChunkName("sRGB")) return {};
    if (chunk.name == ChunkName("iCCP")) found = &chunk;
  }
  if (!found) return {};
  size_t name = 0;
  while (name < kName && found->data.At(name) != 0) ++name;
  // A profile begins with its size.
  const ByteView packed = found->data.From(name + 2);
  const Bytes start = Unpacked(packed, 4);
  const size_t size = ByteView(start.data(), start.size()).Big32(0);
  return size <= kMost ? Unpacked(packed, size) : Bytes();
}

}  // namespace zelvane
