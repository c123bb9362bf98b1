#include "colour/SwatchRows.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <map>

namespace zelvane {
namespace {

/// Whole decimal number, clamped.
std::optional<int32_t> ReadNumber(const std::string& digits) {
  using Limits = std::numeric_limits<int32_t>;
  const char* end = digits.data() + digits.size();
  int32_t number = 0;
  const auto [rest, error] = std::from_chars(digits.data(), end, number);
  if (rest != end || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) return digits[0] == '-' ? Limits::min() : Limits::max();
  return number;
}

std::string Trimmed(const std::string& text) {
  const size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? std::string()
                                    : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::string SwatchRow(const NamedColor& swatch) {
  return std::to_string(swatch.color.value) + ' ' + swatch.name;
}

std::optional<NamedColor> ReadSwatchRow(const std::string& row) {
  const size_t blank = row.find(' ');
  if (blank == std::string::npos) return std::nullopt;
  const auto number = ReadNumber(row.substr(0, blank));
  if (!number) return std::nullopt;
  return NamedColor{Color{*number}, Trimmed(row.substr(blank))};
}

std::vector<std::string> MissingRows(const std::vector<std::string>& standing,
                                     const std::vector<NamedColor>& swatches) {
  // As they would be read again, so that a row counts however it was written.
  const auto key = [](const NamedColor& swatch) { return SwatchRow(swatch); };
  std::map<std::string, int> there;
  for (const std::string& row : standing)
    if (const auto swatch = ReadSwatchRow(row)) ++there[key(*swatch)];
  std::vector<std::string> missing;
  for (const NamedColor& swatch : swatches) {
    std::string row = SwatchRow(swatch);
    if (const auto read = ReadSwatchRow(row); there[key(*read)]-- <= 0) missing.push_back(std::move(row));
  }
  return missing;
}

}  // namespace zelvane
