#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "surface/system/files/PictureFile.h"

namespace zelvane {

/// Reads png, mng, jpeg, bmp, xbm and gif pictures, writes gif and jpeg ones.
class PicFormat32 {
 public:
  /// The number of the picture read, 0 where that failed.
  int32_t ReadPicture(const std::string& path);
  /// Hands over the picture of that number, which is then forgotten.
  std::optional<LoadedPicture> TakePicture(int32_t number);

  /// Both write as `SavePicture` does. `compression` is a number of 20 (the best picture) to 130 (the
  /// smallest file); one beyond is clamped, any other text counts as 65.
  static WriteResult ConvertToGif(const Bitmap& picture, const WriteTarget& target);
  static WriteResult ConvertToJpeg(const Bitmap& picture, const WriteTarget& target,
                                   const std::string& compression);

 private:
  std::map<int32_t, LoadedPicture> pictures_;
  int32_t last_number_ = 0;
};

}  // namespace zelvane
