#include <QGuiApplication>
#include <cstddef>
#include <cstdint>

#include "Whole.h"
#include "surface/system/metafiles/Metafile.h"

/// The fonts come from the toolkit's application.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static const QGuiApplication toolkit(*count, *arguments);
  return 0;
}

/// Any bytes, as if they were a metafile. What comes out must be a picture within the limit, opaque
/// everywhere.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr zelvane::SizeLimit kLimit{1 << 16};  // pixels; larger ones only cost time
  if (!zelvane::LooksLikeMetafile({data, size})) return 0;
  const auto picture = zelvane::DecodeMetafile({data, size}, kLimit);
  if (picture) zelvane::ExpectWhole(*picture, kLimit);
  return 0;
}
