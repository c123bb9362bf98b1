#pragma once

#include <optional>
#include <string>
#include <vector>

#include "surface/raster/Color.h"

/// How swatches stand in the data file: each is a row of the table, whose one field holds the colour's number
/// and, behind a blank, the name.
namespace zelvane {

inline constexpr char kSwatchTable[] = "ColorSwatches", kSwatchField[] = "ColorNumber";

struct NamedColor {
  Color color;
  std::string name;
  friend bool operator==(const NamedColor&, const NamedColor&) = default;
};

std::string SwatchRow(const NamedColor& swatch);
/// The name comes without the blanks at its ends, the number within 32 bits. No value where the text has no
/// blank or doesn't begin with a number.
std::optional<NamedColor> ReadSwatchRow(const std::string& row);
/// Rows for those of `swatches` that the standing rows don't hold, a swatch of which there are several as
/// often as it's missing.
std::vector<std::string> MissingRows(const std::vector<std::string>& standing,
                                     const std::vector<NamedColor>& swatches);

}  // namespace zelvane
