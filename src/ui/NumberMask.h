#pragma once

#include <cstdint>
#include <string>

namespace zelvane {

/// The number that a text spells, read up to the first character that can't continue a number; 0 where it
/// spells none. "1,234.50" spells 1.
double NumberOf(const std::string& text);

/// A number as plain text: at most 15 significant digits, never an exponent.
std::string NumberText(double number);

/// A text reduced to a number: digits, one ".", and a leading "-" for a leading "-" or "(".
struct PlainNumber {
  std::string text;
  bool is_positive = true;  ///< 0 and up
};
/// `positive_only` cuts the sign of a negative number.
PlainNumber ReduceToNumber(const std::string& text, bool positive_only);

/// The longest input that a format of one or two masks allows, in characters.
int16_t LongestInput(const std::string& format);

/// The mask of `format` for a number of that sign. Two masks are parted by ";", the second is for negative
/// numbers. A format that has no sign of its own gets a "-" for them, unless there are none.
std::string MaskOf(const std::string& format, bool is_positive, bool positive_only);

/// A plain number shown through a mask: "0" and "#" take digits, a "#" without one goes, "," stays between
/// digits, all else stands as it is. Digits left of the "." that find no place are lost.
std::string ShowThroughMask(const std::string& mask, const std::string& number);

/// The value of a colour written as "&Hbbggrr&" or as a decimal number; 0 for anything else.
int32_t ColorNumberOf(std::string text);

}  // namespace zelvane
