#include "surface/forms/controls/TextRuler.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "surface/forms/controls/TextLines.h"
#include "surface/system/text/QtText.h"

namespace zelvane {
namespace {

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
    end = text.find('\n', start);
    lines.push_back(text.substr(start, end == std::string::npos ? end : end - start));
  }
  return lines;
}

}  // namespace

TextRuler::TextRuler(Control& parent, const std::string& name, const std::string& caption)
    : Control(&parent, name, nullptr) {
  SetCaption(caption);
}

void TextRuler::SetCaption(const std::string& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  const std::vector<std::string> before = std::exchange(lines_, LinesOf(caption));
  const auto same = static_cast<ptrdiff_t>(std::min(before.size(), lines_.size()));
  const auto first =
      std::mismatch(before.begin(), before.begin() + same, lines_.begin()).first - before.begin();
  const auto last = std::mismatch(before.rbegin(), before.rbegin() + (same - first), lines_.rbegin()).first -
                    before.rbegin();
  sizes_.erase(sizes_.begin() + first, sizes_.end() - last);
  sizes_.insert(sizes_.begin() + first, lines_.size() - sizes_.size(), {});
  Measure(static_cast<size_t>(first), lines_.size() - static_cast<size_t>(last));
}

void TextRuler::Measure(size_t first, size_t end) {
  constexpr double kCaret = 1;
  const QFont font = ToQt(Font(), Multiple());
  const QTextOption option = LineOption(Font(), Multiple());
  const LinePitch pitch = PitchOf(Font());
  for (size_t i = first; i < end; ++i) {
    QTextLayout layout(ToQt(lines_[i]), font);
    layout.setTextOption(option);
    const QTextLine line = LayOutLine(layout, pitch, Multiple());
    sizes_[i] = {line.isValid() ? line.naturalTextWidth() : 0, std::max(0, -InkOf(layout).left())};
  }
  LineSize most;
  for (const LineSize& size : sizes_)
    most = {std::max(most.width, size.width), std::max(most.overhang, size.overhang)};
  overhang_ = most.overhang;
  SetWidth(static_cast<Single>(std::ceil(most.width) + kCaret));
  SetHeight(static_cast<Single>(static_cast<double>(lines_.size()) * pitch.advance * Multiple()));
}

}  // namespace zelvane
