#include "surface/codecs/Palette.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "surface/codecs/ColourBoxes.h"

namespace zelvane {

namespace {

/// What is nearest to one colour of the palette.
struct Cluster {
  double red = 0, green = 0, blue = 0, weight = 0;
  const WeightedColour* heaviest = nullptr;

  void Add(const WeightedColour& colour) {
    red += double{colour.weight} * colour.red;
    green += double{colour.weight} * colour.green;
    blue += double{colour.weight} * colour.blue;
    weight += colour.weight;
    if (!heaviest || colour.weight > heaviest->weight) heaviest = &colour;
  }
  ColourPoint Mean() const {
    return {static_cast<float>(red / weight), static_cast<float>(green / weight),
            static_cast<float>(blue / weight)};
  }
  /// A flat area's own colour, or else speckles would make up for the difference.
  bool IsMostlyOne() const { return 2 * heaviest->weight > weight; }
};

std::vector<Cluster> ClustersOf(const std::vector<WeightedColour>& colours,
                                const std::vector<ColourPoint>& palette) {
  std::vector<Cluster> clusters(palette.size());
  const NearestColour nearest(palette);
  for (const WeightedColour& colour : colours) clusters[nearest.PlaceOf(colour)].Add(colour);
  return clusters;
}

void MoveToMeans(std::vector<ColourPoint>& palette, const std::vector<WeightedColour>& colours) {
  const std::vector<Cluster> clusters = ClustersOf(colours, palette);
  for (size_t i = 0; i < palette.size(); ++i) {
    if (clusters[i].heaviest) palette[i] = clusters[i].Mean();
  }
}

void MoveToFlatColours(std::vector<ColourPoint>& palette, const std::vector<WeightedColour>& colours) {
  const std::vector<Cluster> clusters = ClustersOf(colours, palette);
  for (size_t i = 0; i < palette.size(); ++i) {
    if (clusters[i].heaviest && clusters[i].IsMostlyOne()) palette[i] = *clusters[i].heaviest;
  }
}

/// Up to `size` colours in all, as long as any isn't in the palette.
void AddFarthest(std::vector<ColourPoint>& palette, const std::vector<WeightedColour>& colours, size_t size) {
  const NearestColour nearest(palette);
  std::vector<float> distances;
  for (const WeightedColour& colour : colours)
    distances.push_back(Distance(colour, palette[nearest.PlaceOf(colour)]));
  const size_t known = palette.size();
  for (size_t added = known; added < size; ++added) {
    const auto farthest = std::max_element(distances.begin(), distances.end());
    if (*farthest == 0) return;
    const ColourPoint colour = colours[static_cast<size_t>(farthest - distances.begin())];
    palette.push_back(colour);
    for (size_t i = 0; i < colours.size(); ++i)
      distances[i] = std::min(distances[i], Distance(colours[i], colour));
  }
}

Pixel Rounded(const ColourPoint& point) {
  const auto channel = [](float value) { return static_cast<uint32_t>(std::lround(value)); };
  return 0xFF000000u | channel(point.red) << 16 | channel(point.green) << 8 | channel(point.blue);
}

}  // namespace

std::vector<WeightedColour> ColoursOf(const ColourCounts& counts) {
  std::vector<WeightedColour> colours;
  for (const auto& [colour, count] : counts.Entries())
    colours.push_back({PointOf(colour), static_cast<float>(count)});
  return colours;
}

std::vector<WeightedColour> MeanColoursOf(const Bitmap& picture) {
  constexpr size_t kSamples = size_t{1} << 20, kCells = size_t{1} << 18;  // 6 bits a channel
  struct Cell {
    uint32_t count = 0, red = 0, green = 0, blue = 0;
  };
  std::vector<Cell> cells(kCells);
  const auto width = static_cast<size_t>(picture.Width());
  const size_t pixels = width * static_cast<size_t>(picture.Height());
  size_t step = std::max<size_t>(1, pixels / kSamples);
  while (std::gcd(step, width) > 1) ++step;  // or some columns would never be looked at
  for (size_t i = 0; i < pixels; i += step) {
    const Pixel pixel = picture.Row(0)[i];
    Cell& cell = cells[NearestColour::CellOf(pixel)];
    cell.count += 1;
    cell.red += pixel >> 16 & 0xFF;
    cell.green += pixel >> 8 & 0xFF;
    cell.blue += pixel & 0xFF;
  }
  std::vector<WeightedColour> colours;
  for (const Cell& cell : cells) {
    if (cell.count == 0) continue;
    const auto weight = static_cast<float>(cell.count);
    const auto mean = [weight](uint32_t sum) { return static_cast<float>(sum) / weight; };
    colours.push_back({{mean(cell.red), mean(cell.green), mean(cell.blue)}, weight});
  }
  return colours;
}

Palette Quantise(const std::vector<WeightedColour>& colours) {
  constexpr size_t kFarthest = 24;
  constexpr int kRounds = 5;  // more of them hardly change anything
  std::vector<ColourPoint> palette = MeansOfBoxes(colours, kPaletteSize - kFarthest);
  AddFarthest(palette, colours, kPaletteSize - kFarthest);
  for (int i = 0; i < kRounds; ++i) MoveToMeans(palette, colours);
  AddFarthest(palette, colours, kPaletteSize);
  MoveToFlatColours(palette, colours);
  Palette rounded;
  for (const ColourPoint& point : palette) rounded.push_back(Rounded(point));
  return rounded;
}

std::vector<ColourPoint> PointsOf(const Palette& palette) {
  std::vector<ColourPoint> points;
  for (const Pixel colour : palette) points.push_back(PointOf(colour));
  return points;
}

}  // namespace zelvane
