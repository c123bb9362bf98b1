#include "surface/forms/controls/TextRuler.h"

#include <algorithm>
#include <cmath>

#include "surface/forms/controls/TextLines.h"
#include "surface/system/text/QtText.h"

namespace zelvane {

TextRuler::TextRuler(Control& parent, const std::string& name, const std::string& caption)
    : Control(&parent, name, nullptr) {
  SetCaption(caption);
}

void TextRuler::SetCaption(const std::string& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  Measure();
}

void TextRuler::Measure() {
  constexpr double kCaret = 1;
  const QFont font = ToQt(Font(), Multiple());
  const QTextOption option = LineOption(Font(), Multiple());
  const LinePitch pitch = PitchOf(Font());
  const QStringList lines = ToQt(caption_).split('\n');
  double widest = 0;
  for (const QString& text : lines) {
    QTextLayout layout(text, font);
    layout.setTextOption(option);
    const QTextLine line = LayOutLine(layout, pitch, Multiple());
    if (line.isValid()) widest = std::max(widest, line.naturalTextWidth());
  }
  SetWidth(static_cast<Single>(std::ceil(widest) + kCaret));
  SetHeight(static_cast<Single>(lines.size() * pitch.advance * Multiple()));
}

}  // namespace zelvane
