#pragma once

#include <QBrush>
#include <QImage>
#include <QList>
#include <QPen>
#include <QString>
#include <cstdint>
#include <set>
#include <variant>
#include <vector>

#include "surface/system/metafiles/Records.h"

/// What a metafile's records make, select and delete.
namespace zelvane {

struct MetaBrush {
  enum class Kind { Null, Solid, Hatched, Pattern };

  Kind kind = Kind::Solid;
  QRgb color = 0xFFFFFFFFu;
  /// 0 to 5: across, down, falling, rising, both straight ones, both slanting ones.
  uint32_t hatch = 0;
  /// Repeated pixel for pixel. One of two colours shows the text's for black, the ground's for white.
  QImage pattern;
  bool two_colors = false;
};

struct MetaPen {
  /// The kind of line in the low bits, above them ends, joins and whether its width is geometric.
  enum Style : uint32_t {
    kDash = 1,
    kDot = 2,
    kDashDot = 3,
    kDashDotDot = 4,
    kNull = 5,
    kInsideFrame = 6,
    kUserStyle = 7,
    kAlternate = 8,
    kLineMask = 0xF,
    kSquareEnds = 0x100,
    kFlatEnds = 0x200,
    kEndsMask = 0xF00,
    kBevelJoins = 0x1000,
    kMiterJoins = 0x2000,
    kJoinsMask = 0xF000,
    kGeometric = 0x10000
  };

  uint32_t style = 0;
  /// Logical units; less than a pixel counts as one.
  double width = 0;
  MetaBrush brush{MetaBrush::Kind::Solid, 0xFF000000u, 0, {}, false};
  /// Lengths of dashes and gaps for kUserStyle: logical units where the width is geometric, else pixels.
  QList<double> dashes;

  bool IsNull() const { return (style & kLineMask) == kNull || brush.kind == MetaBrush::Kind::Null; }
};

struct MetaFont {
  /// Logical units: above 0 of the cell, below 0 of the letters, 0 as is usual.
  double height = 0;
  /// Of an average letter; 0 as the height has it.
  double width = 0;
  /// Tenths of a degree, against the clock.
  int32_t escapement = 0;
  int32_t weight = 400;
  bool italic = false, underline = false, strike_out = false;
  uint32_t charset = 0;
  QString face;
};

struct MetaPalette {
  QList<QRgb> colors;
};

struct MetaRegion {
  QList<RecordBox> boxes;
};

/// A slot that is free, or taken by something that can't be read.
struct FreeSlot {};
struct UnknownObject {};

using MetaObject =
    std::variant<FreeSlot, UnknownObject, MetaPen, MetaBrush, MetaFont, MetaPalette, MetaRegion>;

/// The objects of a metafile, by their numbers from 0 to 65,535; what lies beyond is not kept.
class ObjectTable {
 public:
  /// Takes the first slot that is free again, else a new one.
  void Add(MetaObject object);
  void Put(uint32_t number, MetaObject object);
  void Delete(uint32_t number);
  /// A free slot where there is none of that number.
  const MetaObject& At(uint32_t number) const;
  /// Null where it is of another kind.
  template <class Kind>
  const Kind* Find(uint32_t number) const {
    return std::get_if<Kind>(&At(number));
  }

 private:
  std::vector<MetaObject> slots_;
  std::set<uint32_t> free_;
};

/// The brushes, pens and fonts that are always there; a free slot for other numbers.
MetaObject StockObject(uint32_t number);

/// What stands behind and within patterns.
struct GroundColors {
  QRgb text = 0xFF000000u, ground = 0xFFFFFFFFu;
  bool opaque = true;
};

QBrush BrushOf(const MetaBrush& brush, const GroundColors& colors);
/// `scale`: pixels in a logical unit.
QPen PenOf(const MetaPen& pen, const GroundColors& colors, double scale, double miter_limit);
/// The pen's width in pixels, at most what a sheet can show.
double PenWidth(const MetaPen& pen, double scale);

}  // namespace zelvane
