#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "effects/pixels/Work.h"
#include "surface/raster/Bitmap.h"

namespace zelvane {

/// Something that a person sets before an effect is applied. Every kind has a number for its value: a slider
/// its own, a choice its index, a colour 0xRRGGBB.
struct Setting {
  enum class Kind : uint8_t { Slider, Length, Choice, Colour };

  Kind kind;
  std::string label;
  double least, most, start, step;
  std::string unit;
  std::vector<std::string> choices;

  /// A number of the unit, between both, ends included.
  static Setting Slider(std::string label, double least, double most, double start, std::string unit = "",
                        double step = 1) {
    return {Kind::Slider, std::move(label), least, most, start, step, std::move(unit), {}};
  }
  /// A slider in pixels of the picture; on a reduced copy it's reduced as well.
  static Setting Length(std::string label, double least, double most, double start, double step = 1) {
    return {Kind::Length, std::move(label), least, most, start, step, " px", {}};
  }
  /// One of several; the first at the start.
  static Setting Choice(std::string label, std::vector<std::string> choices) {
    const auto last = static_cast<double>(choices.size() - 1);
    return {Kind::Choice, std::move(label), 0, last, 0, 1, "", std::move(choices)};
  }
  static Setting Colour(std::string label, uint32_t start) {
    return {Kind::Colour, std::move(label), 0, 0xFFFFFF, static_cast<double>(start), 1, "", {}};
  }
};

/// The value of each setting, in their order, within their ranges.
using Values = std::vector<double>;

/// An effect in data, and the one function that is its own. That neither changes `picture` nor keeps anything
/// from call to call. Its result is thrown away where the work was stopped.
struct Effect {
  std::string title;
  std::vector<Setting> settings;
  Bitmap (*apply)(const Bitmap& picture, const Values& values, Work& work);
  bool shows_histogram = false;
  /// Whether the setting of that index counts beside the others' values; null where each always does.
  bool (*counts)(size_t setting, const Values& values) = nullptr;
};

}  // namespace zelvane
