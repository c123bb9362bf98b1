#pragma once

#include <cstdint>
#include <vector>

namespace zelvane {

/// The sum that `MsgBox` is called with, taken apart.
struct MsgBoxStyle {
  int button_set = 0;
  int icon_index = -1;     ///< counts from the stop icon at 0; -1 for none
  int default_button = 0;  ///< counts from 0, may lie beyond the buttons
};
MsgBoxStyle SplitStyle(int buttons);

/// A button of a message box by its caption and the code that it gives.
struct MsgBoxButton {
  const char* caption;
  int16_t code;
};
/// From left to right; none for a set that there isn't.
const std::vector<MsgBoxButton>& ButtonsOfSet(int button_set);

// All lengths are in twips.

inline constexpr double kMsgHeadingHeight = 330;
inline constexpr double kMsgButtonWidth = 1095, kMsgButtonHeight = 375, kMsgButtonStep = 1200;
inline constexpr double kMsgIconLeft = 120, kMsgIconTop = 180, kMsgIconSize = 480;

/// What a message box is laid out for.
struct MsgBoxParts {
  double title_width = 0;
  double text_width = 0, text_height = 0;
  int button_count = 0;
  bool has_icon = false, has_control_box = false;
  int16_t text_alignment = 0;  ///< `Alignments`
  double screen_width = 0;
};

/// Where its parts stand: text and buttons in the body, which begins below the heading.
struct MsgBoxPlaces {
  double width = 0, height = 0;
  double text_left = 0, text_top = 0;
  double first_button_left = 0, button_top = 0;
  double control_box_left = 0;
};
MsgBoxPlaces LayOut(const MsgBoxParts& parts);

/// The room for text in a box as large as the screen lets it be.
double WidestText(double screen_width, bool has_icon);
double HighestText(double screen_height);
double WidestTitle(double screen_width, bool has_control_box);

/// Where along one axis a box stands that is centred on something.
inline double Centred(double start, double extent, double box) {
  return start + (extent - box) / 2;
}

}  // namespace zelvane
