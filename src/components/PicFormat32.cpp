#include "components/PicFormat32.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace zelvane {
namespace {

double CompressionIn(const std::string& text) {
  constexpr double kUsual = 65;
  const char* const text_end = text.data() + text.size();
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text_end, number);
  return error == std::errc{} && end == text_end && std::isfinite(number) ? number : kUsual;
}

}  // namespace

int32_t PicFormat32::ReadPicture(const std::string& path) {
  auto picture = LoadPicture(path);
  if (!picture) return 0;
  ++last_number_;
  pictures_.emplace(last_number_, std::move(*picture));
  return last_number_;
}

std::optional<LoadedPicture> PicFormat32::TakePicture(int32_t number) {
  const auto found = pictures_.extract(number);
  if (found.empty()) return std::nullopt;
  return std::move(found.mapped());
}

WriteResult PicFormat32::ConvertToGif(const Bitmap& picture, const WriteTarget& target) {
  return SaveGif(picture, target);
}

WriteResult PicFormat32::ConvertToJpeg(const Bitmap& picture, const WriteTarget& target,
                                       const std::string& compression) {
  return SaveJpeg(picture, CompressionIn(compression), target);
}

}  // namespace zelvane
