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
  const size_t box = (SlabOf(point.red) * kSlabs + SlabOf(point.green)) * kSlabs + SlabOf(point.blue);
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

}  // namespace zelvane
