#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "surface/system/files/PictureFile.h"

namespace zelvane {

/// Reads png, mng, jpeg, bmp, xbm and gif pictures.
class PicFormat32 {
 public:
  /// The number of the picture read, 0 where that failed.
  int32_t ReadPicture(const std::string& path);
  /// Hands over the picture of that number, which is then forgotten.
  std::optional<LoadedPicture> TakePicture(int32_t number);

 private:
  std::map<int32_t, LoadedPicture> pictures_;
  int32_t last_number_ = 0;
};

}  // namespace zelvane
