#include "surface/forms/controls/LinesLayout.h"

#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <algorithm>

#include "surface/raster/Contrast.h"

namespace zelvane {
namespace {

constexpr qreal kWide = 1 << 24;  // units; wider than any box

using PaintContext = QAbstractTextDocumentLayout::PaintContext;

/// What of the selections lies in the block.
QList<QTextLayout::FormatRange> SelectedIn(const QTextBlock& block, const PaintContext& context) {
  QList<QTextLayout::FormatRange> ranges;
  for (const auto& selection : context.selections) {
    const int start = selection.cursor.selectionStart() - block.position();
    const int end = selection.cursor.selectionEnd() - block.position();
    if (start < block.length() && end > 0 && end > start)
      ranges.append(
          {std::max(0, start), std::min(end, block.length()) - std::max(0, start), selection.format});
  }
  return ranges;
}

/// The caret's place in the block, -1 where it isn't in it. In the part that an input method is still
/// composing the toolkit counts from -2 down.
int CaretIn(const QTextBlock& block, const PaintContext& context) {
  if (block.contains(context.cursorPosition)) return context.cursorPosition - block.position();
  const QTextLayout& layout = *block.layout();
  if (context.cursorPosition >= -1 || layout.preeditAreaText().isEmpty()) return -1;
  return layout.preeditAreaPosition() - (context.cursorPosition + 2);
}

QRectF CaretAt(const QTextBlock& block, int caret) {
  const QTextLine line = block.layout()->lineAt(0);
  return {line.cursorToX(caret), line.y(), 1, line.height()};
}

/// A colour that is seen on any ground; the toolkit inverts the ground, and grey stays grey.
QColor InkOn(const PaintContext& context) {
  const auto pixel = [&](QPalette::ColorRole role) { return context.palette.color(role).rgb(); };
  return QColor::fromRgb(ReadableInk(pixel(QPalette::Base), pixel(QPalette::Text)));
}

}  // namespace

void LinesLayout::SetPitch(const TextFont& font, int multiple) {
  pitch_ = PitchOf(font);
  option_ = LineOption(font, multiple);
  multiple_ = multiple;
}

void LinesLayout::draw(QPainter* painter, const PaintContext& context) {
  painter->setPen(context.palette.color(QPalette::Text));
  const int first = std::max(0, static_cast<int>(context.clip.top()) / Advance() - 1);
  QTextBlock block = document()->findBlockByNumber(first);
  for (; block.isValid(); block = block.next()) {
    const QRectF place = blockBoundingRect(block);
    if (context.clip.isValid() && place.top() > context.clip.bottom() + Advance()) break;
    block.layout()->draw(painter, place.topLeft(), SelectedIn(block, context), context.clip);
    const int caret = CaretIn(block, context);
    if (caret >= 0) painter->fillRect(CaretAt(block, caret).translated(place.topLeft()), InkOn(context));
  }
}

int LinesLayout::hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const {
  const int last = document()->blockCount() - 1;
  const int number = std::clamp(static_cast<int>(point.y()) / Advance(), 0, last);
  const QTextBlock block = document()->findBlockByNumber(number);
  if (!block.isValid() || block.layout()->lineCount() == 0) return 0;
  const QTextLine line = block.layout()->lineAt(0);
  const QPointF inside = point - blockBoundingRect(block).topLeft();
  if (accuracy == Qt::ExactHit && !line.naturalTextRect().contains(inside)) return -1;
  return block.position() + line.xToCursor(inside.x());
}

QRectF LinesLayout::frameBoundingRect(QTextFrame*) const {
  return QRectF(0, 0, kWide, qreal(document()->blockCount()) * Advance());
}

QRectF LinesLayout::blockBoundingRect(const QTextBlock& block) const {
  if (!block.isValid()) return {};
  return QRectF(left_, qreal(block.blockNumber()) * Advance(), kWide, Advance());
}

void LinesLayout::documentChanged(int from, int, int added) {
  QTextBlock block = document()->findBlock(from);
  const int end = from + added;
  for (; block.isValid() && block.position() <= end; block = block.next()) {
    block.layout()->setTextOption(option_);
    LayOutLine(*block.layout(), pitch_, multiple_);
    block.setLineCount(1);
  }
  emit update();
}

}  // namespace zelvane
