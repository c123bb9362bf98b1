#include "effects/frame/HistogramView.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "effects/pixels/Pixels.h"

namespace zelvane {

HistogramView::HistogramView(QWidget* parent) : QWidget(parent) {
  setAccessibleName("Histogram");
  setAccessibleDescription("How often each brightness occurs, from dark to light");
  setToolTip("How often each brightness occurs, from dark to light: before (grey) and after (line)");
  setMinimumHeight(80);
}

/// Shares of the picture.
HistogramView::Counts HistogramView::CountsOf(const Bitmap& picture) {
  Counts counts{};
  const double share = 1.0 / (static_cast<double>(picture.Width()) * picture.Height());
  for (int y = 0; y < picture.Height(); ++y) {
    const Pixel* const row = picture.Row(y);
    for (int x = 0; x < picture.Width(); ++x) counts[static_cast<size_t>(Brightness(row[x]))] += share;
  }
  return counts;
}

void HistogramView::SetBefore(const Bitmap& picture) {
  before_ = CountsOf(picture);
  update();
}

void HistogramView::SetAfter(const Bitmap& result) {
  after_ = CountsOf(result);
  update();
}

/// A single brightness that fills the picture mustn't make everything else flat.
void HistogramView::paintEvent(QPaintEvent*) {
  const QRect inside = rect().adjusted(1, 1, -1, -1);
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Mid));
  painter.fillRect(inside, palette().color(QPalette::Base));
  painter.setClipRect(inside);
  painter.translate(inside.topLeft());
  Counts sorted = before_;
  std::ranges::sort(sorted);
  const double most = std::max(sorted[250] * 1.1, 1e-6);
  const auto outline = [&](const Counts& counts) {
    QPainterPath path(QPointF(0, inside.height()));
    for (size_t i = 0; i < counts.size(); ++i) {
      const double top = inside.height() * (1 - std::min(counts[i] / most, 1.0));
      path.lineTo(inside.width() * static_cast<double>(i) / 256, top);
      path.lineTo(inside.width() * static_cast<double>(i + 1) / 256, top);
    }
    path.lineTo(inside.width(), inside.height());
    return path;
  };
  QColor body = palette().color(QPalette::Text);
  body.setAlphaF(0.4F);
  painter.fillPath(outline(before_), body);
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawPath(outline(after_));
}

}  // namespace zelvane
