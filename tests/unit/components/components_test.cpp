#include <gtest/gtest.h>

#include "codecs/PictureSamples.h"
#include "components/ImgEdit.h"
#include "components/PicFormat32.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane::test {
namespace {

TEST(PicFormat32, HandsEachPictureOverOnce) {
  const Folder folder;
  const Bitmap red(3, 2, 0xFFFF0000u), blue(2, 2, 0xFF0000FFu);
  ASSERT_TRUE(SavePicture(red, folder.Path("red.bmp")).Done());
  ASSERT_TRUE(SavePicture(blue, folder.Path("blue.gif")).Done());
  PicFormat32 reader;
  EXPECT_EQ(reader.ReadPicture(folder.Path("missing.bmp")), 0);
  const int32_t first = reader.ReadPicture(folder.Path("red.bmp"));
  const int32_t second = reader.ReadPicture(folder.Path("blue.gif"));
  EXPECT_NE(first, second);
  EXPECT_TRUE(reader.TakePicture(first) == red);
  EXPECT_FALSE(reader.TakePicture(first));
  EXPECT_TRUE(reader.TakePicture(second) == blue);
}

TEST(ImgEdit, ShowsTheImageThatWasSet) {
  const Folder folder;
  const Bitmap red(3, 2, 0xFFFF0000u);
  ASSERT_TRUE(SavePicture(red, folder.Path("red.tif")).Done());
  ImgEdit edit;
  EXPECT_FALSE(edit.Display());
  edit.SetImage(folder.Path("red.tif"));
  EXPECT_FALSE(edit.TakePicture());
  EXPECT_TRUE(edit.Display());
  EXPECT_TRUE(edit.TakePicture() == red);
  EXPECT_FALSE(edit.TakePicture());
  edit.Display();
  edit.SetImage(folder.Path("missing.tif"));
  EXPECT_FALSE(edit.Display());
  EXPECT_FALSE(edit.TakePicture());
}

}  // namespace
}  // namespace zelvane::test
