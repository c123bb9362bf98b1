#include "surface/codecs/DeepTiff.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <tuple>

#include "surface/codecs/Flatten.h"

namespace zelvane {

namespace {

constexpr uint16_t kMost = 65535;

/// Floating point of 16 bits: a sign, 5 bits of exponent, 10 of fraction (IEEE 754).
double HalfValue(uint16_t half) {
  constexpr int kEndless = 31, kBias = 25;
  const int exponent = half >> 10 & 31, fraction = half & 1023;
  if (exponent == kEndless) return half & 0x8000 || fraction != 0 ? 0 : 1;
  const double value =
      exponent == 0 ? std::ldexp(fraction, 1 - kBias) : std::ldexp(1024 + fraction, exponent - kBias);
  return half & 0x8000 ? -value : value;
}

/// What is no number is 0.
uint16_t FromFraction(double value) {
  if (!(value > 0)) return 0;
  return static_cast<uint16_t>(value < 1 ? std::lround(value * kMost) : kMost);
}

template <class Stored, class Convert>
void ConvertAll(const unsigned char* from, size_t count, uint16_t* to, Convert convert) {
  for (size_t i = 0; i < count; ++i, from += sizeof(Stored)) {
    Stored stored;
    std::memcpy(&stored, from, sizeof stored);
    to[i] = convert(stored);
  }
}

/// The library has put the samples into this machine's byte order.
void ToSixteenBits(const unsigned char* from, size_t count, uint16_t format, uint16_t bits, uint16_t* to) {
  const bool fraction = format == SAMPLEFORMAT_IEEEFP;
  if (bits == 8) {
    for (size_t i = 0; i < count; ++i) to[i] = static_cast<uint16_t>(from[i] * 257);
  } else if (bits == 16 && !fraction) {
    std::memcpy(to, from, count * 2);
  } else if (bits == 16) {
    ConvertAll<uint16_t>(from, count, to, [](uint16_t half) { return FromFraction(HalfValue(half)); });
  } else if (bits == 64) {
    ConvertAll<double>(from, count, to, FromFraction);
  } else if (fraction) {
    ConvertAll<float>(from, count, to, FromFraction);
  } else {
    ConvertAll<uint32_t>(from, count, to, [](uint32_t whole) {
      return static_cast<uint16_t>((uint64_t{whole} + kMost / 2 + 1) / (kMost + 2));
    });
  }
}

}  // namespace

DeepTiff::DeepTiff(TIFF* file, ByteView profile) : file_(file) {
  uint16_t planes = PLANARCONFIG_CONTIG;
  TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &width_);
  TIFFGetField(file, TIFFTAG_IMAGELENGTH, &height_);
  TIFFGetFieldDefaulted(file, TIFFTAG_BITSPERSAMPLE, &bits_);
  TIFFGetFieldDefaulted(file, TIFFTAG_SAMPLESPERPIXEL, &samples_);
  TIFFGetFieldDefaulted(file, TIFFTAG_SAMPLEFORMAT, &format_);
  TIFFGetFieldDefaulted(file, TIFFTAG_PLANARCONFIG, &planes);
  if (!TIFFGetField(file, TIFFTAG_PHOTOMETRIC, &kind_) && samples_ >= 3) kind_ = PHOTOMETRIC_RGB;
  colours_ = kind_ == PHOTOMETRIC_SEPARATED ? 4 : kind_ == PHOTOMETRIC_RGB ? 3 : 1;
  opacity_ = FindOpacity();
  used_ = static_cast<uint16_t>(opacity_ == Opacity::kNone ? colours_ : colours_ + 1);
  in_planes_ = planes == PLANARCONFIG_SEPARATE;
  profile_ = ColourProfile(profile, kind_ == PHOTOMETRIC_SEPARATED ? RowForm::DeepInks : RowForm::Deep);
}

bool DeepTiff::IsKnown() const {
  const bool kind_fits = kind_ <= PHOTOMETRIC_RGB || kind_ == PHOTOMETRIC_SEPARATED;
  const bool fraction = format_ == SAMPLEFORMAT_IEEEFP;
  const bool whole =
      format_ == SAMPLEFORMAT_UINT || format_ == SAMPLEFORMAT_INT || format_ == SAMPLEFORMAT_VOID;
  const bool mixed_grey = bits_ == 8 && !fraction && kind_ <= PHOTOMETRIC_MINISBLACK && samples_ > 1;
  const bool inks = bits_ == 8 && !fraction && kind_ == PHOTOMETRIC_SEPARATED && profile_.ChangesColours();
  const bool size_fits = mixed_grey || inks || bits_ == 16 || bits_ == 32 || (bits_ == 64 && fraction);
  return kind_fits && (fraction || whole) && size_fits && samples_ >= used_;
}

/// A fourth sample of colours that the file doesn't explain is taken for an opacity, as the library does.
DeepTiff::Opacity DeepTiff::FindOpacity() const {
  uint16_t count = 0;
  const uint16_t* extra = nullptr;
  TIFFGetFieldDefaulted(file_, TIFFTAG_EXTRASAMPLES, &count, &extra);
  if (kind_ == PHOTOMETRIC_SEPARATED || samples_ <= colours_) return Opacity::kNone;
  const bool unexplained = count == 0 ? samples_ == 4 : extra[0] == EXTRASAMPLE_UNSPECIFIED;
  if (unexplained) return kind_ == PHOTOMETRIC_RGB ? Opacity::kMultiplied : Opacity::kNone;
  if (count == 0) return Opacity::kNone;
  if (extra[0] == EXTRASAMPLE_UNASSALPHA) return Opacity::kBeside;
  return extra[0] == EXTRASAMPLE_ASSOCALPHA ? Opacity::kMultiplied : Opacity::kNone;
}

std::optional<Bitmap> DeepTiff::Read(SizeLimit limit, ReadingWatch& watch) {
  if (in_planes_ && !limit.WithHalfAgain().Admits(width_, height_)) return std::nullopt;
  most_bytes_ = static_cast<size_t>(limit.pixels) * sizeof(Pixel);
  bitmap_ = Bitmap::Uninitialised(static_cast<int>(width_), static_cast<int>(height_));
  if (in_planes_) deep_.resize(PlaneSize() * used_);
  for (uint16_t plane = 0; plane < (in_planes_ ? used_ : 1); ++plane) {
    if (!(TIFFIsTiled(file_) ? ReadTiles(plane, watch) : ReadRows(plane, watch))) return std::nullopt;
  }
  for (uint32_t y = 0; in_planes_ && y < height_; ++y) {
    Mix(deep_.data() + size_t{width_} * y, PlaneSize(), 1, bitmap_.WritableRow(static_cast<int>(y)), width_);
  }
  return std::move(bitmap_);
}

bool DeepTiff::GoesOn(uint32_t y, uint16_t plane, ReadingWatch& watch) const {
  const int64_t planes = in_planes_ ? used_ : 1;
  return watch.GoOn(int64_t{height_} * plane + y, height_ * planes);
}

bool DeepTiff::ReadRows(uint16_t plane, ReadingWatch& watch) {
  std::vector<unsigned char> row(size_t{width_} * (in_planes_ ? 1 : samples_) * (bits_ / 8));
  if (TIFFScanlineSize64(file_) != row.size()) return false;
  for (uint32_t y = 0; y < height_; ++y) {
    if (!GoesOn(y, plane, watch)) return false;
    if (TIFFReadScanline(file_, row.data(), y, plane) < 0) return false;
    Put(row.data(), 0, y, width_, plane);
  }
  return true;
}

bool DeepTiff::ReadTiles(uint16_t plane, ReadingWatch& watch) {
  uint32_t tile_width = 0, tile_height = 0;
  TIFFGetField(file_, TIFFTAG_TILEWIDTH, &tile_width);
  TIFFGetField(file_, TIFFTAG_TILELENGTH, &tile_height);
  const uint64_t size = TIFFTileSize64(file_), row_size = TIFFTileRowSize64(file_);
  const uint64_t needed = uint64_t{tile_width} * (in_planes_ ? 1 : samples_) * (bits_ / 8);
  if (needed == 0 || row_size != needed || size < row_size * tile_height || size > most_bytes_) return false;
  std::vector<unsigned char> tile(size);
  for (uint32_t top = 0; top < height_; top += tile_height) {
    if (!GoesOn(top, plane, watch)) return false;
    for (uint32_t left = 0; left < width_; left += tile_width) {
      if (TIFFReadTile(file_, tile.data(), left, top, 0, plane) < 0) return false;
      const uint32_t rows = std::min(tile_height, height_ - top),
                     columns = std::min(tile_width, width_ - left);
      for (uint32_t y = 0; y < rows; ++y) Put(tile.data() + y * row_size, left, top + y, columns, plane);
    }
  }
  return true;
}

void DeepTiff::Put(const unsigned char* from, uint32_t x, uint32_t y, uint32_t count, uint16_t plane) {
  if (in_planes_) {
    uint16_t* to = deep_.data() + PlaneSize() * plane + size_t{width_} * y + x;
    return ToSixteenBits(from, count, format_, bits_, to);
  }
  deep_.resize(std::max(deep_.size(), size_t{count} * samples_));
  ToSixteenBits(from, size_t{count} * samples_, format_, bits_, deep_.data());
  Mix(deep_.data(), 1, samples_, bitmap_.WritableRow(static_cast<int>(y)) + x, count);
}

void DeepTiff::Mix(const uint16_t* sample, size_t to_next_sample, size_t to_next_pixel, Pixel* to,
                   uint32_t count) {
  mixed_.resize(std::max(mixed_.size(), size_t{count}));
  for (uint32_t x = 0; x < count; ++x, sample += to_next_pixel) mixed_[x] = Mixed(sample, to_next_sample);
  profile_.Apply(mixed_.data(), static_cast<int>(count));
  for (uint32_t x = 0; x < count; ++x) to[x] = std::apply(DeepOnWhite, mixed_[x]);
}

DeepTiff::Channels DeepTiff::Mixed(const uint16_t* sample, size_t to_next_sample) const {
  const auto at = [&](size_t i) { return sample[i * to_next_sample]; };
  const auto rest = [](uint32_t value) { return static_cast<uint16_t>(kMost - value); };
  Channels mixed{at(0), at(0), at(0), kMost};
  if (colours_ > 1) mixed = {at(0), at(1), at(2), kMost};
  if (kind_ == PHOTOMETRIC_MINISWHITE) mixed[0] = mixed[1] = mixed[2] = rest(mixed[0]);
  if (kind_ == PHOTOMETRIC_SEPARATED) {
    if (profile_.ChangesColours()) return {at(0), at(1), at(2), at(3)};
    for (size_t i = 0; i < 3; ++i)
      mixed[i] = static_cast<uint16_t>(uint32_t{rest(mixed[i])} * rest(at(3)) / kMost);
  }
  if (opacity_ == Opacity::kBeside) mixed[3] = at(colours_);
  if (opacity_ == Opacity::kMultiplied) {
    const uint32_t white = rest(at(colours_));
    for (size_t i = 0; i < 3; ++i)
      mixed[i] = static_cast<uint16_t>(std::min<uint32_t>(kMost, mixed[i] + white));
  }
  return mixed;
}

}  // namespace zelvane
