#include "ui/NumberMask.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace zelvane {
namespace {

constexpr int kSignificantDigits = 15;
constexpr size_t kNowhere = std::string::npos;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool TakesDigit(char c) {
  return c == '0' || c == '#';
}

std::string Trimmed(const std::string& text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == kNowhere) return "";
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// An only "." at the very end parts nothing; alone it stays.
void CutClosingPoint(std::string& text) {
  if (text.size() > 1 && text.find('.') == text.size() - 1) text.pop_back();
}

void CopyDecimals(std::string& mask, const std::string& number) {
  const size_t to = mask.find('.'), from = number.find('.');
  if (to == kNowhere || from == kNowhere) return;
  for (size_t i = 1; to + i < mask.size() && from + i < number.size(); ++i) mask[to + i] = number[from + i];
}

/// How many characters stand before the ".".
size_t WholePart(const std::string& text) {
  return std::min(text.find('.'), text.size());
}

/// From the right, so that a number with too many digits loses its first ones.
void CopyWholePart(std::string& mask, const std::string& number) {
  size_t digits = WholePart(number);
  const size_t sign = !number.empty() && number[0] == '-' ? 1 : 0;
  for (size_t place = WholePart(mask); place > 0 && digits > sign; --place)
    if (TakesDigit(mask[place - 1])) mask[place - 1] = number[--digits];
}

/// Leading zeros of the number that came under a "#" give their place back.
void DropLeadingZeros(std::string& shown, const std::string& mask) {
  for (size_t i = 0; i < shown.size(); ++i) {
    if (shown[i] == '.' || (shown[i] >= '1' && shown[i] <= '9')) return;
    if (shown[i] == '0' && mask[i] == '#') shown[i] = '#';
  }
}

/// Blanks the places without a digit, and the separators that have no digit before them.
void BlankEmptyPlaces(std::string& shown) {
  constexpr std::string_view kBeforeDigits = "-( ";
  for (size_t i = 0; i < shown.size(); ++i) {
    const bool is_stray = shown[i] == ',' && (i == 0 || kBeforeDigits.find(shown[i - 1]) != kNowhere);
    if (is_stray || shown[i] == '#') shown[i] = ' ';
  }
}

/// The sign touches the number: blanks behind it go, and with them what stands before it.
void CloseUpSign(std::string& shown) {
  size_t sign = shown.find('(');
  if (sign == kNowhere) sign = shown.find('-');
  if (sign == kNowhere || sign + 1 >= shown.size() || shown[sign + 1] != ' ') return;
  const size_t number = std::min(shown.find_first_not_of(' ', sign + 1), shown.size());
  shown = shown[sign] + shown.substr(number);
}

}  // namespace

double NumberOf(const std::string& text) {
  const size_t start = text.find_first_not_of(' ');
  // Names that spell a number to the library, as "inf", spell none here.
  if (start == kNowhere || !(IsDigit(text[start]) || text[start] == '-' || text[start] == '.')) return 0;
  const size_t end = text.find_first_not_of("0123456789.", start + 1);
  const std::string_view digits = std::string_view(text).substr(start, end == kNowhere ? end : end - start);
  double number = 0;
  const auto read =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed);
  if (read.ec != std::errc::result_out_of_range) return number;
  constexpr double kLargest = std::numeric_limits<double>::max();
  if (digits.find_first_of("123456789") > digits.find('.')) return 0;
  return text[start] == '-' ? -kLargest : kLargest;
}

std::string NumberText(double number) {
  char text[400];
  auto written = std::to_chars(text, std::end(text), number, std::chars_format::general, kSignificantDigits);
  if (std::find(text, written.ptr, 'e') != written.ptr)
    written = std::to_chars(text, std::end(text), number, std::chars_format::fixed);
  return written.ec == std::errc{} ? std::string(text, written.ptr) : "0";
}

PlainNumber ReduceToNumber(const std::string& text, bool positive_only) {
  const std::string trimmed = Trimmed(text);
  std::string plain;
  for (size_t i = 0; i < trimmed.size(); ++i) {
    const char c = trimmed[i];
    if (i == 0 && (c == '-' || c == '(')) plain = "-";
    if (IsDigit(c) || (c == '.' && plain.find('.') == kNowhere)) plain += c;
  }
  const bool is_negative = NumberOf(plain) < 0;
  if (is_negative && positive_only) plain.erase(0, 1);
  return {plain, !is_negative || positive_only};
}

int16_t LongestInput(const std::string& format) {
  const size_t parting = format.find(';');
  size_t longest = std::min(parting, format.size());
  if (parting != kNowhere) {
    const size_t negative = format.size() - parting - 1;
    // A closing bracket stands where the positive mask has nothing.
    if (longest < negative) longest = negative - (format.back() == ')' ? 1 : 0);
  }
  return static_cast<int16_t>(std::min<size_t>(longest, std::numeric_limits<int16_t>::max()));
}

std::string MaskOf(const std::string& format, bool is_positive, bool positive_only) {
  const size_t parting = format.find(';');
  std::string mask = format;
  if (parting != kNowhere) mask = is_positive ? format.substr(0, parting) : format.substr(parting + 1);
  const bool needs_sign = !positive_only && !is_positive && format.find_first_of("(-") == kNowhere;
  return needs_sign ? "-" + mask : mask;
}

std::string ShowThroughMask(const std::string& mask, const std::string& number) {
  std::string shown = mask, plain = number;
  CutClosingPoint(shown);
  CutClosingPoint(plain);
  CopyDecimals(shown, plain);
  CopyWholePart(shown, plain);
  DropLeadingZeros(shown, mask);
  BlankEmptyPlaces(shown);
  shown = Trimmed(shown);
  CloseUpSign(shown);
  return shown;
}

int32_t ColorNumberOf(std::string text) {
  if (text.ends_with('&')) text.pop_back();
  const bool is_hex = text.starts_with("&H") || text.starts_with("&h");
  const char* const start = text.data() + (is_hex ? 2 : 0);
  const char* const end = text.data() + text.size();
  uint32_t hex = 0;
  int32_t decimal = 0;
  if (!is_hex) return std::from_chars(start, end, decimal), decimal;
  return std::from_chars(start, end, hex, 16), static_cast<int32_t>(hex);
}

}  // namespace zelvane
