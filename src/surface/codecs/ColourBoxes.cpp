#include "surface/codecs/ColourBoxes.h"

#include <algorithm>
#include <array>

namespace zelvane {

namespace {

constexpr size_t kSide = 33;  // 32 steps of 8 values, and a plane of nothing before the first

/// Sums over colours: their weights, weighted channels and weighted squares.
struct Moments {
  double weight = 0, red = 0, green = 0, blue = 0, square = 0;

  static Moments Of(const WeightedColour& colour) {
    return {colour.weight, double{colour.weight} * colour.red, double{colour.weight} * colour.green,
            double{colour.weight} * colour.blue, double{colour.weight} * Distance(colour, {})};
  }
  Moments& operator+=(const Moments& other) {
    weight += other.weight, red += other.red, green += other.green, blue += other.blue;
    square += other.square;
    return *this;
  }
  Moments operator+(const Moments& other) const { return Moments(*this) += other; }
  Moments operator-(const Moments& other) const {
    return {weight - other.weight, red - other.red, green - other.green, blue - other.blue,
            square - other.square};
  }
  /// What the squares would sum up to if every colour were the mean. The more, the less variance is left.
  double OfMean() const {
    return (kRedWeight * red * red + kGreenWeight * green * green + kBlueWeight * blue * blue) / weight;
  }
  double Variance() const { return square - OfMean(); }
};

/// Beyond `low`, up to and with `high`, by channel.
struct Box {
  std::array<size_t, 3> low{}, high{};
  double variance = 0;
};

/// The sums over all boxes that begin at black, from which that of any box follows.
class Sums {
 public:
  explicit Sums(const std::vector<WeightedColour>& colours) : sums_(kSide * kSide * kSide) {
    for (const WeightedColour& colour : colours) {
      const auto step = [](float channel) { return static_cast<size_t>(channel) / 8 + 1; };
      sums_[At(step(colour.red), step(colour.green), step(colour.blue))] += Moments::Of(colour);
    }
    for (const size_t before : {size_t{1}, kSide, kSide * kSide}) {
      for (size_t i = before; i < sums_.size(); ++i) {
        if (i / before % kSide != 0) sums_[i] += sums_[i - before];
      }
    }
  }
  Moments Within(const Box& box) const {
    const auto& low = box.low;
    const auto& high = box.high;
    const auto slice = [&](size_t red) {
      return sums_[At(red, high[1], high[2])] + sums_[At(red, low[1], low[2])] -
             sums_[At(red, low[1], high[2])] - sums_[At(red, high[1], low[2])];
    };
    return slice(high[0]) - slice(low[0]);
  }

 private:
  static size_t At(size_t red, size_t green, size_t blue) { return (red * kSide + green) * kSide + blue; }

  std::vector<Moments> sums_;
};

void Measure(Box& box, const Sums& sums) {
  box.variance = sums.Within(box).Variance();
}

/// Cuts the box where least variance is left and yields the upper part; an empty one where there is nothing
/// to cut, which then looks like a box without variance.
std::vector<Box> CutOff(Box& box, const Sums& sums) {
  const Moments all = sums.Within(box);
  Box best_lower, best_upper;
  double best = 0;
  for (size_t channel = 0; channel < 3; ++channel) {
    for (size_t cut = box.low[channel] + 1; cut < box.high[channel]; ++cut) {
      Box lower = box, upper = box;
      lower.high[channel] = upper.low[channel] = cut;
      const Moments below = sums.Within(lower), above = all - below;
      if (below.weight <= 0 || above.weight <= 0) continue;
      const double of_means = below.OfMean() + above.OfMean();
      if (of_means <= best) continue;
      best = of_means;
      best_lower = lower, best_upper = upper;
    }
  }
  box.variance = 0;
  if (best == 0) return {};
  box = best_lower;
  Measure(box, sums);
  Measure(best_upper, sums);
  return {best_upper};
}

}  // namespace

std::vector<ColourPoint> MeansOfBoxes(const std::vector<WeightedColour>& colours, size_t count) {
  const Sums sums(colours);
  std::vector<Box> boxes{{{0, 0, 0}, {kSide - 1, kSide - 1, kSide - 1}, 1}};
  while (boxes.size() < count) {
    const auto widest = std::max_element(boxes.begin(), boxes.end(),
                                         [](const Box& a, const Box& b) { return a.variance < b.variance; });
    if (widest->variance <= 0) break;
    for (const Box& upper : CutOff(*widest, sums)) boxes.push_back(upper);
  }
  std::vector<ColourPoint> means;
  for (const Box& box : boxes) {
    const Moments all = sums.Within(box);
    const auto mean = [&all](double sum) {
      return std::clamp(static_cast<float>(sum / all.weight), 0.0f, 255.0f);
    };
    means.push_back({mean(all.red), mean(all.green), mean(all.blue)});
  }
  return means;
}

}  // namespace zelvane
