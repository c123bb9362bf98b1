#include <png.h>

#include <cstring>

#include "surface/codecs/Flatten.h"
#include "surface/codecs/PictureDecoder.h"
#include "surface/codecs/PngChunks.h"

namespace zelvane {

namespace {

/// One run of the library, which leaves `Read` by a long jump where data is damaged: so everything that has
/// to be destroyed lives in this object.
class PngRun {
 public:
  PngRun(ByteView bytes, Bitmap& bitmap) : bytes_(bytes), bitmap_(bitmap) {
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    info_ = png_ ? png_create_info_struct(png_) : nullptr;
  }
  ~PngRun() { png_destroy_read_struct(&png_, &info_, nullptr); }
  PngRun(const PngRun&) = delete;
  PngRun& operator=(const PngRun&) = delete;

  /// Fills the bitmap, of the picture's size; false where the data is damaged.
  bool Read() {
    if (!info_ || setjmp(png_jmpbuf(png_))) return false;
    png_set_read_fn(png_, this, OnRead);
    png_read_info(png_, info_);
    // Palettes, greys and transparent colours become colours, and opacity where there is any.
    png_set_expand(png_);
    png_set_gray_to_rgb(png_);
    passes_ = png_set_interlace_handling(png_);
    deep_ = png_get_bit_depth(png_, info_) == 16;
    clear_ = (png_get_color_type(png_, info_) & PNG_COLOR_MASK_ALPHA) != 0 ||
             png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    if (!deep_) png_set_bgr(png_);
    if (!clear_) png_set_filler(png_, 0xFFFF, PNG_FILLER_AFTER);
    png_read_update_info(png_, info_);
    ReadRows();
    png_read_end(png_, nullptr);
    return true;
  }

 private:
  [[noreturn]] static void OnError(png_structp png, png_const_charp) { png_longjmp(png, 1); }
  static void OnWarning(png_structp, png_const_charp) {}
  static void OnRead(png_structp png, png_bytep to, size_t count) {
    auto& run = *static_cast<PngRun*>(png_get_io_ptr(png));
    if (!run.bytes_.Has(run.at_, count)) png_error(png, "short");
    std::memcpy(to, run.bytes_.Data() + run.at_, count);
    run.at_ += count;
  }

  /// Rows of 8 bits a channel are the bitmap's own; others need room, all of them where each pass of an
  /// interlaced picture adds to all. A row is finished as soon as it's whole, while it's in the cache.
  void ReadRows() {
    const size_t row_size = static_cast<size_t>(bitmap_.Width()) * kDeepPixel;
    if (deep_) channels_.resize(row_size * (passes_ == 1 ? 1 : static_cast<size_t>(bitmap_.Height())));
    for (int pass = 1; pass <= passes_; ++pass) {
      for (int y = 0; y < bitmap_.Height(); ++y) {
        Pixel* row = bitmap_.WritableRow(y);
        unsigned char* deep_row =
            deep_ ? channels_.data() + (passes_ == 1 ? 0 : row_size * static_cast<size_t>(y)) : nullptr;
        png_read_row(png_, deep_ ? deep_row : reinterpret_cast<png_bytep>(row), nullptr);
        if (pass < passes_) continue;
        if (deep_) {
          FinishDeep(deep_row, row);
        } else if (clear_) {
          FlattenOnWhite(row, bitmap_.Width());
        }
      }
    }
  }
  void FinishDeep(const unsigned char* from, Pixel* row) const {
    for (int x = 0; x < bitmap_.Width(); ++x, from += kDeepPixel) {
      const auto channel = [from](int i) { return uint32_t{from[2 * i]} << 8 | from[2 * i + 1]; };
      row[x] = DeepOnWhite(channel(0), channel(1), channel(2), channel(3));
    }
  }

  static constexpr size_t kDeepPixel = 8;  // bytes of four channels of 16 bits, the high byte first
  ByteView bytes_;
  Bitmap& bitmap_;
  uint64_t at_ = 0;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  bool deep_ = false, clear_ = false;
  int passes_ = 1;
  std::vector<unsigned char> channels_;
};

}  // namespace

std::optional<DecodedPicture> DecodePng(ByteView bytes, SizeLimit limit) {
  const std::vector<Chunk> chunks = ChunksOf(bytes, ChunkName("IEND"));
  if (chunks.empty() || chunks.front().name != ChunkName("IHDR")) return std::nullopt;
  const ByteView header = chunks.front().data;
  const uint32_t width = header.Big32(0), height = header.Big32(4);
  if (!limit.Admits(width, height)) return std::nullopt;
  Bitmap bitmap = Bitmap::Uninitialised(static_cast<int>(width), static_cast<int>(height));
  if (!PngRun(bytes, bitmap).Read()) return std::nullopt;
  return bitmap;
}

}  // namespace zelvane
