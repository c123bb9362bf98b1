// The library's headers need the first one here, and this order.
// clang-format off
#include <cstdio>
#include <jpeglib.h>
// clang-format on
#include <fcntl.h>
#include <gif_lib.h>
#include <tiffio.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "Ratio.h"
#include "surface/codecs/Dither.h"
#include "surface/codecs/Palette.h"
#include "surface/system/files/Files.h"
#include "surface/system/files/PictureFile.h"

/// Saving a picture against the same library called plainly on pixels in memory with the same settings, or
/// for bitmaps against writing the same bytes; either side writes a file and syncs it. TMPDIR tells the
/// folder, which should be on a real disk, BENCH_PICTURE the picture, which is a made one otherwise.
namespace zelvane {
namespace {

using Bytes = std::vector<unsigned char>;

Bitmap MadePicture() {
  constexpr int kWidth = 4000, kHeight = 3000;
  Bitmap picture = Bitmap::Uninitialised(kWidth, kHeight);
  std::mt19937 random(1);
  for (int y = 0; y < kHeight; ++y) {
    Pixel* row = picture.WritableRow(y);
    for (int x = 0; x < kWidth; ++x) {
      const auto channel = [&](double across, double down) {
        const double wave = 120 + 100 * std::sin(x * across) * std::cos(y * down);
        return static_cast<uint32_t>(wave) + random() % 16;
      };
      const uint32_t red = channel(0.003, 0.001), green = channel(0.001, 0.004), blue = channel(0.002, 0.002);
      row[x] = 0xFF000000u | red << 16 | green << 8 | blue;
    }
  }
  return picture;
}

const Bitmap& Picture() {
  static const Bitmap picture = [] {
    const char* path = std::getenv("BENCH_PICTURE");
    const auto loaded = path ? LoadPicture(path) : std::nullopt;
    return loaded ? Bitmap(*loaded) : MadePicture();
  }();
  return picture;
}

/// The picture in the colours of a palette, and their places in it.
struct Few {
  Palette palette = Quantise(MeanColoursOf(Picture()));
  Bytes places = Dither(Picture(), palette);
  Bitmap picture = Bitmap::Uninitialised(Picture().Width(), Picture().Height());
  Few() {
    for (size_t i = 0; i < places.size(); ++i) picture.WritableRow(0)[i] = palette[places[i]];
  }
};

std::string PathFor(const char* name) {
  return TemporaryFolder() + "zelvane-bench-" + name;
}

void Sync(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY);
  ::fsync(file);
  ::close(file);
}

void WritePlainly(const std::string& path, const Bytes& bytes) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

void JpegPlainly(const std::string& path) {
  const Bitmap& picture = Picture();
  jpeg_compress_struct jpeg;
  jpeg_error_mgr errors;
  jpeg.err = jpeg_std_error(&errors);
  jpeg_create_compress(&jpeg);
  std::FILE* file = std::fopen(path.c_str(), "wb");
  jpeg_stdio_dest(&jpeg, file);
  jpeg.image_width = static_cast<JDIMENSION>(picture.Width());
  jpeg.image_height = static_cast<JDIMENSION>(picture.Height());
  jpeg.input_components = 4;
  jpeg.in_color_space = JCS_EXT_BGRX;
  jpeg_set_defaults(&jpeg);
  jpeg_set_quality(&jpeg, 85, TRUE);
  jpeg_start_compress(&jpeg, TRUE);
  for (int y = 0; y < picture.Height(); ++y) {
    auto* row = reinterpret_cast<JSAMPROW>(const_cast<Pixel*>(picture.Row(y)));
    jpeg_write_scanlines(&jpeg, &row, 1);
  }
  jpeg_finish_compress(&jpeg);
  jpeg_destroy_compress(&jpeg);
  std::fclose(file);
}

Bytes Channels(const Bitmap& picture) {
  Bytes channels;
  for (int i = 0; i < picture.Width() * picture.Height(); ++i)
    for (const int shift : {16, 8, 0})
      channels.push_back(static_cast<unsigned char>(picture.Row(0)[i] >> shift));
  return channels;
}

void TiffPlainly(const std::string& path, Bytes channels) {
  TIFF* file = TIFFOpen(path.c_str(), "w");
  const int width = Picture().Width(), height = Picture().Height();
  for (const auto& [tag, value] : {std::pair{TIFFTAG_IMAGEWIDTH, width},
                                   {TIFFTAG_IMAGELENGTH, height},
                                   {TIFFTAG_BITSPERSAMPLE, 8},
                                   {TIFFTAG_SAMPLESPERPIXEL, 3},
                                   {TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB},
                                   {TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG},
                                   {TIFFTAG_COMPRESSION, COMPRESSION_LZW},
                                   {TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL}})
    TIFFSetField(file, tag, value);
  const size_t row = size_t{3} * static_cast<size_t>(width), rows = (size_t{1} << 18) / row;
  TIFFSetField(file, TIFFTAG_ROWSPERSTRIP, static_cast<int>(rows));
  uint32_t strip = 0;
  for (size_t at = 0; at < channels.size(); at += rows * row) {
    const size_t count = std::min(rows * row, channels.size() - at);
    TIFFWriteEncodedStrip(file, strip++, channels.data() + at, static_cast<tmsize_t>(count));
  }
  TIFFClose(file);
}

void GifPlainly(const std::string& path, const Few& few) {
  const int width = Picture().Width(), height = Picture().Height();
  GifFileType* file = EGifOpenFileName(path.c_str(), false, nullptr);
  ColorMapObject* colours = GifMakeMapObject(256, nullptr);
  EGifPutScreenDesc(file, width, height, 8, 0, colours);
  EGifPutImageDesc(file, 0, 0, width, height, false, nullptr);
  Bytes row(static_cast<size_t>(width));  // the library writes to it
  for (int y = 0; y < height; ++y) {
    std::copy_n(few.places.data() + static_cast<size_t>(y) * row.size(), row.size(), row.data());
    EGifPutLine(file, row.data(), width);
  }
  EGifCloseFile(file, nullptr);
  GifFreeMapObject(colours);
}

/// `save` writes safely, `write` plainly.
template <class Save, class Write>
void Compare(benchmark::State& state, Save save, Write write) {
  const std::string saved = PathFor("saved"), written = PathFor("written");
  ratio::Compare(
      state,
      [&] {
        if (!save(saved).Done()) state.SkipWithError("not saved");
      },
      [&] { write(written), Sync(written); }, ratio::ClockSeconds);
  DeleteFile(saved);
  DeleteFile(written);
}

void BM_Bmp(benchmark::State& state) {
  const Bytes bytes(54 +
                    3 * static_cast<size_t>(Picture().Width()) * static_cast<size_t>(Picture().Height()));
  Compare(
      state, [](const std::string& path) { return SavePicture(Picture(), {path}); },
      [&](const std::string& path) { WritePlainly(path, bytes); });
}
BENCHMARK(BM_Bmp)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_Jpeg(benchmark::State& state) {
  Compare(
      state, [](const std::string& path) { return SaveJpeg(Picture(), 65, {path}); }, JpegPlainly);
}
BENCHMARK(BM_Jpeg)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_Tiff(benchmark::State& state) {
  const Bytes channels = Channels(Picture());
  Compare(
      state, [](const std::string& path) { return SaveTiff(Picture(), {path}); },
      [&](const std::string& path) { TiffPlainly(path, channels); });
}
BENCHMARK(BM_Tiff)->UseManualTime()->Unit(benchmark::kMillisecond);

/// Of 256 colours, so that none have to be found.
void BM_GifOfFewColours(benchmark::State& state) {
  const Few few;
  Compare(
      state, [&](const std::string& path) { return SaveGif(few.picture, {path}); },
      [&](const std::string& path) { GifPlainly(path, few); });
}
BENCHMARK(BM_GifOfFewColours)->UseManualTime()->Unit(benchmark::kMillisecond);

/// Each pixel's nearest colour without a look at its neighbours.
void MapPlainly(const Bytes& table, Bytes& places) {
  const Pixel* pixel = Picture().Row(0);
  for (unsigned char& place : places) {
    place = table[NearestColour::CellOf(*pixel)];
    ++pixel;
  }
}

void BM_PaletteSearch(benchmark::State& state) {
  Bytes places(static_cast<size_t>(Picture().Width()) * static_cast<size_t>(Picture().Height()));
  const Bytes table(size_t{1} << 18);
  const auto search = [] { benchmark::DoNotOptimize(Quantise(MeanColoursOf(Picture()))); };
  ratio::Compare(state, search, [&] { MapPlainly(table, places); });
}
BENCHMARK(BM_PaletteSearch)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_Dither(benchmark::State& state) {
  const Few few;
  Bytes places = few.places, table(size_t{1} << 18);
  for (size_t i = 0; i < places.size(); ++i) {
    const Pixel pixel = Picture().Row(0)[i];
    table[NearestColour::CellOf(pixel)] = places[i];
  }
  const auto dither = [&] { benchmark::DoNotOptimize(Dither(Picture(), few.palette)); };
  ratio::Compare(state, dither, [&] { MapPlainly(table, places); });
}
BENCHMARK(BM_Dither)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zelvane

BENCHMARK_MAIN();
