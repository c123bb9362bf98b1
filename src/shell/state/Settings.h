#pragma once

#include <optional>
#include <string>

#include "surface/raster/Numbers.h"

namespace zelvane {

/// The preferences, each read with a default. All are texts in the store that the program shares with its
/// sibling.
std::string ReadSetting(const std::string& key, const std::string& fallback);
void WriteSetting(const std::string& key, const std::string& value);

/// The number that a setting is; no value where its text is anything else, or beyond what a `Single` holds.
std::optional<double> ReadNumber(const std::string& key, double fallback);

/// File dialogs start in this folder from now on; a name that differs in case alone changes nothing.
void KeepZelvaneFolder(const std::string& folder);

/// A number in its plain text form: no exponent, no trailing zeros.
std::string PlainText(double number);

}  // namespace zelvane
