#pragma once

#include <tiffio.h>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "surface/codecs/ColourProfile.h"
#include "surface/codecs/PictureDecoder.h"

namespace zelvane {

/// Reads the open file's page where a sample has more than 8 bits: whole numbers of 16 and 32 bits, floating
/// point numbers of 16, 32 and 64, of which 0 to 1 is kept; greys, colours and inks. Greys that stand beside
/// other samples, and inks that have a profile, too. The library's own conversion leaves these out or mixes
/// them up.
class DeepTiff {
 public:
  DeepTiff(TIFF* file, ByteView profile);

  /// Whether the page is of that kind.
  bool IsKnown() const;
  /// As the page is stored, on white. No value where the data is damaged, memory doesn't suffice, or nobody
  /// waits for it.
  std::optional<Bitmap> Read(SizeLimit limit, ReadingWatch& watch);

 private:
  enum class Opacity { kNone, kBeside, kMultiplied };
  using Samples = std::vector<uint16_t>;

  Opacity FindOpacity() const;
  bool ReadRows(uint16_t plane, ReadingWatch& watch);
  bool ReadTiles(uint16_t plane, ReadingWatch& watch);
  /// A run of pixels as the file has them, of all samples or of one plane of them.
  void Put(const unsigned char* from, uint32_t x, uint32_t y, uint32_t count, uint16_t plane);
  void Mix(const uint16_t* sample, size_t to_next_sample, size_t to_next_pixel, Pixel* to, uint32_t count);
  /// Red, green, blue and opacity, or four inks where a profile makes colours of them.
  using Channels = std::array<uint16_t, 4>;
  Channels Mixed(const uint16_t* sample, size_t to_next_sample) const;
  bool GoesOn(uint32_t y, uint16_t plane, ReadingWatch& watch) const;
  size_t PlaneSize() const { return size_t{width_} * height_; }

  TIFF* file_;
  Bitmap bitmap_;
  uint32_t width_ = 0, height_ = 0;
  uint16_t kind_ = PHOTOMETRIC_MINISBLACK, format_ = SAMPLEFORMAT_UINT, bits_ = 1, samples_ = 1;
  /// How many samples of a pixel are colours, and of how many something is made.
  uint16_t colours_ = 1, used_ = 1;
  bool in_planes_ = false;
  Opacity opacity_ = Opacity::kNone;
  size_t most_bytes_ = 0;
  /// A run of pixels, or all of them plane by plane.
  Samples deep_;
  /// A run of pixels.
  std::vector<Channels> mixed_;
  ColourProfile profile_;
};

}  // namespace zelvane
