#pragma once

#include <string>

namespace zelvane {

/// Text values by application, section and key, kept between runs in the user's configuration folder. Each
/// read and write goes through to the file, since another process may have written.
std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& fallback);
void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value);

}  // namespace zelvane
