#include "components/ImgEdit.h"

#include <utility>

namespace zelvane {

bool ImgEdit::Display() {
  picture_ = LoadPicture(path_);
  return picture_.has_value();
}

std::optional<LoadedPicture> ImgEdit::TakePicture() {
  return std::exchange(picture_, std::nullopt);
}

WriteResult ImgEdit::SaveAs(const Bitmap& picture, const WriteTarget& target) {
  return SaveTiff(picture, target);
}

}  // namespace zelvane
