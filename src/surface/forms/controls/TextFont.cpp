#include "surface/forms/controls/TextFont.h"

#include <QFontDatabase>
#include <algorithm>

#include "surface/system/text/QtText.h"

namespace zelvane {
namespace {

constexpr double kLargestSize = 1000;  // points

bool IsThere(const std::string& name) {
  return name.empty() || QFontDatabase::hasFamily(ToQt(name));
}

}  // namespace

void FontProperties::SetFont(const TextFont& font, int multiple) {
  TextFont taken = font;
  if (taken.Name != font_.Name && !IsThere(taken.Name)) taken.Name = font_.Name;
  if (!(taken.Size > 0 && taken.Size <= kLargestSize)) taken.Size = font_.Size;
  multiple = std::max(1, multiple);
  if (taken == font_ && multiple == multiple_) return;
  font_ = taken;
  multiple_ = multiple;
  FontChanged();
}

void FontProperties::SetFontName(const std::string& name) {
  SetFont({name, font_.Size, font_.Bold, font_.Italic}, multiple_);
}

void FontProperties::SetFontSize(double points) {
  SetFont({font_.Name, points / multiple_, font_.Bold, font_.Italic}, multiple_);
}

void FontProperties::SetFontBold(bool bold) {
  SetFont({font_.Name, font_.Size, bold, font_.Italic}, multiple_);
}

void FontProperties::SetFontItalic(bool italic) {
  SetFont({font_.Name, font_.Size, font_.Bold, italic}, multiple_);
}

}  // namespace zelvane
