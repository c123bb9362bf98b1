#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

namespace {

constexpr Pixel kWhitePixel = 0xFFFFFFFFu;
constexpr int kNoTransparency = -1;
constexpr uint32_t kLargestCode = 4096;  // codes have 12 bits at most

struct Palette {
  std::array<Pixel, 256> colors{};
};

/// The first image of the file, its data still packed.
struct Frame {
  uint32_t left = 0, top = 0, width = 0, height = 0;
  bool interlaced = false;
  int transparent = kNoTransparency;
  Palette palette;
  uint32_t code_size = 0;
  bool alone = false;  // nothing but the mark of the end follows
  std::vector<unsigned char> data;
};

Palette ReadPalette(ByteView bytes, uint64_t at, uint32_t count) {
  Palette palette;
  palette.colors.fill(0xFF000000u);
  for (uint32_t i = 0; i < count; ++i, at += 3) {
    palette.colors[i] = 0xFF000000u | bytes.At(at) << 16 | bytes.At(at + 1) << 8 | bytes.At(at + 2);
  }
  return palette;
}

/// Colours of the table that the packed field of a descriptor announces.
uint32_t TableSize(uint32_t packed) {
  return packed & 0x80 ? 2u << (packed & 7) : 0;
}

/// Walks the blocks of a file.
class Blocks {
 public:
  explicit Blocks(ByteView bytes) : bytes_(bytes) {
    const uint32_t count = TableSize(bytes.At(10));
    global_ = ReadPalette(bytes, 13, count);
    at_ = 13 + uint64_t{3} * count;
  }

  /// No value where there is no image, or a block before it isn't whole.
  std::optional<Frame> FirstFrame() {
    while (at_ < bytes_.Size()) {
      const uint32_t kind = bytes_.At(at_++);
      if (kind == 0) continue;  // filling between blocks, which some writers leave
      if (kind == 0x2C) {
        Frame frame = ReadImage();
        frame.alone = EndsHere();
        return frame;
      }
      if (kind != 0x21 || !ReadExtension()) break;
    }
    return std::nullopt;
  }

 private:
  bool EndsHere() {
    while (at_ < bytes_.Size()) {
      const uint32_t kind = bytes_.At(at_++);
      if (kind == 0x3B) return true;
      if (kind != 0 && (kind != 0x21 || !ReadExtension())) return false;
    }
    return false;
  }
  /// Appends a chain of sub-blocks to `data`, where there is one. False where the chain has no end.
  bool ReadChain(std::vector<unsigned char>* data) {
    while (bytes_.Has(at_, 1)) {
      const uint32_t count = bytes_.At(at_++);
      if (count == 0) return true;
      if (!bytes_.Has(at_, count)) return false;
      if (data) data->insert(data->end(), bytes_.Data() + at_, bytes_.Data() + at_ + count);
      at_ += count;
    }
    return false;
  }
  bool ReadExtension() {
    const uint32_t label = bytes_.At(at_++);
    if (label == 0xF9 && bytes_.At(at_) >= 4) {
      transparent_ = bytes_.At(at_ + 1) & 1 ? static_cast<int>(bytes_.At(at_ + 4)) : kNoTransparency;
    }
    return ReadChain(nullptr);
  }
  /// Whether its data suffices shows when it's unpacked.
  Frame ReadImage() {
    Frame frame;
    frame.left = bytes_.Little16(at_);
    frame.top = bytes_.Little16(at_ + 2);
    frame.width = bytes_.Little16(at_ + 4);
    frame.height = bytes_.Little16(at_ + 6);
    const uint32_t packed = bytes_.At(at_ + 8);
    at_ += 9;
    const uint32_t count = TableSize(packed);
    frame.palette = count > 0 ? ReadPalette(bytes_, at_, count) : global_;
    at_ += uint64_t{3} * count;
    frame.interlaced = packed & 0x40;
    frame.transparent = transparent_;
    frame.code_size = bytes_.At(at_++);
    ReadChain(&frame.data);
    return frame;
  }

  ByteView bytes_;
  uint64_t at_ = 0;
  Palette global_;
  int transparent_ = kNoTransparency;
};

/// Lempel, Ziv and Welch's codes of growing width, lowest bit first.
class CodeReader {
 public:
  explicit CodeReader(const Frame& frame) : data_(frame.data), root_size_(frame.code_size) {}

  /// Puts `count` colour indices into `out`; false where the data holds fewer or breaks its rules, or nobody
  /// waits for them.
  bool Unpack(unsigned char* out, size_t count, ReadingWatch& watch) {
    const uint32_t clear = 1u << root_size_, end = clear + 1;
    for (uint32_t i = 0; i < clear; ++i) {
      suffix_[i] = static_cast<unsigned char>(i);
      length_[i] = 1;
    }
    size_t done = 0;
    Restart();
    uint32_t code = 0;
    while (done < count && Next(code)) {
      if (!watch.GoOn(static_cast<int64_t>(done), static_cast<int64_t>(count))) return false;
      if (code == clear) {
        Restart();
        continue;
      }
      if (code == end || code > next_ || (code == next_ && previous_ == kNone)) return false;
      done += Write(code, out + done, count - done);
    }
    return done == count;
  }

 private:
  static constexpr uint32_t kNone = kLargestCode;

  void Restart() {
    width_ = root_size_ + 1;
    next_ = (1u << root_size_) + 2;
    previous_ = kNone;
  }
  bool Next(uint32_t& code) {
    while (held_ < width_) {
      if (at_ == data_.size()) return false;
      bits_ |= uint32_t{data_[at_++]} << held_;
      held_ += 8;
    }
    code = bits_ & ((1u << width_) - 1);
    bits_ >>= width_;
    held_ -= width_;
    return true;
  }
  /// The text of a code is that of an earlier one and a byte; it's written from its end.
  size_t Write(uint32_t code, unsigned char* out, size_t room) {
    const bool unseen = code == next_;
    const size_t length = unseen ? length_[previous_] + size_t{1} : length_[code];
    uint32_t step = unseen ? previous_ : code;
    for (size_t i = unseen ? length - 1 : length; i > 0; --i) {
      first_ = suffix_[step];
      if (i - 1 < room) out[i - 1] = first_;
      step = prefix_[step];
    }
    if (unseen && length - 1 < room) out[length - 1] = first_;
    if (previous_ != kNone && next_ < kLargestCode) Add();
    previous_ = code;
    return std::min(length, room);
  }
  void Add() {
    prefix_[next_] = static_cast<uint16_t>(previous_);
    suffix_[next_] = first_;
    length_[next_] = static_cast<uint16_t>(length_[previous_] + 1);
    ++next_;
    if (next_ == 1u << width_ && width_ < 12) ++width_;
  }

  const std::vector<unsigned char>& data_;
  uint32_t root_size_;
  size_t at_ = 0;
  uint32_t bits_ = 0, held_ = 0, width_ = 0, next_ = 0, previous_ = kNone;
  unsigned char first_ = 0;
  std::array<uint16_t, kLargestCode> prefix_{}, length_{};
  std::array<unsigned char, kLargestCode> suffix_{};
};

/// The order in which an interlaced image's rows are stored.
std::vector<uint32_t> RowOrder(const Frame& frame) {
  std::vector<uint32_t> order;
  order.reserve(frame.height);
  if (!frame.interlaced) {
    for (uint32_t y = 0; y < frame.height; ++y) order.push_back(y);
    return order;
  }
  constexpr std::array<std::array<uint32_t, 2>, 4> kPasses{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
  for (const auto& [start, step] : kPasses) {
    for (uint32_t y = start; y < frame.height; y += step) order.push_back(y);
  }
  return order;
}

}  // namespace

std::optional<DecodedPicture> DecodeGif(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  const std::optional<Frame> frame = Blocks(bytes).FirstFrame();
  if (!frame || frame->code_size < 1 || frame->code_size > 8) return std::nullopt;
  const uint32_t width = std::max(bytes.Little16(6), frame->left + frame->width);
  const uint32_t height = std::max(bytes.Little16(8), frame->top + frame->height);
  if (!limit.Admits(width, height) || !limit.Admits(frame->width, frame->height)) return std::nullopt;

  // A code stands for 4,096 pixels at most, so a small file can't make us take much memory.
  const size_t count = size_t{frame->width} * frame->height;
  if (count / kLargestCode > frame->data.size() * 8 / (frame->code_size + 1)) return std::nullopt;
  const auto indices = std::make_unique_for_overwrite<unsigned char[]>(count);
  if (!CodeReader(*frame).Unpack(indices.get(), count, watch)) return std::nullopt;

  Bitmap bitmap(static_cast<int>(width), static_cast<int>(height), kWhitePixel);
  Palette palette = frame->palette;
  bool whole = frame->alone && frame->width == width && frame->height == height;
  if (frame->transparent != kNoTransparency) {
    palette.colors[static_cast<size_t>(frame->transparent)] = kWhitePixel;
    whole =
        whole && std::find(indices.get(), indices.get() + count, frame->transparent) == indices.get() + count;
  }
  const unsigned char* from = indices.get();
  for (const uint32_t y : RowOrder(*frame)) {
    Pixel* to = bitmap.WritableRow(static_cast<int>(frame->top + y)) + frame->left;
    for (uint32_t x = 0; x < frame->width; ++x) to[x] = palette.colors[*from++];
  }
  return DecodedPicture(std::move(bitmap), whole ? WrittenKind::Gif : WrittenKind::None);
}

}  // namespace zelvane
