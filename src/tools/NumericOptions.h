#pragma once

#include <array>

#include "shell/state/State.h"

/// The numeric settings of the tools. Their values live in `OptionTable`, which the tools read afresh at
/// every event; what never changes about them is here.
namespace zelvane {

/// Places in `OptionTable`, and in the boxes and slider buttons of the option bars.
enum NumericOption : int16_t {
  kAirbrushPressure = 0,
  kBrightenPressure = 1,
  kAirbrushSize = 2,
  kBrightenSize = 3,
  kPenWidth = 4,
  kRectangleBorder = 5,
  kCircleBorder = 6,
  kTextSize = 7,
  kBlurSize = 8,
  kEraserWidth = 9,
};
inline constexpr int kOptionCount = 10;

struct OptionFacts {
  Tool tool;            ///< on whose bar the box stands
  const char* caption;  ///< before the box
  const char* format;   ///< of the box
  ToolOption start;     ///< limits, and the value that each run starts with
};

inline constexpr std::array<OptionFacts, kOptionCount> kOptions{{
    {kAirbrushTool, "Pressure:", "##0 %", {0, 100, 50}},
    {kBrightenTool, "Pressure:", "##0 %", {0, 100, 50}},
    {kAirbrushTool, "Size:", "##0 pixel(s)", {1, 100, 10}},
    {kBrightenTool, "Size:", "##0 pixel(s)", {1, 100, 10}},
    {kPenTool, "Brush:", "##0 pixel(s)", {1, 100, 1}},
    {kRectangleTool, "Bordersize:", "##0 pixel(s)", {1, 100, 1}},
    {kCircleTool, "Bordersize:", "##0 pixel(s)", {1, 100, 1}},
    {kTextTool, "Size:", "##0 pixel(s)", {1, 100, 10}},
    {kBlurTool, "Size:", "##0 pixel(s)", {1, 100, 10}},
    {kEraserTool, "Eraser width:", "##0 pixel(s)", {1, 100, 5}},
}};

inline const OptionFacts& FactsOf(NumericOption option) {
  return kOptions.at(static_cast<size_t>(option));
}

/// The limits and the value of the moment.
inline ToolOption& OptionOf(NumericOption option) {
  return State.OptionTable.at(static_cast<size_t>(option));
}

}  // namespace zelvane
