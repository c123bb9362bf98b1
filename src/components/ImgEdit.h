#pragma once

#include <optional>
#include <string>

#include "surface/system/files/PictureFile.h"

namespace zelvane {

/// Reads tiff pictures and their relatives, writes tiff ones.
class ImgEdit {
 public:
  void SetImage(const std::string& path) { path_ = path; }
  /// Reads the image that was set; false where that failed.
  bool Display();
  /// The picture shown, handed over.
  std::optional<LoadedPicture> TakePicture();

  /// Writes the picture as `SavePicture` does, but as a tiff file.
  static WriteResult SaveAs(const Bitmap& picture, const WriteTarget& target);

 private:
  std::string path_;
  std::optional<LoadedPicture> picture_;
};

}  // namespace zelvane
