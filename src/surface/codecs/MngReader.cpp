#include <algorithm>

#include "surface/codecs/Flatten.h"
#include "surface/codecs/PictureDecoder.h"
#include "surface/codecs/PngChunks.h"

namespace zelvane {

namespace {

/// The common library plays a file as a program, with loops and magnified copies: a few bytes make it run for
/// hours or fall over. Only the first frame is wanted, so the first picture is taken out of the file and put
/// where the file says.

using Bytes = std::vector<unsigned char>;

constexpr unsigned char kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

void Append(Bytes& bytes, ByteView more) {
  bytes.insert(bytes.end(), more.Data(), more.Data() + more.Size());
}
ByteView ViewOf(const Bytes& bytes) {
  return {bytes.data(), bytes.size()};
}

void AppendBig32(Bytes& bytes, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<unsigned char>(value >> shift));
}

/// The cyclic redundancy check of 32 bits that the chunks carry.
uint32_t Checksum(ByteView bytes) {
  uint32_t sum = 0xFFFFFFFFu;
  for (size_t i = 0; i < bytes.Size(); ++i) {
    sum ^= bytes.At(i);
    for (int bit = 0; bit < 8; ++bit) sum = sum & 1 ? sum >> 1 ^ 0xEDB88320u : sum >> 1;
  }
  return ~sum;
}

void AppendChunk(Bytes& bytes, uint32_t name, ByteView data) {
  AppendBig32(bytes, static_cast<uint32_t>(data.Size()));
  const size_t checked = bytes.size();
  AppendBig32(bytes, name);
  Append(bytes, data);
  AppendBig32(bytes, Checksum(ViewOf(bytes).From(checked)));
}

/// A picture within the file, and where it lies on the canvas.
struct Layer {
  std::vector<Chunk> chunks;
  int64_t left = 0, top = 0;
};

/// The first layer that shows, or else the first one.
class LayerSearch {
 public:
  explicit LayerSearch(const std::vector<Chunk>& chunks) : chunks_(chunks) {}

  std::optional<Layer> Find() {
    std::optional<Layer> hidden;
    for (size_t i = 0; i < chunks_.size(); ++i) {
      const Chunk& chunk = chunks_[i];
      if (chunk.name == ChunkName("DEFI")) Define(chunk.data);
      if (chunk.name == ChunkName("PLTE")) palette_ = &chunk;
      if (chunk.name == ChunkName("tRNS")) transparency_ = &chunk;
      if (chunk.name != ChunkName("IHDR") && chunk.name != ChunkName("JHDR")) continue;
      Layer layer = Collect(i);
      if (!hides_) return layer;
      if (!hidden) hidden = std::move(layer);
    }
    return hidden;
  }

 private:
  void Define(ByteView data) {
    hides_ = data.At(2) & 1;
    left_ = static_cast<int32_t>(data.Big32(4));
    top_ = static_cast<int32_t>(data.Big32(8));
  }
  /// The chunks to the end of the picture; an empty palette stands for the one of the whole file.
  Layer Collect(size_t& i) const {
    Layer layer{{}, left_, top_};
    for (; i < chunks_.size(); ++i) {
      const Chunk& chunk = chunks_[i];
      const bool shared = chunk.name == ChunkName("PLTE") && chunk.data.Size() == 0 && palette_;
      layer.chunks.push_back(shared ? *palette_ : chunk);
      if (shared && transparency_) layer.chunks.push_back(*transparency_);
      if (chunk.name == ChunkName("IEND")) break;
    }
    return layer;
  }

  const std::vector<Chunk>& chunks_;
  const Chunk* palette_ = nullptr;
  const Chunk* transparency_ = nullptr;
  bool hides_ = false;
  int64_t left_ = 0, top_ = 0;
};

std::optional<Bitmap> DecodeAsPng(const Layer& layer, SizeLimit limit, ReadingWatch& watch) {
  Bytes bytes(std::begin(kSignature), std::end(kSignature));
  for (const Chunk& chunk : layer.chunks) Append(bytes, chunk.whole);
  return DecodePng(ViewOf(bytes), limit, watch);
}

Bytes DataOf(const Layer& layer, uint32_t name) {
  Bytes bytes;
  for (const Chunk& chunk : layer.chunks) {
    if (chunk.name == ChunkName("JSEP")) break;  // a second version in 12 bits follows
    if (chunk.name == name) Append(bytes, chunk.data);
  }
  return bytes;
}

/// The opacity of a JPEG, itself a grey JPEG or PNG.
std::optional<Bitmap> DecodeOpacity(const Layer& layer, SizeLimit limit, ReadingWatch& watch) {
  constexpr uint32_t kAsJpeg = 8;
  const ByteView header = layer.chunks.front().data;
  if (header.At(13) == kAsJpeg) return DecodeJpeg(ViewOf(DataOf(layer, ChunkName("JDAA"))), limit, watch);
  Bytes grey(header.Data(), header.Data() + 8);
  const unsigned char rest[] = {static_cast<unsigned char>(header.At(12)), 0, 0, 0,
                                static_cast<unsigned char>(header.At(15))};
  grey.insert(grey.end(), std::begin(rest), std::end(rest));
  Bytes bytes(std::begin(kSignature), std::end(kSignature));
  AppendChunk(bytes, ChunkName("IHDR"), ViewOf(grey));
  for (const Chunk& chunk : layer.chunks) {
    if (chunk.name == ChunkName("IDAT")) Append(bytes, chunk.whole);
  }
  AppendChunk(bytes, ChunkName("IEND"), {});
  return DecodePng(ViewOf(bytes), limit, watch);
}

std::optional<Bitmap> DecodeAsJpeg(const Layer& layer, SizeLimit limit, ReadingWatch& watch) {
  const ByteView header = layer.chunks.front().data;
  const uint32_t kind = header.At(8);
  if (header.Size() < 16 || !limit.Admits(header.Big32(0), header.Big32(4))) return std::nullopt;
  const Bytes data = DataOf(layer, ChunkName("JDAT"));
  if (!ViewOf(data).StartsWith("\xFF\xD8", 2)) return std::nullopt;
  std::optional<Bitmap> bitmap = DecodeJpeg(ViewOf(data), limit, watch);
  if (!bitmap || kind == 8 || kind == 10) return bitmap;  // grey or colour without opacity
  const std::optional<Bitmap> opacity = DecodeOpacity(layer, limit, watch);
  if (!opacity || opacity->Width() != bitmap->Width() || opacity->Height() != bitmap->Height()) {
    return std::nullopt;
  }
  for (int y = 0; y < bitmap->Height(); ++y) {
    Pixel* row = bitmap->WritableRow(y);
    for (int x = 0; x < bitmap->Width(); ++x) {
      row[x] = OnWhite((row[x] & 0xFFFFFFu) | opacity->Row(y)[x] << 24);
    }
  }
  return bitmap;
}

Bitmap PutOnCanvas(const Bitmap& picture, const Layer& layer, int width, int height) {
  Bitmap canvas(width, height, 0xFFFFFFFFu);
  const int64_t left = std::max<int64_t>(0, layer.left);
  const int64_t right = std::min<int64_t>(width, layer.left + picture.Width());
  for (int64_t y = std::max<int64_t>(0, layer.top);
       y < std::min<int64_t>(height, layer.top + picture.Height()) && left < right; ++y) {
    const Pixel* from = picture.Row(static_cast<int>(y - layer.top));
    std::copy(from + (left - layer.left), from + (right - layer.left),
              canvas.WritableRow(static_cast<int>(y)) + left);
  }
  return canvas;
}

}  // namespace

std::optional<DecodedPicture> DecodeMng(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  const std::vector<Chunk> chunks = ChunksOf(bytes, ChunkName("MEND"));
  if (chunks.empty() || chunks.front().name != ChunkName("MHDR")) return std::nullopt;
  const ByteView header = chunks.front().data;
  if (!limit.Admits(header.Big32(0), header.Big32(4))) return std::nullopt;
  const std::optional<Layer> layer = LayerSearch(chunks).Find();
  if (!layer) return std::nullopt;
  const bool png = layer->chunks.front().name == ChunkName("IHDR");
  std::optional<Bitmap> picture =
      png ? DecodeAsPng(*layer, limit, watch) : DecodeAsJpeg(*layer, limit, watch);
  if (!picture) return std::nullopt;
  const int width = static_cast<int>(header.Big32(0)), height = static_cast<int>(header.Big32(4));
  const bool fills =
      layer->left == 0 && layer->top == 0 && picture->Width() == width && picture->Height() == height;
  return fills ? picture : PutOnCanvas(*picture, *layer, width, height);
}

}  // namespace zelvane
