#include "surface/codecs/NearestColour.h"

#include <algorithm>
#include <limits>

namespace zelvane {

namespace {

/// How near and how far the points of a slab or a box can be, squared.
struct Reach {
  float near = 0, far = 0;
  Reach operator+(const Reach& other) const { return {near + other.near, far + other.far}; }
};

Reach ReachOf(float channel, float low, float high, float weight) {
  const float below = low - channel, above = channel - high;
  const float near = std::max({below, above, 0.0f}), far = std::max(high - channel, channel - low);
  return {weight * near * near, weight * far * far};
}

constexpr int kCellWidth = 4, kCellsASide = 8;
/// A number for each cell of a box, its side of cells by cells by cells.
using Cells = std::array<int32_t, kCellsASide * kCellsASide * kCellsASide>;
using Line = std::array<int32_t, kCellsASide>;

/// The squares of what the middles of a line of cells are off by, in quarters, shifted by the eight bits that
/// a place takes.
Line LineFrom(float corner, float channel, float weight) {
  Line line;
  for (int i = 0; i < kCellsASide; ++i) {
    const int twice = 2 * static_cast<int>(corner - channel) + 2 * kCellWidth * i + kCellWidth - 1;
    line[static_cast<size_t>(i)] = static_cast<int32_t>(weight) * twice * twice << 8;
  }
  return line;
}

/// The lesser of what stands there and of distance and place in one number.
void KeepNearer(Cells& cells, const Line& red, const Line& green, const Line& blue, int32_t place) {
  int32_t* to = cells.data();
  for (const int32_t off_red : red) {
    for (const int32_t off_green : green) {
      const int32_t off = off_red + off_green + place;
      for (size_t i = 0; i < blue.size(); ++i) to[i] = std::min(to[i], off + blue[i]);
      to += blue.size();
    }
  }
}

}  // namespace

NearestColour::NearestColour(const std::vector<ColourPoint>& colours) : colours_(colours) {
  ListCandidates();
}

/// A colour whose nearest point of the box is beyond the farthest one of another colour is never taken.
void NearestColour::ListCandidates() {
  using Slabs = std::array<std::array<Reach, kSlabs>, 3>;
  std::vector<Slabs> reaches(colours_.size());
  for (size_t i = 0; i < colours_.size(); ++i) {
    for (size_t slab = 0; slab < kSlabs; ++slab) {
      const auto low = static_cast<float>(slab * kSlabWidth), high = low + kSlabWidth;
      reaches[i][0][slab] = ReachOf(colours_[i].red, low, high, kRedWeight);
      reaches[i][1][slab] = ReachOf(colours_[i].green, low, high, kGreenWeight);
      reaches[i][2][slab] = ReachOf(colours_[i].blue, low, high, kBlueWeight);
    }
  }
  for (size_t box = 0; box < kBoxes; ++box) {
    const size_t red = box / (kSlabs * kSlabs), green = box / kSlabs % kSlabs, blue = box % kSlabs;
    const auto reach = [&](const Slabs& slabs) { return slabs[0][red] + slabs[1][green] + slabs[2][blue]; };
    float nearest_far = std::numeric_limits<float>::max();
    for (const Slabs& slabs : reaches) nearest_far = std::min(nearest_far, reach(slabs).far);
    for (size_t i = 0; i < colours_.size(); ++i) {
      if (reach(reaches[i]).near <= nearest_far) candidates_.push_back(static_cast<uint8_t>(i));
    }
    starts_[box + 1] = static_cast<uint32_t>(candidates_.size());
  }
}

size_t NearestColour::PlaceOf(const ColourPoint& point) const {
  const size_t box = BoxOf(point);
  size_t best = 0;
  float least = std::numeric_limits<float>::max();
  for (uint32_t i = starts_[box]; i < starts_[box + 1]; ++i) {
    const float distance = Distance(point, colours_[candidates_[i]]);
    if (distance >= least) continue;
    least = distance;
    best = candidates_[i];
  }
  return best;
}

std::vector<unsigned char> NearestColour::TableOfCells() const {
  std::vector<unsigned char> table(size_t{1} << 18);
  for (size_t red = 0; red < 256; red += kSlabWidth)
    for (size_t green = 0; green < 256; green += kSlabWidth)
      for (size_t blue = 0; blue < 256; blue += kSlabWidth)
        FillBox({static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue)}, table);
  return table;
}

void NearestColour::FillBox(const ColourPoint& corner, std::vector<unsigned char>& table) const {
  Cells cells;
  cells.fill(std::numeric_limits<int32_t>::max());
  const size_t box = BoxOf(corner);
  for (uint32_t i = starts_[box]; i < starts_[box + 1]; ++i) {
    const ColourPoint& colour = colours_[candidates_[i]];
    KeepNearer(cells, LineFrom(corner.red, colour.red, kRedWeight),
               LineFrom(corner.green, colour.green, kGreenWeight),
               LineFrom(corner.blue, colour.blue, kBlueWeight), candidates_[i]);
  }
  const auto six_bits = [](float channel) { return static_cast<size_t>(channel) / kCellWidth; };
  for (size_t i = 0; i < cells.size(); ++i) {
    const size_t red = six_bits(corner.red) + i / 64, green = six_bits(corner.green) + i / 8 % 8;
    table[red << 12 | green << 6 | (six_bits(corner.blue) + i % 8)] = static_cast<unsigned char>(cells[i]);
  }
}

}  // namespace zelvane
