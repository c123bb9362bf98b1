#include "surface/forms/picture/GroundLabel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <vector>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/raster/Contrast.h"

namespace zelvane {
namespace {

const QString kEllipsis(QChar(0x2026));

/// A word isn't cut as long as it stands off so far; the guidelines let large text have it.
constexpr double kWordContrast = 3;

/// From one line to the next, in whole pixels.
double Spacing(const QFont& font) {
  return std::ceil(QFontMetricsF(font).lineSpacing());
}

/// The lines of a text, none wider than `width` pixels.
QStringList Wrapped(QString text, const QFont& font, double width) {
  QStringList lines;
  QTextLayout layout(text.replace('\n', QChar::LineSeparator), font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    QString part = text.mid(line.textStart(), line.textLength());
    while (!part.isEmpty() && part.back().isSpace()) part.chop(1);
    lines.push_back(part);
  }
  layout.endLayout();
  return lines;
}

/// At most `most` lines; what goes is the middle.
QStringList Shortened(const QStringList& lines, qsizetype most) {
  if (lines.size() <= most) return lines;
  const qsizetype head = most / 2, tail = most - 1 - head;
  return lines.mid(0, head) + QStringList(kEllipsis) + lines.mid(lines.size() - tail);
}

}  // namespace

/// To assistive tools a label with the whole text.
class GroundLabel::Text : public QLabel {
 public:
  explicit Text(PictureSurface& surface) : QLabel(surface.Widget()), ground(surface) {
    setTextFormat(Qt::PlainText);
  }

  /// Lays the text out anew.
  QSize Fitted() {
    const QFontMetricsF metrics(font());
    const auto most = std::max<qsizetype>(1, static_cast<qsizetype>(room.height() / Spacing(font())));
    lines_ = most == 1 ? QStringList(metrics.elidedText(text().simplified(), Qt::ElideMiddle, room.width()))
                       : Shortened(Wrapped(text(), font(), room.width()), most);
    double widest = 0;
    for (const QString& line : lines_) widest = std::max(widest, metrics.horizontalAdvance(line));
    return {static_cast<int>(std::ceil(widest)), HeightOf(static_cast<int>(lines_.size()))};
  }

  int HeightOf(int lines) const { return lines * static_cast<int>(Spacing(font())); }

  PictureSurface& ground;
  QSizeF room{kFarthest, kFarthest};
  int16_t alignment = kAlignLeft;
  Color color = SystemColor::ButtonText;
  std::function<void()> on_follow;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QFontMetricsF metrics(font());
    for (qsizetype i = 0; i < lines_.size(); ++i) {
      const double width = metrics.horizontalAdvance(lines_[i]);
      const double left = alignment == kAlignRight    ? this->width() - width
                          : alignment == kAlignCentre ? (this->width() - width) / 2
                                                      : 0;
      PaintLine(painter, lines_[i],
                QRectF(left, static_cast<double>(i) * Spacing(font()), width, metrics.height()));
    }
    if (hasFocus()) PaintFocus(painter);
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool follows =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (!follows || !on_follow) return QLabel::keyPressEvent(event);
    on_follow();
  }

 private:
  /// What of the ground lies behind a part of the label.
  Rect Behind(const QRectF& part) const {
    const QRect pixels = part.toAlignedRect().translated(pos());
    return {pixels.left(), pixels.top(), pixels.right() + 1, pixels.bottom() + 1};
  }

  void PaintFocus(QPainter& painter) const {
    const Pixel ink = ReadableInk(ground.Image(), Behind(rect()), ToPixel(color));
    painter.setPen(QPen(QColor::fromRgb(ink), 1, Qt::DotLine));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }

  /// Part of a line that is painted in one ink.
  struct Piece {
    qsizetype start, length;
    Pixel ink;
  };

  QRectF CellOf(const QString& line, const QRectF& place, qsizetype start, qsizetype length) const {
    const QFontMetricsF metrics(font());
    const double left = metrics.horizontalAdvance(line.left(start));
    const double right = metrics.horizontalAdvance(line.left(start + length));
    return {place.left() + left, place.top(), right - left, place.height()};
  }

  /// One piece where an ink reads along it, else its words; the characters of a word that would be lost.
  void Cut(const QString& line, const QRectF& place, qsizetype start, qsizetype length, bool is_word,
           std::vector<Piece>& pieces) const {
    const Rect behind = Behind(CellOf(line, place, start, length));
    const Pixel ink = ReadableInk(ground.Image(), behind, ToPixel(color));
    const double least = is_word ? kWordContrast : kReadableContrast;
    if (length <= 1 || LowestContrast(ground.Image(), behind, ink) >= least) {
      const bool goes_on = !pieces.empty() && pieces.back().ink == ink;
      if (goes_on) pieces.back().length += length;
      if (!goes_on) pieces.push_back({start, length, ink});
      return;
    }
    for (qsizetype at = start, end = start + length; at < end;) {
      const qsizetype blank = line.indexOf(' ', at);
      const qsizetype next = is_word ? at + 1 : blank < 0 || blank >= end ? end : blank + 1;
      Cut(line, place, at, next - at, true, pieces);
      at = next;
    }
  }

  void PaintLine(QPainter& painter, const QString& line, const QRectF& place) const {
    std::vector<Piece> pieces;
    Cut(line, place, 0, line.size(), false, pieces);
    for (const Piece& piece : pieces) {
      painter.setPen(QColor::fromRgb(piece.ink));
      painter.drawText(
          QPointF(CellOf(line, place, piece.start, 0).left(), place.top() + QFontMetricsF(font()).ascent()),
          line.mid(piece.start, piece.length));
    }
  }

  QStringList lines_;
};

GroundLabel::GroundLabel(PictureSurface& ground, const std::string& name)
    : Control(&ground, name, new Text(ground)), text_(static_cast<Text*>(widget_)) {}

GroundLabel::~GroundLabel() = default;

void GroundLabel::SetCaption(const std::string& caption) {
  caption_ = caption;
  QString text = ToQt(caption);
  text.replace("\r\n", "\n").replace('\r', '\n').replace('\t', "    ");
  text_->setText(text);
  Fit();
}

void GroundLabel::SetAlignment(int16_t alignment) {
  text_->alignment = alignment;
  text_->update();
}

void GroundLabel::SetForeColor(Color color) {
  text_->color = color;
  text_->update();
}

void GroundLabel::SetFontBold(bool bold) {
  QFont font = text_->font();
  font.setBold(bold);
  text_->setFont(font);
  Fit();
}

void GroundLabel::SetLink() {
  QFont font = text_->font();
  font.setUnderline(true);
  text_->setFont(font);
  text_->setCursor(Qt::PointingHandCursor);
  text_->setFocusPolicy(Qt::TabFocus);
  text_->on_follow = [this] { FireEvent(OnClick); };
}

void GroundLabel::SetRoom(double width, double height) {
  text_->room = QSizeF(std::max(0.0, width / UnitsPerPixel()), std::max(0.0, height / UnitsPerPixel()));
  Fit();
}

double GroundLabel::HeightOf(int lines) const {
  return text_->HeightOf(lines) * UnitsPerPixel();
}

void GroundLabel::Fit() {
  const QSize size = text_->Fitted();
  SetWidth(static_cast<Single>(size.width() * UnitsPerPixel()));
  SetHeight(static_cast<Single>(size.height() * UnitsPerPixel()));
  text_->update();
}

}  // namespace zelvane
