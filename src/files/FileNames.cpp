#include "files/FileNames.h"

#include <algorithm>
#include <filesystem>

#include "surface/system/files/Files.h"

namespace zelvane {

namespace {

/// Beside an exact fit, so that the text doesn't touch the border. Twips.
constexpr double kBesideText = 60;
constexpr const char* kMarker = "/ .../";

/// A folder and no file, whatever is on the disk.
bool NamesFolder(const std::string& text) {
  const std::string name = NameOf(text);
  if (name.size() == text.size()) return text == ".." || text == "~";
  return name.empty() || name == "." || name == "..";
}

/// "/a/./b/../c/" becomes "/a/c".
std::string Tidied(const std::string& folder) {
  return FolderOf(std::filesystem::path(folder + "/.").lexically_normal().string());
}

/// The text cut at each place that may be, from the longest piece on: the first that `fits`, else the
/// shortest. Each is narrower than the one before, so that halving finds it.
template <class Fits>
size_t FirstFitting(const std::vector<size_t>& places, Fits&& fits) {
  const auto found = std::partition_point(places.begin(), places.end(), [&](size_t at) { return !fits(at); });
  return found == places.end() ? places.back() : *found;
}

/// Where a character begins, from the end on; 0 last.
std::vector<size_t> CharacterStarts(const std::string& text) {
  constexpr unsigned char kKind = 0xC0, kContinues = 0x80;
  std::vector<size_t> starts;
  for (size_t at = text.size(); at-- > 1;) {
    if ((static_cast<unsigned char>(text[at]) & kKind) != kContinues) starts.push_back(at);
  }
  starts.push_back(0);
  return starts;
}

}  // namespace

std::vector<FileFilter> ParseFilters(const std::string& FilterText) {
  std::vector<FileFilter> filters;
  for (size_t at = 0, bar; (bar = FilterText.find('|', at)) != std::string::npos;) {
    const size_t end = std::min(FilterText.find('|', bar + 1), FilterText.size());
    filters.push_back({FilterText.substr(at, bar - at), FilterText.substr(bar + 1, end - bar - 1)});
    at = std::min(end + 1, FilterText.size());
  }
  return filters;
}

int FittingFilter(const std::vector<FileFilter>& filters, const std::string& ChosenFile) {
  const std::string extension = ExtensionOf(ChosenFile);
  if (extension.empty()) return 0;
  for (size_t i = filters.size(); i-- > 1;) {
    if (filters[i].patterns.find(extension) != std::string::npos) return static_cast<int>(i);
  }
  return 0;
}

std::string ApplyExtension(const std::string& text, const std::string& patterns) {
  if (NamesFolder(text)) return text;
  std::string extension = patterns.substr(0, patterns.find(';'));
  if (!extension.empty()) extension.erase(0, 1);
  const std::string name = NameOf(text);
  return text.substr(0, text.size() - name.size()) + name.substr(0, name.find('.')) + extension;
}

bool CanConfirm(const std::string& text) {
  if (text.find('\0') != std::string::npos) return false;
  const std::string name = NameOf(text);
  return NamesFolder(text) || (!name.empty() && name.front() != '.');
}

std::string ConfirmedName(const std::string& name, const std::string& patterns, bool saving) {
  if (name.starts_with('.')) return {};
  const bool wants_ending = saving && name.find('.') == std::string::npos;
  const std::string whole = wants_ending ? ApplyExtension(name, patterns) : name;
  return whole.starts_with('.') ? std::string() : whole;
}

TypedPath ResolveTyped(const std::string& folder, const std::string& text) {
  std::string path = JoinPath(folder, text);
  if (text.starts_with('/')) path = text;
  if (text == "~" || text.starts_with("~/")) path = JoinPath(HomeFolder(), text.substr(1));
  if (NamesFolder(text)) return {Tidied(path), ""};
  return {Tidied(FolderOf(path)), NameOf(path)};
}

std::string ShortenPath(const std::string& text, double maxWidth, int keep,
                        const std::function<double(const std::string&)>& TextWidth) {
  const auto fits = [&](const std::string& part) { return TextWidth(part) + kBesideText <= maxWidth; };
  if (fits(text)) return text;
  const size_t root = static_cast<size_t>(std::max(keep, 0));
  const auto behind = [&](size_t at) { return text.substr(0, root) + kMarker + text.substr(at + 1); };
  std::vector<size_t> separators;
  for (size_t at = text.find('/', root + 1); at != std::string::npos; at = text.find('/', at + 1))
    separators.push_back(at);
  const std::string shorter =
      separators.empty() ? text
                         : behind(FirstFitting(separators, [&](size_t at) { return fits(behind(at)); }));
  if (fits(shorter)) return shorter;
  const auto cut_fits = [&](size_t at) { return fits(shorter.substr(0, at)); };
  return shorter.substr(0, FirstFitting(CharacterStarts(shorter), cut_fits));
}

std::string FormatCount(int count) {
  std::string digits = std::to_string(count);
  for (ptrdiff_t at = std::ssize(digits) - 3; at > 0; at -= 3) digits.insert(static_cast<size_t>(at), 1, ',');
  return digits + ' ';
}

}  // namespace zelvane
