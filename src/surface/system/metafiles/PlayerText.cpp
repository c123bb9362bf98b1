#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "surface/system/metafiles/PixelEdges.h"
#include "surface/system/metafiles/Player.h"
#include "surface/system/metafiles/TextCodes.h"

namespace zelvane {

namespace {

enum Align : uint32_t { kUpdatesPosition = 1, kRight = 2, kCentre = 6, kBottom = 8, kBaseline = 24 };

/// Outlines are taken from a font of this size, in pixels, and brought to theirs; so nothing is rounded.
constexpr int kOutlineSize = 256;

QTransform Linear(const QTransform& map) {
  return {map.m11(), map.m12(), map.m21(), map.m22(), 0, 0};
}

bool IsPositioned(const TextRun& run, const DeviceState& state) {
  return !run.advances.isEmpty() || state.character_extra != 0 || state.blank_extra != 0;
}

/// A text laid out along its baseline, in pixels of the outlines' font.
struct Line {
  QPainterPath path;
  double length = 0;
};

Line LayOutPlain(const QFont& font, const QString& text) {
  Line line;
  line.path.addText(0, 0, font, text);
  line.length = QFontMetricsF(font).horizontalAdvance(text);
  return line;
}

/// Each character at its place. `unit`: pixels of the outlines' font in a logical unit.
Line LayOutSpaced(const QFont& font, const TextRun& run, const DeviceState& state, double unit) {
  const QFontMetricsF metrics(font);
  Line line;
  for (qsizetype i = 0; i < run.text.size();) {
    const qsizetype count = run.text[i].isHighSurrogate() && i + 1 < run.text.size() ? 2 : 1;
    const QString character = run.text.mid(i, count);
    line.path.addText(line.length, 0, font, character);
    if (run.advances.size() >= i + count) {
      for (qsizetype end = i + count; i < end; ++i) line.length += run.advances[i] * unit;
    } else {
      line.length += metrics.horizontalAdvance(character);
      line.length += (state.character_extra + (character == u" " ? state.blank_extra : 0)) * unit;
      i += count;
    }
  }
  return line;
}

/// A script whose letters change with their neighbours is laid out by the font, to the length that is told.
Line LayOutJoined(const QFont& font, const TextRun& run, double unit) {
  Line line = LayOutPlain(font, run.text);
  double told = 0;
  for (const double advance : run.advances) told += advance * unit;
  if (told > 0 && line.length > 0) {
    line.path = QTransform::fromScale(told / line.length, 1).map(line.path);
    line.length = told;
  }
  return line;
}

Line LayOut(const QFont& font, const TextRun& run, const DeviceState& state, double unit) {
  if (run.text.isRightToLeft()) return LayOutJoined(font, run, unit);
  return IsPositioned(run, state) ? LayOutSpaced(font, run, state, unit) : LayOutPlain(font, run.text);
}

/// Whether most of what the outlines enclose lies at the left hand of who follows them, with down below.
bool RunsLeftRound(const QPainterPath& path) {
  double area = 0;
  for (const QPolygonF& outline : path.toSubpathPolygons())
    for (qsizetype i = 0; i + 1 < outline.size(); ++i)
      area += outline[i].x() * outline[i + 1].y() - outline[i + 1].x() * outline[i].y();
  return area < 0;
}

/// Some fonts draw letters one way round, some the other, and where two ways overlap there is no ink: the bar
/// runs as the letters do.
void AddBar(QPainterPath& path, double length, double middle, double thickness) {
  QPainterPath bar;
  bar.addRect(0, middle - thickness / 2, length, thickness);
  path.addPath(RunsLeftRound(path) ? bar.toReversed() : bar);
}

}  // namespace

const Player::Face& Player::FaceOf(const MetaFont& font) {
  const auto key = std::make_tuple(font.face, font.weight, font.italic);
  if (const auto found = faces_.find(key); found != faces_.end()) return found->second;
  constexpr double kWorkOfFace = 1e6;
  Charge(kWorkOfFace);
  Face face;
  if (!font.face.isEmpty()) face.font.setFamily(font.face);
  face.font.setPixelSize(kOutlineSize);
  face.font.setWeight(static_cast<QFont::Weight>(font.weight > 0 ? std::min(font.weight, 1000) : 400));
  face.font.setItalic(font.italic);
  face.font.setKerning(false);
  face.font.setHintingPreference(QFont::PreferNoHinting);
  const QFontMetricsF metrics(face.font);
  face.ascent = metrics.ascent();
  face.descent = metrics.descent();
  face.average_width = std::max(1.0, metrics.averageCharWidth());
  return faces_.emplace(key, face).first->second;
}

/// From the pixels of the outlines' font to those of the sheet, before anything is turned.
QSizeF Player::LetterScale(const MetaFont& font, const Face& face) const {
  constexpr double kUsualHeight = 16;  // pixels of the letters, where none is told
  const QSizeF page = state_.mapping.PageScale();
  double down = kUsualHeight / kOutlineSize;
  if (font.height < 0) down = -font.height * page.height() / kOutlineSize;
  if (font.height > 0) down = font.height * page.height() / (face.ascent + face.descent);
  const double across = font.width == 0 ? down : std::abs(font.width) * page.width() / face.average_width;
  return {across, down};
}

/// Where a line of that length lies on the sheet; its own beginning is the left end of its baseline.
QTransform Player::TextPlace(double length, const Face& face, QSizeF scale, QPointF reference) const {
  const uint32_t align = state_.text_align;
  const double left = (align & kCentre) == kCentre ? -length / 2 : align & kRight ? -length : 0;
  const double baseline = (align & kBaseline) == kBaseline ? 0
                          : align & kBottom                ? -face.descent
                                                           : face.ascent;
  QTransform place = QTransform::fromTranslate(left, baseline);
  place *= QTransform::fromScale(scale.width(), scale.height());
  place *= QTransform().rotate(-state_.font.escapement / 10.0);
  place *= state_.mapping.WorldOnSheet();
  const QPointF at = state_.mapping.Map(reference);
  return place * QTransform::fromTranslate(at.x(), at.y());
}

void Player::Text(const TextRun& told) {
  constexpr double kWorkOfCharacter = 5000;
  if (told.options & TextRun::kGlyphs) return;
  TextRun run = told;
  const MetaFont& font = state_.font;
  if (font.charset == kSymbolCharset && font.face.compare(u"Symbol", Qt::CaseInsensitive) == 0)
    run.text = FromSymbolFont(run.text);
  Charge(kWorkOfCharacter * static_cast<double>(run.text.size()));
  const Face& face = FaceOf(font);
  const QSizeF scale = LetterScale(font, face);
  if (!(scale.width() > 0 && scale.height() > 0)) return;

  Line line = LayOut(face.font, run, state_, state_.mapping.PageScale().width() / scale.width());
  const QFontMetricsF metrics(face.font);
  if (font.underline) AddBar(line.path, line.length, metrics.underlinePos(), metrics.lineWidth());
  if (font.strike_out) AddBar(line.path, line.length, -metrics.strikeOutPos(), metrics.lineWidth());
  line.path.setFillRule(Qt::WindingFill);

  const bool goes_on = state_.text_align & kUpdatesPosition;
  const QTransform place = TextPlace(line.length, face, scale, goes_on ? state_.position : run.reference);
  QPainterPath cell;
  cell.addRect(0, -face.ascent, line.length, face.ascent + face.descent);
  PaintText(run, place.map(line.path), place.map(cell));
  if (goes_on) AdvanceBy(place.map(QPointF(line.length, 0)) - place.map(QPointF()));
}

/// The current position goes to the end of a text that was so long on the sheet.
void Player::AdvanceBy(QPointF way) {
  if ((state_.text_align & kCentre) == kCentre) return;
  const QPointF logical = Linear(state_.mapping.ToSheet()).inverted().map(way);
  state_.position += state_.text_align & kRight ? -logical : logical;
}

void Player::PaintText(const TextRun& run, const QPainterPath& letters, const QPainterPath& cell) {
  if (building_) return Add(letters, false);
  const Clip before = state_.clip;
  QPainterPath box;
  box.addRect(run.box);
  if (run.options & TextRun::kOpaque) FillPlain(OnPixels(OnSheet(box)), state_.colors.ground);
  if (run.options & TextRun::kClipped) IntersectClip(run.box);
  if (state_.colors.opaque) FillPlain(OnPixels(cell), state_.colors.ground);
  FillPlain(letters, state_.colors.text);
  if (run.options & TextRun::kClipped) {
    state_.clip = before;
    clip_changed_ = true;
  }
}

void Player::FillPlain(const QPainterPath& area, QRgb color) {
  UseSheet();
  sheet_.Fill(area, QColor::fromRgba(color));
}

}  // namespace zelvane
