#pragma once

#include <optional>
#include <string>

#include "surface/raster/Bitmap.h"

namespace zelvane {

/// Reads tiff pictures and their relatives.
class ImgEdit {
 public:
  void SetImage(const std::string& path) { path_ = path; }
  /// Reads the image that was set; false where that failed.
  bool Display();
  /// The picture shown, handed over.
  std::optional<Bitmap> TakePicture();

 private:
  std::string path_;
  std::optional<Bitmap> picture_;
};

}  // namespace zelvane
