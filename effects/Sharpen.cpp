#include "effects/pixels/Blur.h"
#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

/// Unsharp masking: what the picture has more than its blurred copy is strengthened, unless it's less than
/// the threshold, which keeps grain as it is.
Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  const auto amount = static_cast<float>(values[0] / 100), threshold = static_cast<float>(values[2]);
  Bitmap result = Bitmap::Uninitialised(picture.Width(), picture.Height());
  const Bitmap::Rows rows = result.WritableRows();
  BlurRows(picture, values[1], work, [&](int y, const float* blurred) {
    const uint8_t* const from = BytesOf(picture.Row(y));
    uint8_t* const to = BytesOf(rows[y]);
    const int count = picture.Width() * kBytesPerPixel;
    for (int i = 0; i < count; ++i) {
      const auto value = static_cast<float>(from[i]), more = value - blurred[i];
      const float sharp = value + (std::abs(more) < threshold ? 0 : amount * more);
      to[i] = static_cast<uint8_t>(static_cast<int>(std::clamp(sharp, 0.0F, 255.0F) + 0.5F));
    }
    for (int x = 0; x < picture.Width(); ++x) rows[y][x] |= kOpaque;
  });
  return result;
}

}  // namespace

Effect Sharpen() {
  return {"Sharpen",
          {Setting::Slider("Amount", 0, 500, 100, " %"), Setting::Length("Radius", 0.3, 20, 1.5, 0.1),
           Setting::Slider("Threshold", 0, 100, 0)},
          Apply};
}

}  // namespace zelvane
