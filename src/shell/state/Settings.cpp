#include "shell/state/Settings.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "shell/state/State.h"
#include "surface/system/files/Files.h"
#include "surface/system/files/SettingsStore.h"

namespace zelvane {
namespace {

constexpr char kApplication[] = "Korvath";
constexpr char kSection[] = "Settings";

}  // namespace

std::string ReadSetting(const std::string& key, const std::string& fallback) {
  return GetSetting(kApplication, kSection, key, fallback);
}

void WriteSetting(const std::string& key, const std::string& value) {
  SaveSetting(kApplication, kSection, key, value);
}

std::optional<double> ReadNumber(const std::string& key, double fallback) {
  const std::string text = ReadSetting(key, PlainText(fallback));
  const char* const text_end = text.data() + text.size();
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text_end, number);
  const bool fits = std::abs(number) <= std::numeric_limits<Single>::max();  // which "nan" doesn't
  if (error != std::errc{} || end != text_end || !fits) return std::nullopt;
  return number;
}

void KeepZelvaneFolder(const std::string& folder) {
  if (ToLower(folder) == ToLower(State.ZelvaneFolder)) return;
  State.ZelvaneFolder = folder;
  WriteSetting("ZelvaneFolder", folder);
}

std::string PlainText(double number) {
  char text[32];
  const auto [end, error] = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed);
  return error == std::errc{} ? std::string(text, end) : std::string("0");
}

}  // namespace zelvane
