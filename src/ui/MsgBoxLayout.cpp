#include "ui/MsgBoxLayout.h"

#include <algorithm>
#include <cmath>

#include "surface/forms/controls/Label.h"
#include "surface/raster/Numbers.h"
#include "surface/raster/Units.h"
#include "ui/MsgBox.h"

namespace zelvane {
namespace {

constexpr double kTextMargin = 150, kTextRightMargin = 255, kRightAlignedMargin = 270;
constexpr double kTitleMargins = 300, kControlBoxWidth = 270, kControlBoxFromRight = 360;
constexpr double kRowMargins = 570, kButtonGap = kMsgButtonStep - kMsgButtonWidth;
constexpr double kTextToButtons = 180, kIconToButtons = 150;
constexpr double kBelowButtons = 570;  // the heading's height is in it, as buttons are measured in the body
constexpr double kScreenMargin = 240;

double Rounded(double twips) {
  return RoundHalfEven(twips);
}

double TextLeft(bool has_icon) {
  return has_icon ? kMsgIconSize + kMsgIconLeft + kTextMargin : kTextMargin;
}

double TitleRow(const MsgBoxParts& parts) {
  return Rounded(parts.title_width + kTitleMargins) + (parts.has_control_box ? kControlBoxWidth : 0);
}

double ButtonRow(const MsgBoxParts& parts) {
  return parts.button_count * kMsgButtonWidth + kRowMargins + (parts.button_count - 1) * kButtonGap;
}

double WidthOf(const MsgBoxParts& parts) {
  const double text = Rounded(parts.text_width + TextLeft(parts.has_icon) + kTextRightMargin);
  return std::min(std::max({text, TitleRow(parts), ButtonRow(parts)}), parts.screen_width - kScreenMargin);
}

/// Centred text stands on a whole pixel, two further left than the middle.
double CentredLeft(double width, double text_width) {
  const double left = Rounded((Rounded(width) - text_width) / 2);
  return left - std::fmod(left, kTwipsPerPixel) - 2 * kTwipsPerPixel;
}

double TextPlace(const MsgBoxParts& parts, double width) {
  const double least = TextLeft(parts.has_icon);
  if (parts.text_alignment == kAlignRight) {
    const double left = Rounded(width - parts.text_width - kRightAlignedMargin);
    return std::max(left, least);
  }
  return parts.text_alignment == kAlignCentre ? std::max(CentredLeft(width, parts.text_width), least) : least;
}

void StackUp(const MsgBoxParts& parts, MsgBoxPlaces& places) {
  if (parts.has_icon && kMsgIconSize > parts.text_height) {
    places.text_top = (kMsgIconSize - parts.text_height) / 2 + kMsgIconTop - kTwipsPerPixel;
    places.button_top = kMsgIconSize + kMsgIconTop + kIconToButtons;
  } else {
    places.text_top = kTextMargin;
    places.button_top = Rounded(parts.text_height + places.text_top + kTextToButtons);
  }
  places.height = kMsgButtonHeight + places.button_top + kBelowButtons;
}

}  // namespace

MsgBoxStyle SplitStyle(int buttons) {
  MsgBoxStyle style;
  style.default_button = std::max(0, buttons / kSecondIsDefault);
  style.button_set = buttons - style.default_button * kSecondIsDefault;
  style.icon_index = style.button_set / kStopIcon - 1;
  if (style.button_set >= kStopIcon) style.button_set -= (style.icon_index + 1) * kStopIcon;
  return style;
}

const std::vector<MsgBoxButton>& ButtonsOfSet(int button_set) {
  static constexpr MsgBoxButton kOk{"&OK", kAnswerOk}, kCancel{"Cancel", kAnswerCancel},
      kAbort{"&Abort", kAnswerAbort}, kRetry{"&Retry", kAnswerRetry}, kIgnore{"&Ignore", kAnswerIgnore},
      kYes{"&Yes", kAnswerYes}, kNo{"&No", kAnswerNo};
  static const std::vector<MsgBoxButton> sets[] = {
      {kOk}, {kOk, kCancel}, {kAbort, kRetry, kIgnore}, {kYes, kNo, kCancel}, {kYes, kNo}, {kRetry, kCancel},
      {}};
  return sets[button_set >= kOkOnly && button_set <= kRetryCancel ? button_set : kRetryCancel + 1];
}

MsgBoxPlaces LayOut(const MsgBoxParts& parts) {
  MsgBoxPlaces places;
  places.width = WidthOf(parts);
  places.text_left = TextPlace(parts, places.width);
  StackUp(parts, places);
  places.first_button_left = (places.width - (ButtonRow(parts) - kRowMargins)) / 2;
  places.control_box_left = places.width - kControlBoxFromRight;
  return places;
}

double WidestText(double screen_width, bool has_icon) {
  return screen_width - kScreenMargin - TextLeft(has_icon) - kTextRightMargin;
}

double HighestText(double screen_height) {
  return screen_height - kScreenMargin - kTextMargin - kTextToButtons - kMsgButtonHeight - kBelowButtons;
}

double WidestTitle(double screen_width, bool has_control_box) {
  return screen_width - kScreenMargin - kTitleMargins - (has_control_box ? kControlBoxWidth : 0);
}

}  // namespace zelvane
