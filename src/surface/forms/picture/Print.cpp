#include <QImage>
#include <QPainter>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/TextLines.h"
#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {
namespace {

/// Draws the layout with its corner at (x, y), within `part` of the canvas.
void Draw(const QTextLayout& layout, QPoint corner, const QRect& part, Canvas& canvas) {
  const Bitmap::Rows rows = canvas.WritableRows();
  QImage pixels(reinterpret_cast<uchar*>(rows[part.top()]), canvas.ScaleWidth(), part.height(),
                rows.stride * static_cast<qsizetype>(sizeof(Pixel)), QImage::Format_RGB32);
  QPainter painter(&pixels);
  painter.translate(0, -part.top());
  painter.setClipRect(part);
  painter.setPen(ToQt(canvas.ForeColor()));
  layout.draw(&painter, corner);
}

}  // namespace

void PictureSurface::Print(const std::string& text) {
  const LinePitch pitch = PitchOf(Font());
  const auto left = ToInt32(CurrentX()), top = ToInt32(CurrentY());
  if (left && top && !text.empty()) {
    QTextLayout layout(ToQt(text), ToQt(Font(), 1));
    layout.setTextOption(LineOption(Font(), 1));
    LayOutLine(layout, pitch, 1);
    const QPoint corner(*left, *top);
    const QRect part = InkOf(layout).translated(corner) & QRect(0, 0, ScaleWidth(), ScaleHeight());
    if (!part.isEmpty()) {
      Draw(layout, corner, part, *this);
      AddDamage({part.left(), part.top(), part.right() + 1, part.bottom() + 1});
    }
  }
  SetCurrentX(0);
  SetCurrentY(CurrentY() + static_cast<Single>(pitch.advance));
}

}  // namespace zelvane
