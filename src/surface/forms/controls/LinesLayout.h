#pragma once

#include <QAbstractTextDocumentLayout>

#include "surface/forms/controls/TextLines.h"

namespace zelvane {

/// Sets the text of a box for typing line by line as `TextLines.h` tells, for the toolkit's editor.
class LinesLayout : public QAbstractTextDocumentLayout {
 public:
  using QAbstractTextDocumentLayout::QAbstractTextDocumentLayout;

  /// Together with the document's font, which is to be `font` at the multiple.
  void SetPitch(const TextFont& font, int multiple);

  /// Lines begin that far from the left edge.
  void SetLeft(int units) { left_ = units; }

  void draw(QPainter* painter, const PaintContext& context) override;
  int hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const override;
  int pageCount() const override { return 1; }
  /// None, so that the editor never scrolls: its box is as large as the text, or about to be.
  QSizeF documentSize() const override { return {}; }
  QRectF frameBoundingRect(QTextFrame* frame) const override;
  QRectF blockBoundingRect(const QTextBlock& block) const override;

 protected:
  void documentChanged(int from, int removed, int added) override;

 private:
  int Advance() const { return pitch_.advance * multiple_; }
  LinePitch pitch_;
  QTextOption option_;
  int multiple_ = 1, left_ = 0;
};

}  // namespace zelvane
