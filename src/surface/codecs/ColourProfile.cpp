#include "surface/codecs/ColourProfile.h"

#include <dlfcn.h>
#include <lcms2.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "surface/raster/Color.h"

namespace zelvane {

namespace {

/// The library, which is loaded for the first picture with a profile: most have none.
struct Library {
  Library() : handle_(dlopen("liblcms2.so.2", RTLD_NOW | RTLD_LOCAL)) {
    Find(open, "cmsOpenProfileFromMem");
    Find(screen, "cmsCreate_sRGBProfile");
    Find(close, "cmsCloseProfile");
    Find(colours, "cmsGetColorSpace");
    Find(create, "cmsCreateTransform");
    Find(transform, "cmsDoTransform");
    Find(destroy, "cmsDeleteTransform");
  }
  bool IsThere() const { return there_; }

  decltype(&cmsOpenProfileFromMem) open = nullptr;
  decltype(&cmsCreate_sRGBProfile) screen = nullptr;
  decltype(&cmsCloseProfile) close = nullptr;
  decltype(&cmsGetColorSpace) colours = nullptr;
  decltype(&cmsCreateTransform) create = nullptr;
  decltype(&cmsDoTransform) transform = nullptr;
  decltype(&cmsDeleteTransform) destroy = nullptr;

 private:
  template <class Function>
  void Find(Function& function, const char* name) {
    function = handle_ ? reinterpret_cast<Function>(dlsym(handle_, name)) : nullptr;
    there_ = there_ && function;
  }
  void* handle_;
  bool there_ = true;
};

const Library& Lcms() {
  static const Library library;
  return library;
}

struct Formats {
  cmsUInt32Number from = 0, to = 0;
};

/// Nothing where the profile is for other colours than the rows have. Of a grey picture's three channels,
/// which are alike, a grey profile takes the first; what a format calls extra is left alone.
Formats FormatsFor(RowForm form, cmsColorSpaceSignature colours) {
  constexpr cmsUInt32Number kGrey = COLORSPACE_SH(PT_GRAY) | CHANNELS_SH(1) | EXTRA_SH(3);
  constexpr Formats kPixels{TYPE_BGRA_8, TYPE_BGRA_8}, kDeep{TYPE_RGBA_16, TYPE_RGBA_16},
      kGreyPixels{kGrey | BYTES_SH(1), TYPE_BGRA_8}, kDeepGrey{kGrey | BYTES_SH(2), TYPE_RGBA_16},
      kInks{TYPE_CMYK_8_REV, TYPE_BGRA_8}, kDeepInks{TYPE_CMYK_16, TYPE_RGBA_16};
  const bool deep = form == RowForm::Deep || form == RowForm::DeepInks;
  const bool inks = form == RowForm::Inks || form == RowForm::DeepInks;
  if (inks && colours == cmsSigCmykData) return deep ? kDeepInks : kInks;
  if (!inks && colours == cmsSigRgbData) return deep ? kDeep : kPixels;
  if (!inks && colours == cmsSigGrayData) return deep ? kDeepGrey : kGreyPixels;
  return {};
}

cmsHTRANSFORM TransformFrom(cmsHPROFILE profile, Formats formats) {
  const cmsHPROFILE screen = Lcms().screen();
  if (!screen) return nullptr;
  // Of deep colours the library would make a coarse table, which is far off in the shadows. The darkest that
  // inks can do is shown as black.
  const cmsUInt32Number flags =
      cmsFLAGS_BLACKPOINTCOMPENSATION | (formats.from == TYPE_RGBA_16 ? cmsFLAGS_NOOPTIMIZE : 0);
  const cmsHTRANSFORM transform =
      Lcms().create(profile, formats.from, screen, formats.to, INTENT_PERCEPTUAL, flags);
  Lcms().close(screen);
  return transform;
}

/// The profile's colours are the screen's, but for rounding.
bool IsOfScreen(cmsHPROFILE profile) {
  constexpr int kStep = 51, kTolerance = 2;
  const cmsHTRANSFORM transform = TransformFrom(profile, {TYPE_BGR_8, TYPE_BGR_8});
  if (!transform) return false;
  std::vector<unsigned char> colours;
  for (int i = 0; i < 6 * 6 * 6; ++i) {
    for (const int digit : {i % 6, i / 6 % 6, i / 36})
      colours.push_back(static_cast<unsigned char>(digit * kStep));
  }
  std::vector<unsigned char> shown(colours.size());
  Lcms().transform(transform, colours.data(), shown.data(), static_cast<cmsUInt32Number>(colours.size() / 3));
  Lcms().destroy(transform);
  return std::ranges::equal(colours, shown, [](int a, int b) { return std::abs(a - b) <= kTolerance; });
}

}  // namespace

ColourProfile::ColourProfile(ByteView profile, RowForm form) : form_(form) {
  if (profile.Size() == 0 || !Lcms().IsThere()) return;
  const cmsHPROFILE opened = Lcms().open(profile.Data(), static_cast<cmsUInt32Number>(profile.Size()));
  if (!opened) return;
  const cmsColorSpaceSignature colours = Lcms().colours(opened);
  const Formats formats = FormatsFor(form, colours);
  if (formats.from != 0 && (colours != cmsSigRgbData || !IsOfScreen(opened))) {
    if (const cmsHTRANSFORM transform = TransformFrom(opened, formats))
      transform_ = {transform, Lcms().destroy};
  }
  Lcms().close(opened);
}

void ColourProfile::Apply(void* row, int width) const {
  if (!transform_) return;
  Lcms().transform(transform_.get(), row, row, static_cast<cmsUInt32Number>(width));
  if (form_ == RowForm::Inks) {
    std::for_each_n(static_cast<Pixel*>(row), width, [](Pixel& pixel) { pixel |= 0xFF000000u; });
  } else if (form_ == RowForm::DeepInks) {
    for (int x = 0; x < width; ++x) static_cast<uint16_t*>(row)[4 * x + 3] = 0xFFFF;
  }
}

}  // namespace zelvane
