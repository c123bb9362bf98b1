#include "effects/pixels/Blur.h"

#include <cmath>
#include <vector>

#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// What is worked on at a time stays in the nearest cache.
constexpr int kChunk = 1024;

/// The weights from the middle outwards; with those of the other side they make 1.
std::vector<float> Weights(double sigma) {
  const int reach = static_cast<int>(std::ceil(3 * sigma));
  std::vector<double> weights;
  double sum = 0;
  for (int i = 0; i <= reach; ++i) {
    weights.push_back(i == 0 ? 1 : std::exp(-i * i / (2 * sigma * sigma)));
    sum += (i == 0 ? 1 : 2) * weights.back();
  }
  std::vector<float> result;
  for (const double weight : weights) result.push_back(static_cast<float>(weight / sum));
  return result;
}

/// `count` values of a row blurred with those of the rows around it.
void BlurDown(const Bitmap& picture, int y, const std::vector<float>& weights, float* to) {
  const int count = picture.Width() * kBytesPerPixel, reach = static_cast<int>(weights.size()) - 1;
  const auto bytes = [&](int row) { return BytesOf(picture.Row(Within(row, picture.Height()))); };
  for (int from = 0; from < count; from += kChunk) {
    const int end = std::min(from + kChunk, count);
    const uint8_t* const middle = bytes(y);
    for (int i = from; i < end; ++i) to[i] = weights[0] * static_cast<float>(middle[i]);
    for (int k = 1; k <= reach; ++k) {
      const float weight = weights[static_cast<size_t>(k)];
      const uint8_t *const above = bytes(y - k), *const below = bytes(y + k);
      for (int i = from; i < end; ++i) to[i] += weight * static_cast<float>(above[i] + below[i]);
    }
  }
}

/// `row` has room for `reach` pixels on either side, which are filled from its ends.
void RepeatEnds(float* row, int width, int reach) {
  float* const last = row + (width - 1) * kBytesPerPixel;
  for (int k = 1; k <= reach; ++k) {
    std::copy_n(row, kBytesPerPixel, row - k * kBytesPerPixel);
    std::copy_n(last, kBytesPerPixel, last + k * kBytesPerPixel);
  }
}

void BlurAcross(const float* row, int count, const std::vector<float>& weights, float* to) {
  const int reach = static_cast<int>(weights.size()) - 1;
  for (int from = 0; from < count; from += kChunk) {
    const int end = std::min(from + kChunk, count);
    for (int i = from; i < end; ++i) to[i] = weights[0] * row[i];
    for (int k = 1; k <= reach; ++k) {
      const float weight = weights[static_cast<size_t>(k)];
      const float *const left = row - k * kBytesPerPixel, *const right = row + k * kBytesPerPixel;
      for (int i = from; i < end; ++i) to[i] += weight * (left[i] + right[i]);
    }
  }
}

}  // namespace

void BlurRows(const Bitmap& picture, double sigma, Work& work,
              const std::function<void(int y, const float* row)>& take) {
  const std::vector<float> weights = Weights(sigma);
  const int reach = static_cast<int>(weights.size()) - 1, count = picture.Width() * kBytesPerPixel;
  ForBands(picture.Height(), work, [&](int first, int end) {
    std::vector<float> padded(static_cast<size_t>(count + 2 * reach * kBytesPerPixel));
    std::vector<float> blurred(static_cast<size_t>(count));
    float* const row = padded.data() + reach * kBytesPerPixel;
    for (int y = first; y < end; ++y) {
      BlurDown(picture, y, weights, row);
      RepeatEnds(row, picture.Width(), reach);
      BlurAcross(row, count, weights, blurred.data());
      take(y, blurred.data());
    }
  });
}

}  // namespace zelvane
