#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "surface/raster/Color.h"

namespace zelvane {

/// A colour between those that pixels have; channels from 0 to 255.
struct ColourPoint {
  float red = 0, green = 0, blue = 0;
};

inline ColourPoint PointOf(Pixel pixel) {
  return {static_cast<float>(pixel >> 16 & 0xFF), static_cast<float>(pixel >> 8 & 0xFF),
          static_cast<float>(pixel & 0xFF)};
}

/// How much a channel's difference counts: more where the eye sees it better, but not as much as for its
/// brightness alone, or colours would shift.
inline constexpr float kRedWeight = 3, kGreenWeight = 4, kBlueWeight = 2;

/// The square of what two colours are apart.
inline float Distance(const ColourPoint& a, const ColourPoint& b) {
  const float red = a.red - b.red, green = a.green - b.green, blue = a.blue - b.blue;
  return kRedWeight * red * red + kGreenWeight * green * green + kBlueWeight * blue * blue;
}

/// Finds the nearest of up to 256 colours. The space is cut into 8 x 8 x 8 boxes, and for each it's known
/// which colours may be nearest to anything within (P. Heckbert, Color Image Quantization for Frame Buffer
/// Display, 1982: locally sorted search).
class NearestColour {
 public:
  explicit NearestColour(const std::vector<ColourPoint>& colours);
  /// The place of the nearest colour; the first where several are.
  size_t PlaceOf(const ColourPoint& point) const;

  /// The same for the middle of each cell of colours that are alike in their upper six bits a channel; only
  /// for colours that pixels have.
  std::vector<unsigned char> TableOfCells() const;
  /// Where the cell of a pixel stands in that table.
  static constexpr size_t CellOf(Pixel pixel) {
    return (pixel >> 6 & 0x3F000) | (pixel >> 4 & 0xFC0) | (pixel >> 2 & 0x3F);
  }

 private:
  static constexpr size_t kSlabs = 8, kSlabWidth = 256 / kSlabs, kBoxes = kSlabs * kSlabs * kSlabs;
  static size_t SlabOf(float channel) { return static_cast<size_t>(channel) / kSlabWidth; }
  static size_t BoxOf(const ColourPoint& point) {
    return (SlabOf(point.red) * kSlabs + SlabOf(point.green)) * kSlabs + SlabOf(point.blue);
  }
  void ListCandidates();
  void FillBox(const ColourPoint& corner, std::vector<unsigned char>& table) const;

  const std::vector<ColourPoint>& colours_;
  std::array<uint32_t, kBoxes + 1> starts_{};
  std::vector<uint8_t> candidates_;
};

}  // namespace zelvane
