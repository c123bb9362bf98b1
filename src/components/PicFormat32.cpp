#include "components/PicFormat32.h"

#include <utility>

namespace zelvane {

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

}  // namespace zelvane
