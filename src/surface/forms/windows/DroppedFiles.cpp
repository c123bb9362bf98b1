#include "surface/forms/windows/DroppedFiles.h"

#include <unistd.h>

#include <charconv>
#include <string_view>

namespace zelvane {
namespace {

constexpr std::string_view kScheme = "file:";

/// "%41" is the byte "A". What isn't two digits stands for itself.
std::string Decoded(std::string_view text) {
  std::string bytes;
  for (size_t i = 0; i < text.size(); ++i) {
    unsigned char byte = 0;
    const char* const digits = text.data() + i + 1;
    const bool is_coded = text[i] == '%' && i + 2 < text.size() &&
                          std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
    bytes += is_coded ? static_cast<char>(byte) : text[i];
    if (is_coded) i += 2;
  }
  return bytes;
}

bool IsThisMachine(std::string_view host) {
  char name[256] = {};
  if (::gethostname(name, sizeof name - 1) != 0) name[0] = '\0';
  return host.empty() || host == "localhost" || host == name;
}

/// Empty where the address isn't that of a file on this machine.
std::string PathOf(std::string_view address) {
  if (!address.starts_with(kScheme)) return {};
  address.remove_prefix(kScheme.size());
  if (address.starts_with("//")) {
    address.remove_prefix(2);
    const size_t end = std::min(address.find('/'), address.size());
    if (!IsThisMachine(address.substr(0, end))) return {};
    address.remove_prefix(end);
  }
  const std::string path = Decoded(address);
  const bool is_path = path.starts_with('/') && path.find('\0') == std::string::npos;
  return is_path ? path : std::string();
}

}  // namespace

std::vector<std::string> DroppedFiles(const std::string& list) {
  std::vector<std::string> files;
  for (std::string_view rest = list; !rest.empty();) {
    const size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string_view address = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (address.empty() || address.front() == '#') continue;
    const std::string path = PathOf(address);
    files.push_back(path.empty() ? std::string(address) : path);
  }
  return files;
}

}  // namespace zelvane
