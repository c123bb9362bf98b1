#include <png.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "surface/codecs/ColourProfile.h"
#include "surface/codecs/Flatten.h"
#include "surface/codecs/IconImage.h"
#include "surface/codecs/Orientation.h"
#include "surface/codecs/PictureDecoder.h"
#include "surface/codecs/PngChunks.h"
#include "surface/codecs/PngNotes.h"

namespace zelvane {

namespace {

/// What becomes of opacity.
enum class Clear : uint8_t { OnWhite, Kept };

/// One run of the library, which leaves `Read` by a long jump where data is damaged: so everything that has
/// to be destroyed lives in this object.
class PngRun {
 public:
  PngRun(ByteView bytes, ByteView profile, Clear clear, Bitmap& bitmap, ReadingWatch& watch)
      : bytes_(bytes), profile_(profile), is_kept_(clear == Clear::Kept), bitmap_(bitmap), watch_(watch) {
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    info_ = png_ ? png_create_info_struct(png_) : nullptr;
  }
  ~PngRun() { png_destroy_read_struct(&png_, &info_, nullptr); }
  PngRun(const PngRun&) = delete;
  PngRun& operator=(const PngRun&) = delete;

  /// Fills the bitmap, of the picture's size; false where the data is damaged or nobody waits for it.
  bool Read() {
    if (!info_ || setjmp(png_jmpbuf(png_))) return false;
    png_set_read_fn(png_, this, OnRead);
    // Texts, profiles and the like would be unpacked and kept.
    constexpr int kAllThatCanBe = -1;
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, kAllThatCanBe);
    png_read_info(png_, info_);
    ChooseForm();
    png_read_update_info(png_, info_);
    const bool interlaced = png_get_interlace_type(png_, info_) != PNG_INTERLACE_NONE;
    if (!(interlaced ? ReadPasses() : ReadRows())) return false;
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

  /// Palettes, greys and transparent colours become colours, and opacity where there is any. Channels of 16
  /// bits stay so where they're laid on white or change their colours, to be rounded once.
  void ChooseForm() {
    clear_ = (png_get_color_type(png_, info_) & PNG_COLOR_MASK_ALPHA) != 0 ||
             png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    const bool sixteen = png_get_bit_depth(png_, info_) == 16;
    deep_ = sixteen && !is_kept_ && (clear_ || profile_.Size() > 0);
    colours_ = ColourProfile(profile_, deep_ ? RowForm::Deep : RowForm::Pixels);
    png_set_expand(png_);
    png_set_gray_to_rgb(png_);
    if (sixteen && !deep_) png_set_scale_16(png_);
    if (deep_) {
      png_set_swap(png_);
    } else {
      png_set_bgr(png_);
    }
    if (!clear_) png_set_filler(png_, 0xFFFF, PNG_FILLER_AFTER);
    if (deep_) channels_.resize(static_cast<size_t>(bitmap_.Width()) * kChannels);
  }
  bool ReadRows() {
    for (int y = 0; y < bitmap_.Height(); ++y) {
      if (!watch_.GoOn(y, bitmap_.Height())) return false;
      ReadRow(bitmap_.WritableRow(y), bitmap_.Width());
    }
    return true;
  }
  /// An interlaced picture comes as seven of growing fineness, whose pixels lie between each other.
  bool ReadPasses() {
    // The library wants room for a whole row in each.
    between_.resize(static_cast<size_t>(bitmap_.Width()));
    const auto width = static_cast<png_uint_32>(bitmap_.Width()),
               height = static_cast<png_uint_32>(bitmap_.Height());
    for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
      const auto columns = static_cast<int>(PNG_PASS_COLS(width, pass)),
                 rows = static_cast<int>(PNG_PASS_ROWS(height, pass));
      const int left = PNG_PASS_START_COL(pass), top = PNG_PASS_START_ROW(pass);
      for (int i = 0; columns > 0 && i < rows; ++i) {
        if (!watch_.GoOn(pass, PNG_INTERLACE_ADAM7_PASSES)) return false;
        ReadRow(between_.data(), columns);
        Pixel* to = bitmap_.WritableRow(top + (i << PNG_PASS_ROW_SHIFT(pass))) + left;
        for (int x = 0; x < columns; ++x)
          to[x << PNG_PASS_COL_SHIFT(pass)] = between_[static_cast<size_t>(x)];
      }
    }
    return true;
  }
  /// A row is finished as soon as it's read, while it's in the cache.
  void ReadRow(Pixel* row, int width) {
    void* const read = deep_ ? static_cast<void*>(channels_.data()) : row;
    png_read_row(png_, static_cast<png_bytep>(read), nullptr);
    colours_.Apply(read, width);
    if (deep_) {
      FinishDeep(row, width);
    } else if (clear_ && !is_kept_) {
      FlattenOnWhite(row, width);
    }
  }
  void FinishDeep(Pixel* row, int width) const {
    const uint16_t* from = channels_.data();
    for (int x = 0; x < width; ++x, from += kChannels)
      row[x] = DeepOnWhite(from[0], from[1], from[2], from[3]);
  }

  static constexpr size_t kChannels = 4;
  ByteView bytes_, profile_;
  ColourProfile colours_;
  bool is_kept_;
  Bitmap& bitmap_;
  ReadingWatch& watch_;
  uint64_t at_ = 0;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  bool deep_ = false, clear_ = false;
  std::vector<uint16_t> channels_;
  std::vector<Pixel> between_;
};

/// Packed data grows by a factor of 1,032 at most: what can't fill the rows needn't be tried.
bool CanFill(const std::vector<Chunk>& chunks, ByteView header) {
  constexpr std::array<uint64_t, 7> kChannels{1, 1, 3, 1, 2, 1, 4};  // by colour type
  constexpr uint64_t kMostGrowth = 1032;
  const uint64_t channels = kChannels[std::min<size_t>(header.At(9), kChannels.size() - 1)];
  const uint64_t bits = uint64_t{header.Big32(0)} * header.Big32(4) * header.At(8) * channels;
  uint64_t packed = 0;
  for (const Chunk& chunk : chunks) packed += chunk.name == ChunkName("IDAT") ? chunk.data.Size() : 0;
  return packed * kMostGrowth >= bits / 8;
}

std::optional<Bitmap> Decode(ByteView bytes, Clear clear, SizeLimit limit, ReadingWatch& watch) {
  const std::vector<Chunk> chunks = ChunksOf(bytes, ChunkName("IEND"));
  if (chunks.empty() || chunks.front().name != ChunkName("IHDR")) return std::nullopt;
  const ByteView header = chunks.front().data;
  const uint32_t width = header.Big32(0), height = header.Big32(4);
  if (!limit.Admits(width, height) || !CanFill(chunks, header)) return std::nullopt;
  Bitmap bitmap = Bitmap::Uninitialised(static_cast<int>(width), static_cast<int>(height));
  const std::vector<unsigned char> profile = PngProfile(chunks);
  if (!PngRun(bytes, {profile.data(), profile.size()}, clear, bitmap, watch).Read()) return std::nullopt;
  return Oriented(std::move(bitmap), PngOrientation(chunks));
}

}  // namespace

std::optional<DecodedPicture> DecodePng(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  return Decode(bytes, Clear::OnWhite, limit, watch);
}

std::optional<Bitmap> DecodeSeeThroughPng(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  return Decode(bytes, Clear::Kept, limit, watch);
}

}  // namespace zelvane
