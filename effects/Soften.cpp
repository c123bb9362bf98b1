#include "effects/pixels/Blur.h"
#include "effects/pixels/Effect.h"
#include "effects/pixels/Pixels.h"

namespace zelvane {
namespace {

Bitmap Apply(const Bitmap& picture, const Values& values, Work& work) {
  Bitmap result = Bitmap::Uninitialised(picture.Width(), picture.Height());
  const Bitmap::Rows rows = result.WritableRows();
  BlurRows(picture, values[0], work, [&](int y, const float* blurred) {
    uint8_t* const to = BytesOf(rows[y]);
    const int count = picture.Width() * kBytesPerPixel;
    for (int i = 0; i < count; ++i) to[i] = static_cast<uint8_t>(static_cast<int>(blurred[i] + 0.5F));
  });
  return result;
}

}  // namespace

Effect Soften() {
  return {"Soften", {Setting::Length("Radius", 0, 30, 2, 0.1)}, Apply};
}

}  // namespace zelvane
