#include "components/ImgEdit.h"

#include <utility>

#include "surface/system/files/PictureFile.h"

namespace zelvane {

bool ImgEdit::Display() {
  picture_ = LoadPicture(path_);
  return picture_.has_value();
}

std::optional<Bitmap> ImgEdit::TakePicture() {
  return std::exchange(picture_, std::nullopt);
}

}  // namespace zelvane
