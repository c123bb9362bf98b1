#pragma once

#include "surface/system/metafiles/Objects.h"
#include "surface/system/metafiles/Records.h"

/// What objects of both kinds of metafiles are made from.
namespace zelvane {

/// Of a style that records tell by its number.
inline MetaBrush BrushOfStyle(uint32_t style, QRgb color, uint32_t hatch) {
  constexpr uint32_t kNull = 1, kHatched = 2;
  MetaBrush brush;
  if (style == kNull) brush.kind = MetaBrush::Kind::Null;
  if (style == kHatched) brush.kind = MetaBrush::Kind::Hatched;
  brush.color = color;
  brush.hatch = hatch;
  return brush;
}

inline MetaPalette ReadPalette(Fields& fields) {
  fields.Skip(2);
  const uint32_t count = fields.Word();
  fields.Expect(count, 4);
  MetaPalette palette;
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t color = fields.Long();
    palette.colors.append(qRgb(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF));
  }
  return palette;
}

/// From its slant to its character set, and what follows up to the name.
inline void ReadFontLook(Fields& fields, MetaFont& font) {
  font.italic = fields.Byte() != 0;
  font.underline = fields.Byte() != 0;
  font.strike_out = fields.Byte() != 0;
  font.charset = fields.Byte();
  fields.Skip(4);
}

}  // namespace zelvane
