// The library's headers need the first one here, and this order.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
#include <jerror.h>
// clang-format on

#include <algorithm>
#include <csetjmp>
#include <cstdlib>

#include "surface/codecs/ColourProfile.h"
#include "surface/codecs/Orientation.h"
#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

namespace {

/// One run of the library, which leaves `Read` by a long jump where data is damaged: so everything that has
/// to be destroyed lives in this object.
class JpegRun {
 public:
  JpegRun(ByteView bytes, SizeLimit limit, ReadingWatch& watch)
      : bytes_(bytes), limit_(limit), watch_(watch) {
    library_.err = jpeg_std_error(&errors_);
    errors_.error_exit = OnError;
    errors_.emit_message = OnMessage;
    library_.client_data = this;
    if (setjmp(on_error_)) return;
    jpeg_create_decompress(&library_);
    jpeg_mem_src(&library_, bytes.Data(), bytes.Size());
    created_ = true;
  }
  ~JpegRun() { jpeg_destroy_decompress(&library_); }
  JpegRun(const JpegRun&) = delete;
  JpegRun& operator=(const JpegRun&) = delete;

  /// False where the data is damaged, the picture larger than admitted, or nobody waits for it.
  bool Read() {
    if (!created_ || setjmp(on_error_)) return false;
    jpeg_save_markers(&library_, kNotes, kLongestSegment);
    jpeg_save_markers(&library_, kProfile, kLongestSegment);
    jpeg_read_header(&library_, TRUE);
    if (!IsAdmitted() || !CanFill() || !ChooseColours()) return false;
    followed_ = Find("MPF").Size() > 0;
    orientation_ = ReadOrientation();  // the end of decoding lets the notes go
    ReadProfile();
    progress_.progress_monitor = OnProgress;
    library_.progress = &progress_;
    jpeg_start_decompress(&library_);
    bitmap_ = Bitmap::Uninitialised(static_cast<int>(library_.output_width),
                                    static_cast<int>(library_.output_height));
    ReadRows();
    jpeg_finish_decompress(&library_);
    return true;
  }
  bool IsOfInks() const { return library_.out_color_space == JCS_CMYK; }
  /// A profile may know colours that the screen doesn't, and other pictures may follow.
  bool HoldsMore() const { return IsOfInks() || colours_.ChangesColours() || followed_; }
  Bitmap TakePicture() { return Oriented(std::move(bitmap_), orientation_); }

 private:
  static constexpr int kNotes = JPEG_APP0 + 1, kProfile = JPEG_APP0 + 2;
  static constexpr unsigned kLongestSegment = 0xFFFF;

  static JpegRun& RunOf(j_common_ptr library) { return *static_cast<JpegRun*>(library->client_data); }
  [[noreturn]] static void OnError(j_common_ptr library) { longjmp(RunOf(library).on_error_, 1); }
  /// A negative level is a warning: the library would go on with invented data.
  static void OnMessage(j_common_ptr library, int level) {
    if (level < 0 && !IsHarmless(*library->err)) OnError(library);
  }
  /// Stray bytes between segments, odd version numbers, needless fields and broken profiles leave every pixel
  /// as it was. Many bytes left over before the mark of the end tell that the picture's data was misread on
  /// the way.
  static bool IsHarmless(const jpeg_error_mgr& told) {
    constexpr int kMostLeftOver = 8, kEnd = JPEG_EOI;
    switch (told.msg_code) {
      case JWRN_EXTRANEOUS_DATA:
        return told.msg_parm.i[1] != kEnd || told.msg_parm.i[0] <= kMostLeftOver;
      case JWRN_JFIF_MAJOR:
      case JWRN_ADOBE_XFORM:
      case JWRN_NOT_SEQUENTIAL:
      case JWRN_BOGUS_ICC:
        return true;
      default:
        return false;
    }
  }
  /// A file of a few bytes can ask for the whole picture to be gone over again and again: an honest one does
  /// so once for each colour, or ten to thirty times where it grows finer.
  static void OnProgress(j_common_ptr library) {
    constexpr int kMostFinerScans = 64;
    auto& run = RunOf(library);
    const jpeg_decompress_struct& state = run.library_;
    const int most = state.progressive_mode ? kMostFinerScans : state.num_components;
    if (state.input_scan_number > most || !run.GoesOn()) OnError(library);
  }
  /// Where there are several scans, all are read before the first row comes out.
  bool GoesOn() {
    const auto size = static_cast<int64_t>(bytes_.Size()), rows = int64_t{library_.output_height};
    if (!jpeg_has_multiple_scans(&library_)) return watch_.GoOn(library_.output_scanline, rows);
    const int64_t read = size - static_cast<int64_t>(library_.src->bytes_in_buffer);
    return watch_.GoOn(read * rows + library_.output_scanline * size, 2 * size * rows);
  }

  /// In several scans a picture is held in coefficients first, of two bytes each.
  bool IsAdmitted() {
    constexpr int64_t kBlock = 2 * DCTSIZE2;
    const int64_t held = jpeg_has_multiple_scans(&library_) ? Blocks() * kBlock : 0;
    const int64_t pixels = int64_t{library_.image_width} * library_.image_height;
    return limit_.Admits(library_.image_width, library_.image_height) &&
           held + pixels * int64_t{sizeof(Pixel)} <= limit_.Bytes();
  }
  int64_t Blocks() const {
    int64_t blocks = 0;
    for (int i = 0; i < library_.num_components; ++i) {
      blocks += int64_t{library_.comp_info[i].width_in_blocks} * library_.comp_info[i].height_in_blocks;
    }
    return blocks;
  }
  /// A block takes a bit for its mean and, unless finer scans may follow, one for the rest; arithmetic coding
  /// knows no such floor.
  bool CanFill() const {
    const int64_t bits = Blocks() * (library_.progressive_mode ? 1 : 2);
    return library_.arith_code || static_cast<int64_t>(bytes_.Size()) >= bits / 8;
  }
  /// The library writes our pixels, opaque ones, but for inks.
  bool ChooseColours() {
    switch (library_.jpeg_color_space) {
      case JCS_GRAYSCALE:
      case JCS_RGB:
      case JCS_YCbCr:
        library_.out_color_space = JCS_EXT_BGRA;
        return true;
      case JCS_CMYK:
      case JCS_YCCK:
        library_.out_color_space = JCS_CMYK;
        return true;
      default:
        return false;
    }
  }
  void ReadRows() {
    constexpr int kAtOnce = 16;
    while (library_.output_scanline < library_.output_height) {
      const int top = static_cast<int>(library_.output_scanline);
      JSAMPROW rows[kAtOnce];
      const int count = std::min(kAtOnce, bitmap_.Height() - top);
      for (int i = 0; i < count; ++i) rows[i] = reinterpret_cast<JSAMPROW>(bitmap_.WritableRow(top + i));
      const int done = static_cast<int>(jpeg_read_scanlines(&library_, rows, static_cast<JDIMENSION>(count)));
      for (int i = 0; i < done; ++i) FinishRow(bitmap_.WritableRow(top + i));
    }
  }
  void FinishRow(Pixel* row) const {
    if (colours_.ChangesColours()) {
      colours_.Apply(row, bitmap_.Width());
    } else if (IsOfInks()) {
      MixInks(row);
    }
  }
  /// Files of inks hold, as all writers agreed to do, how much of the paper shows through.
  void MixInks(Pixel* row) const {
    const auto* inks = reinterpret_cast<const unsigned char*>(row);
    for (int x = 0; x < bitmap_.Width(); ++x, inks += 4) {
      const uint32_t key = inks[3];
      row[x] = 0xFF000000u | inks[0] * key / 255 << 16 | inks[1] * key / 255 << 8 | inks[2] * key / 255;
    }
  }
  /// The first segment that begins with the name; empty where there's none.
  template <size_t kSize>
  ByteView Find(const char (&name)[kSize]) const {
    for (jpeg_saved_marker_ptr marker = library_.marker_list; marker; marker = marker->next) {
      const ByteView segment(marker->data, marker->data_length);
      if (segment.StartsWith(name, kSize)) return segment;
    }
    return {};
  }
  uint32_t ReadOrientation() const {
    constexpr char kName[] = "Exif\0";
    const ByteView note = Find(kName);
    return note.Size() > 0 ? ExifOrientation(note.From(sizeof kName)) : 1;
  }

  ByteView bytes_;
  void ReadProfile() {
    JOCTET* profile = nullptr;
    unsigned size = 0;
    if (!jpeg_read_icc_profile(&library_, &profile, &size)) return;
    colours_ = ColourProfile({profile, size}, IsOfInks() ? RowForm::Inks : RowForm::Pixels);
    std::free(profile);
  }

  SizeLimit limit_;
  ReadingWatch& watch_;
  ColourProfile colours_;
  Bitmap bitmap_;
  uint32_t orientation_ = 1;
  bool followed_ = false;
  jpeg_decompress_struct library_{};
  jpeg_error_mgr errors_{};
  jpeg_progress_mgr progress_{};
  jmp_buf on_error_{};
  bool created_ = false;
};

}  // namespace

std::optional<DecodedPicture> DecodeJpeg(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  JpegRun run(bytes, limit, watch);
  if (!run.Read()) return std::nullopt;
  return DecodedPicture(run.TakePicture(), run.HoldsMore() ? WrittenKind::None : WrittenKind::Jpeg);
}

}  // namespace zelvane
