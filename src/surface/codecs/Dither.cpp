#include "surface/codecs/Dither.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zelvane {

namespace {

/// Red, green, blue and opacity of two pixels, 16 bits each, worked on at once.
using Lanes [[gnu::vector_size(16)]] = int16_t;
using TwoWords [[gnu::vector_size(16)]] = uint64_t;
using TwoPixels [[gnu::vector_size(8)]] = Pixel;
using EightBytes [[gnu::vector_size(8)]] = uint8_t;

/// A pixel has to wait for the one before it, so the picture is worked on in bands side by side.
constexpr int kPairs = 4, kBands = 2 * kPairs;

struct Errors {
  Lanes pairs[kPairs];
};

class Ditherer {
 public:
  Ditherer(const Bitmap& picture, const Palette& palette)
      : picture_(picture),
        table_(NearestColour(PointsOf(palette)).TableOfCells()),
        errors_(static_cast<size_t>(picture.Width()) + 2) {
    for (size_t i = 0; i < palette.size(); ++i) {
      const uint64_t colour = palette[i];
      colours_[i] =
          (colour & 0xFF) | (colour & 0xFF00) << 8 | (colour & 0xFF0000) << 16 | (colour & 0xFF000000) << 24;
    }
  }

  /// Each band begins some rows above its own, which the one above it overwrites at its end: by then, errors
  /// flow as if there were no border.
  std::vector<unsigned char> Run() {
    constexpr int kShared = 8;
    const int height = picture_.Height(), step = std::max(0, (height - kShared) / kBands);
    const int rows = height - (kBands - 1) * step;
    const auto width = static_cast<size_t>(picture_.Width());
    band_ = width * static_cast<size_t>(step);
    std::vector<unsigned char> places(width * static_cast<size_t>(height));
    for (int y = 0; y < rows; ++y) {
      unsigned char* to = places.data() + width * static_cast<size_t>(y);
      y % 2 == 0 ? DitherRow<1>(picture_.Row(y), to) : DitherRow<-1>(picture_.Row(y), to);
    }
    return places;
  }

 private:
  /// One row of each band. `errors_` holds, in the units of `kWhole`, what comes from above: at a pixel's
  /// place, one further, so that there is one on either side.
  template <int kStep>
  void DitherRow(const Pixel* row, unsigned char* to) {
    const int width = picture_.Width();
    Errors before{}, below_before{};
    Errors* errors = errors_.data() + (kStep > 0 ? 1 : width);
    int x = kStep > 0 ? 0 : width - 1;
    for (int i = 0; i < width; ++i, x += kStep, errors += kStep) {
      for (int pair = 0; pair < kPairs; ++pair) {
        const size_t at = static_cast<size_t>(x) + 2 * static_cast<size_t>(pair) * band_;
        DitherPair(row + at, to + at, errors->pairs[pair], (errors - kStep)->pairs[pair], before.pairs[pair],
                   below_before.pairs[pair]);
      }
    }
    errors[-kStep] = below_before;
  }

  /// The error's shares are 7 sixteenths for the next pixel, and for those below 3 before, 5 straight and 1
  /// ahead; `before` is the last pixel's error, `below_before` what has come together below it.
  void DitherPair(const Pixel* from, unsigned char* to, const Lanes& above, Lanes& below_last, Lanes& before,
                  Lanes& below_before) const {
    constexpr int kWholeBits = 7, kKept = 7;  // seven eighths of 16 * 8
    const Lanes none{}, most = none + 255;
    Lanes wanted =
        __builtin_convertvector(reinterpret_cast<EightBytes>(TwoPixels{from[0], from[band_]}), Lanes) +
        ((above + 7 * before + (1 << (kWholeBits - 1))) >> kWholeBits);
    wanted = wanted < none ? none : wanted;
    wanted = wanted > most ? most : wanted;
    const auto words = reinterpret_cast<TwoWords>(wanted);
    const unsigned char first = table_[CellOf(words[0])], second = table_[CellOf(words[1])];
    to[0] = first;
    to[band_] = second;
    const Lanes error =
        kKept * (wanted - reinterpret_cast<Lanes>(TwoWords{colours_[first], colours_[second]}));
    below_last = below_before + 3 * error;
    below_before = before + 5 * error;
    before = error;
  }
  static size_t CellOf(uint64_t channels) {
    return (channels >> 2 & 0x3F) | (channels >> 12 & 0xFC0) | (channels >> 22 & 0x3F000);
  }

  const Bitmap& picture_;
  const std::vector<unsigned char> table_;
  std::array<uint64_t, kPaletteSize> colours_{};  // 16 bits a channel
  std::vector<Errors> errors_;
  size_t band_ = 0;  // pixels from a band to the next
};

}  // namespace

std::vector<unsigned char> Dither(const Bitmap& picture, const Palette& palette) {
  return Ditherer(picture, palette).Run();
}

}  // namespace zelvane
