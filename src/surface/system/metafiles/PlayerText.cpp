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

Line LayOut(const QFont& font, const QString& text) {
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
  Line line = LayOut(font, run.text);
  double told = 0;
  for (const double advance : run.advances) told += advance * unit;
  if (told > 0 && line.length > 0) {
    line.path = QTransform::fromScale(told / line.length, 1).map(line.path);
    line.length = told;
  }
  return line;
}

void AddBar(QPainterPath& path, double length, double middle, double thickness) {
  path.addRect(0, middle - thickness / 2, length, thickness);
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

void Player::Text(const TextRun& told) {
  constexpr double kWorkOfCharacter = 5000;
  constexpr double kUsualHeight = 16;  // pixels of the letters, where none is told
  if (told.options & TextRun::kGlyphs) return;
  TextRun run = told;
  const MetaFont& wanted = state_.font;
  if (wanted.charset == kSymbolCharset && wanted.face.compare(u"Symbol", Qt::CaseInsensitive) == 0)
    run.text = FromSymbolFont(run.text);
  Charge(kWorkOfCharacter * static_cast<double>(run.text.size()));
  const Face& face = FaceOf(wanted);

  // From the pixels of the outlines' font to those of the sheet, before anything is turned.
  const QSizeF page = state_.mapping.PageScale();
  double down = wanted.height < 0 ? -wanted.height * page.height() / kOutlineSize
                                  : wanted.height * page.height() / (face.ascent + face.descent);
  if (wanted.height == 0) down = kUsualHeight / kOutlineSize;
  const double across = wanted.width == 0 ? down : std::abs(wanted.width) * page.width() / face.average_width;
  if (!(across > 0 && down > 0)) return;

  const double unit = page.width() / across;
  Line line = run.text.isRightToLeft()    ? LayOutJoined(face.font, run, unit)
              : IsPositioned(run, state_) ? LayOutSpaced(face.font, run, state_, unit)
                                          : LayOut(face.font, run.text);
  const QFontMetricsF metrics(face.font);
  if (wanted.underline) AddBar(line.path, line.length, metrics.underlinePos(), metrics.lineWidth());
  if (wanted.strike_out) AddBar(line.path, line.length, -metrics.strikeOutPos(), metrics.lineWidth());
  line.path.setFillRule(Qt::WindingFill);

  const uint32_t align = state_.text_align;
  const double left = (align & kCentre) == kCentre ? -line.length / 2 : align & kRight ? -line.length : 0;
  const double baseline = (align & kBaseline) == kBaseline ? 0
                          : align & kBottom                ? -face.descent
                                                           : face.ascent;
  const QPointF reference = align & kUpdatesPosition ? state_.position : run.reference;
  QTransform place = QTransform::fromTranslate(left, baseline) * QTransform::fromScale(across, down);
  place *= QTransform().rotate(-wanted.escapement / 10.0);
  place *= state_.mapping.WorldOnSheet();
  const QPointF at = state_.mapping.Map(reference);
  place *= QTransform::fromTranslate(at.x(), at.y());

  PaintText(run, place.map(line.path), [&] {
    QPainterPath cell;
    cell.addRect(0, -face.ascent, line.length, face.ascent + face.descent);
    return place.map(cell);
  });
  if (align & kUpdatesPosition) {
    const QPointF way = place.map(QPointF(line.length, 0)) - place.map(QPointF());
    const QPointF logical = Linear(state_.mapping.ToSheet()).inverted().map(way);
    if ((align & kCentre) != kCentre) state_.position += align & kRight ? -logical : logical;
  }
}

void Player::PaintText(const TextRun& run, const QPainterPath& letters,
                       const std::function<QPainterPath()>& cell) {
  if (building_) return Add(letters, false);
  const Clip before = state_.clip;
  QPainterPath box;
  box.addRect(run.box);
  if (run.options & TextRun::kOpaque) FillPlain(OnSheet(box), state_.colors.ground);
  if (run.options & TextRun::kClipped) IntersectClip(run.box);
  if (state_.colors.opaque) FillPlain(cell(), state_.colors.ground);
  FillPlain(letters, state_.colors.text);
  if (run.options & TextRun::kClipped) {
    state_.clip = before;
    clip_changed_ = true;
  }
}

void Player::FillPlain(const QPainterPath& area, QRgb color) {
  UseSheet();
  sheet_.Fill(OnPixels(area), QColor::fromRgba(color));
}

}  // namespace zelvane
