// The library's headers need the first one here, and this order.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
#include <jerror.h>
// clang-format on

#include <algorithm>
#include <array>
#include <cmath>
#include <csetjmp>
#include <new>
#include <vector>

#include "surface/codecs/PictureEncoder.h"

namespace zelvane {

namespace {

/// The library's quality, with a fraction, for a compression within its bounds. The first step leads to 99 at
/// once: in between, tables are all ones as those of 100 are.
double QualityFor(double compression) {
  constexpr std::array<std::array<double, 2>, 4> kCorners{
      {{kLeastCompression, 100}, {kLeastCompression + 1, 99}, {65, 85}, {kMostCompression, 30}}};
  size_t next = 1;
  while (next + 1 < kCorners.size() && compression > kCorners[next][0]) ++next;
  const auto& [from, best] = kCorners[next - 1];
  const auto& [to, worst] = kCorners[next];
  return best + (worst - best) * (compression - from) / (to - from);
}

/// How coarse the library makes its tables at a quality, 1 for those of 50.
double ScaleFor(double quality) {
  return quality < 50 ? 50 / quality : 2 - quality / 50;
}

/// One run of the library, which leaves `Write` by a long jump where it fails: so everything that has to be
/// destroyed lives in this object.
class JpegRun {
 public:
  explicit JpegRun(const PieceSink& sink) : sink_(sink), piece_(size_t{1} << 18) {
    library_.err = jpeg_std_error(&errors_);
    errors_.error_exit = OnError;
    errors_.emit_message = [](j_common_ptr, int) {};
    target_.init_destination = OnPiece;
    target_.empty_output_buffer = OnFull;
    target_.term_destination = OnEnd;
    library_.client_data = this;
  }
  ~JpegRun() { jpeg_destroy_compress(&library_); }
  JpegRun(const JpegRun&) = delete;
  JpegRun& operator=(const JpegRun&) = delete;

  bool Write(const Bitmap& picture, double compression) {
    if (setjmp(on_error_)) return false;
    jpeg_create_compress(&library_);
    library_.dest = &target_;
    library_.image_width = static_cast<JDIMENSION>(picture.Width());
    library_.image_height = static_cast<JDIMENSION>(picture.Height());
    library_.in_color_space = JCS_EXT_BGRX;
    library_.input_components = sizeof(Pixel);
    jpeg_set_defaults(&library_);
    ChooseTables(ScaleFor(QualityFor(compression)));
    ChooseSampling(compression);
    constexpr int kDotsPerInch = 72, kInch = 1;
    library_.X_density = library_.Y_density = kDotsPerInch;
    library_.density_unit = kInch;
    jpeg_start_compress(&library_, TRUE);
    WriteRows(picture);
    jpeg_finish_compress(&library_);
    return true;
  }
  bool WantsMemory() const { return errors_.msg_code == JERR_OUT_OF_MEMORY; }

 private:
  static JpegRun& RunOf(j_common_ptr library) { return *static_cast<JpegRun*>(library->client_data); }
  static JpegRun& RunOf(j_compress_ptr library) { return RunOf(reinterpret_cast<j_common_ptr>(library)); }
  [[noreturn]] static void OnError(j_common_ptr library) { longjmp(RunOf(library).on_error_, 1); }
  static void OnPiece(j_compress_ptr library) {
    JpegRun& run = RunOf(library);
    run.target_.next_output_byte = run.piece_.data();
    run.target_.free_in_buffer = run.piece_.size();
  }
  static boolean OnFull(j_compress_ptr library) {
    RunOf(library).HandOver(RunOf(library).piece_.size());
    OnPiece(library);
    return TRUE;
  }
  static void OnEnd(j_compress_ptr library) {
    JpegRun& run = RunOf(library);
    run.HandOver(run.piece_.size() - run.target_.free_in_buffer);
  }
  void HandOver(size_t count) {
    if (!sink_(piece_.data(), count)) ERREXIT(&library_, JERR_FILE_WRITE);
  }

  /// The tables of the standard, scaled in finer steps than whole percents.
  void ChooseTables(double scale) {
    constexpr int kAsTheyStand = 100;  // percent
    jpeg_set_linear_quality(&library_, kAsTheyStand, TRUE);
    for (JQUANT_TBL* table : {library_.quant_tbl_ptrs[0], library_.quant_tbl_ptrs[1]}) {
      for (UINT16& step : table->quantval)
        step = static_cast<UINT16>(std::clamp(std::lround(step * scale), 1L, 255L));
    }
  }
  void ChooseSampling(double compression) {
    constexpr double kBestThird = kLeastCompression + (kMostCompression - kLeastCompression) / 3;
    const int halved = compression <= kBestThird ? 1 : 2;
    library_.comp_info[0].h_samp_factor = library_.comp_info[0].v_samp_factor = halved;
  }
  void WriteRows(const Bitmap& picture) {
    while (library_.next_scanline < library_.image_height) {
      JSAMPROW row = reinterpret_cast<JSAMPROW>(
          const_cast<Pixel*>(picture.Row(static_cast<int>(library_.next_scanline))));
      jpeg_write_scanlines(&library_, &row, 1);
    }
  }

  const PieceSink& sink_;
  std::vector<JOCTET> piece_;
  jpeg_compress_struct library_{};
  jpeg_error_mgr errors_{};
  jpeg_destination_mgr target_{};
  jmp_buf on_error_{};
};

}  // namespace

bool EncodeJpeg(const Bitmap& picture, double compression, const PieceSink& sink) {
  if (picture.IsEmpty()) return false;
  JpegRun run(sink);
  if (run.Write(picture, std::clamp(compression, kLeastCompression, kMostCompression))) return true;
  if (run.WantsMemory()) throw std::bad_alloc();
  return false;
}

}  // namespace zelvane
