#include "surface/forms/controls/Label.h"

#include <QFontInfo>
#include <QLabel>
#include <algorithm>
#include <cmath>

#include "surface/forms/controls/Conversions.h"

namespace zelvane {
namespace {

constexpr int kBorderMargin = 2;  // logical pixels between border and text
constexpr double kPixelsPerPoint = 96.0 / 72;

QLabel* Text(QWidget* widget) {
  return static_cast<QLabel*>(widget);
}

}  // namespace

Label::Label(Control& parent, const std::string& name, const std::string& caption)
    : Control(&parent, name, new QLabel(parent.Widget())) {
  Text(widget_)->setTextFormat(Qt::PlainText);
  Text(widget_)->setMargin(0);
  Text(widget_)->setIndent(0);
  SetAlignment(kAlignLeft);
  SetCaption(caption);
}

void Label::SetCaption(const std::string& caption) {
  caption_ = caption;
  if (!widget_) return;
  ShowText();
  FitToText();
}

void Label::SetShortens(bool shortens) {
  shortens_ = shortens;
  FitToText();
}

void Label::SetWidth(Single width) {
  Control::SetWidth(width);
  if (widget_ && shortens_) ShowText();
}

void Label::ShowText() {
  const QString whole = ToQt(caption_);
  if (!shortens_) return Text(widget_)->setText(whole);
  const int room = Text(widget_)->contentsRect().width() - 2 * Text(widget_)->margin();
  const QString shown = widget_->fontMetrics().elidedText(whole, Qt::ElideRight, room);
  Text(widget_)->setText(shown);
  Text(widget_)->setToolTip(shown == whole ? QString() : whole.trimmed());
  SetAccessibleName(caption_);
}

void Label::SetAlignment(int16_t alignment) {
  alignment_ = alignment;
  if (!widget_) return;
  const Qt::Alignment across = alignment == kAlignRight    ? Qt::AlignRight
                               : alignment == kAlignCentre ? Qt::AlignHCenter
                                                           : Qt::AlignLeft;
  Text(widget_)->setAlignment(across | Qt::AlignVCenter);
}

void Label::SetBackColor(Color color) {
  back_color_ = color;
  if (!widget_) return;
  Tint(*widget_, QPalette::Window, color);
  widget_->setAutoFillBackground(true);
}

void Label::SetForeColor(Color color) {
  if (widget_) Tint(*widget_, QPalette::WindowText, color);
}

void Label::SetBorder(bool border) {
  if (!widget_) return;
  Text(widget_)->setFrameStyle(border ? QFrame::Panel | QFrame::Sunken : QFrame::NoFrame);
  Text(widget_)->setLineWidth(1);
  Text(widget_)->setMargin(border ? kBorderMargin : 0);
  FitToText();
}

void Label::SetAutoSize(bool auto_size) {
  auto_size_ = auto_size;
  FitToText();
}

bool Label::FontBold() const {
  return widget_ && widget_->font().bold();
}

void Label::SetFontBold(bool bold) {
  if (!widget_) return;
  QFont font = widget_->font();
  font.setBold(bold);
  widget_->setFont(font);
  FitToText();
}

void Label::SetFontItalic(bool italic) {
  if (!widget_) return;
  QFont font = widget_->font();
  font.setItalic(italic);
  widget_->setFont(font);
  FitToText();
}

Single Label::FontSize() const {
  return widget_ ? static_cast<Single>(QFontInfo(widget_->font()).pixelSize() / kPixelsPerPoint) : 0;
}

void Label::SetFontSize(Single points) {
  if (!widget_) return;
  QFont font = widget_->font();
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(points * kPixelsPerPoint))));
  widget_->setFont(font);
  FitToText();
}

Single Label::TextWidth(const std::string& text) const {
  if (!widget_) return 0;
  return static_cast<Single>(widget_->fontMetrics().horizontalAdvance(ToQt(text)) * UnitsPerPixel());
}

void Label::FitToText() {
  if (!widget_) return;
  if (shortens_) ShowText();
  if (!auto_size_) return;
  SetWidth(NaturalWidth());
  SetHeight(NaturalHeight());
}

}  // namespace zelvane
