#pragma once

#include <QFont>
#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "surface/codecs/PictureDecoder.h"
#include "surface/system/metafiles/Mapping.h"
#include "surface/system/metafiles/Objects.h"
#include "surface/system/metafiles/Sheet.h"

namespace zelvane {

using Points = QList<QPointF>;

/// What a metafile saves and restores. Lengths are logical units.
struct DeviceState {
  explicit DeviceState(const Mapping& begin) : mapping(begin) {}

  Mapping mapping;
  MetaPen pen;
  MetaBrush brush;
  MetaFont font;
  MetaPalette palette;
  GroundColors colors;
  /// 1 to 16: how pens and brushes join with what is there; 13 covers it.
  uint32_t pen_mode = 13;
  Qt::FillRule fill_rule = Qt::OddEvenFill;
  bool soft_stretch = false;
  uint32_t text_align = 0;
  /// Added behind each character, and behind each blank.
  double character_extra = 0, blank_extra = 0;
  double miter_limit = 10;
  bool clockwise = false;
  QPointF brush_origin;
  QPointF position;
  /// What records select, and what was made to last.
  Clip clip, lasting_clip;
};

struct TextRun {
  enum Option : uint32_t { kOpaque = 2, kClipped = 4, kGlyphs = 0x10 };

  QPointF reference;
  QString text;
  /// From each 16-bit unit of the text to the next; none: as the font has it.
  QList<double> advances;
  uint32_t options = 0;
  QRectF box;
};

/// A device-independent bitmap within a record.
struct DibParts {
  ByteView header;
  /// None: they follow the header and its palette.
  std::optional<ByteView> bits;
  /// The palette is one of numbers of the selected palette.
  bool palette_numbers = false;
  bool with_opacity = false;
  /// How many rows there are bits for; 0 for all.
  int64_t rows = 0;

  bool IsTopDown() const { return header.Little32(0) > 12 && header.Little32(8) >> 31 != 0; }
  /// In rows from the top, for a place that counts them as they stand in the bitmap.
  QRectF FromTop(const QRectF& source, int height) const;
};

/// One bitmap onto the sheet: source in its pixels, target in logical units; sides below 0 mirror.
struct Blit {
  QRectF target;
  QRectF source;
  uint32_t operation = 0x00CC0020;
  double opacity = 1;
};

/// Plays what the records of both kinds of metafiles have in common. Coordinates are logical units.
class Player {
 public:
  /// `images`: how large a bitmap within a record may be.
  Player(Sheet& sheet, const Mapping& mapping, SizeLimit images);

  DeviceState& State() { return state_; }
  ObjectTable& Objects() { return objects_; }
  void Charge(double work) { sheet_.Charge(work); }

  void Save();
  /// Below 0 counts back from the last one saved, above 0 from the first.
  void Restore(int32_t which);
  void Select(const MetaObject& object);
  /// The object of that number; with the top bit set one that is always there.
  MetaObject ObjectAt(uint32_t number) const;
  /// A colour as records have it: red in the lowest byte, or a number of the palette.
  QRgb ColorOf(uint32_t value) const;

  void IntersectClip(const QRectF& box);
  void ExcludeClip(const QRectF& box);
  void OffsetClip(QPointF by);
  /// The ways to join regions.
  enum Join : uint32_t { kAnd = 1, kOr = 2, kXor = 3, kWithout = 4, kInstead = 5 };
  /// `area` is on the sheet.
  void JoinClip(const QPainterPath& area, uint32_t way);
  void ResetClip();
  /// The region alone, its boxes in logical units: it keeps together with what is drawn.
  void ClipTo(const MetaRegion& region);
  void MakeClipLast();
  /// On the sheet; `device`: its boxes are pixels of the device instead of logical units.
  QPainterPath AreaOf(const MetaRegion& region, bool device = false) const;

  void MoveTo(QPointF to);
  void PolylineTo(const Points& points);
  void Polyline(const Points& points) { PolyPolyline({points}); }
  void PolyPolyline(const QList<Points>& lines);
  void PolyPolygon(const QList<Points>& polygons);
  void Polygon(const Points& points) { PolyPolygon({points}); }
  void Bezier(const Points& points);
  void BezierTo(const Points& points);
  /// Kinds: 2 line, 4 curve, 6 move; plus 1 closes the figure.
  void PolyDraw(const Points& points, ByteView kinds);
  void Rectangle(const QRectF& box);
  void RoundBox(const QRectF& box, QSizeF corner);
  void Ellipse(const QRectF& box);
  enum class ArcKind { Arc, ArcTo, Chord, Pie };
  void Arc(ArcKind kind, const QRectF& box, QPointF start, QPointF end);
  /// Degrees against the clock.
  void AngleArc(QPointF centre, double radius, double start, double sweep);
  void SetPixel(QPointF at, QRgb color);
  void FillArea(const QPainterPath& area, const MetaBrush& brush);
  void FrameArea(const MetaRegion& region, const MetaBrush& brush, QSizeF thickness);
  void InvertArea(const QPainterPath& area);

  void BeginPath();
  void EndPath() { building_ = false; }
  void AbortPath();
  void CloseFigure();
  void PaintPath(bool fill, bool stroke);
  void ClipToPath(uint32_t way);

  void Text(const TextRun& run);

  /// No value where it's of no known kind, damaged or too large.
  std::optional<QImage> ReadImage(const DibParts& dib);
  /// A bitmap as an old device had it, its bits at `bits_at`.
  std::optional<QImage> ReadDeviceImage(ByteView bitmap, uint64_t bits_at);
  void PaintImage(const QImage& image, const Blit& blit);
  /// Onto the parallelogram of the first three corners, in reading order.
  void PaintImage(const QImage& image, const QRectF& source, const std::array<QPointF, 3>& corners);
  /// Paints what waits for its second half; call before a record of another kind than the last one.
  void Settle();
  /// Without a source.
  void PaintPattern(const QRectF& target, uint32_t operation);
  MetaBrush PatternOf(const QImage& image, bool two_colors);

  struct Vertex {
    QPointF at;
    QColor color;
  };
  void FadeBox(const Vertex& first, const Vertex& last, bool down);
  void FadeTriangle(const std::array<Vertex, 3>& corners);

 private:
  struct Face {
    QFont font;
    /// Pixels of the font.
    double ascent = 0, descent = 0, average_width = 0;
  };
  using ShapeInBox = std::function<QPainterPath(const QRectF& box, const QTransform& to_box)>;

  /// Brings clip and brushes' origin to the sheet, before something is painted.
  void UseSheet();
  void PlaceImage(const QImage& image, const Blit& blit);
  bool IsStencil(const MetaBrush& brush) const;
  QPainterPath OnSheet(QPainterPath path) const;
  void PaintBox(const QRectF& box, bool fills, const ShapeInBox& shape);
  void Paint(const QPainterPath& inside, const QPainterPath& outline, bool fills, bool strokes = true);
  void Add(const QPainterPath& path, bool continues);
  QRectF OutlineOf(const QRectF& box) const;
  RasterCode PenCode() const;
  const Face& FaceOf(const MetaFont& font);
  QSizeF LetterScale(const MetaFont& font, const Face& face) const;
  QTransform TextPlace(double length, const Face& face, QSizeF scale, QPointF reference) const;
  void PaintText(const TextRun& run, const QPainterPath& letters, const QPainterPath& cell);
  void AdvanceBy(QPointF way);
  /// Whatever the pen mode says.
  void FillPlain(const QPainterPath& area, QRgb color);

  Sheet& sheet_;
  SizeLimit images_;
  DeviceState state_;
  std::vector<DeviceState> saved_;
  ObjectTable objects_;
  bool clip_changed_ = false;
  /// The last area was filled by joining bits.
  bool joined_bits_ = false;
  /// How opaque the bitmap is that goes to the same place next.
  struct SoftMask {
    QImage image;
    Blit blit;
  };
  std::optional<SoftMask> mask_;
  /// On the sheet. While it's being built, shapes add to it instead of being painted.
  QPainterPath path_;
  bool building_ = false;
  bool figure_goes_on_ = false;
  std::map<std::tuple<QString, int32_t, bool>, Face> faces_;
};

}  // namespace zelvane
