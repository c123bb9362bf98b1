#include <gtest/gtest.h>

#include "codecs/PictureSamples.h"
#include "components/ImgEdit.h"
#include "components/PicFormat32.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane::test {
namespace {

TEST(Components, HandEachPictureOverOnce) {
  const Folder folder;
  const Bitmap red(3, 2, kRed), blue(2, 2, kBlue);
  const std::string red_file = folder.Path("red.tif"), blue_file = folder.Path("blue.gif"),
                    missing = folder.Path("missing.bmp");
  ASSERT_TRUE(SavePicture(red, red_file).Done() && SavePicture(blue, blue_file).Done());
  PicFormat32 reader;
  EXPECT_EQ(reader.ReadPicture(missing), 0);
  const int32_t first = reader.ReadPicture(red_file), second = reader.ReadPicture(blue_file);
  EXPECT_TRUE(reader.TakePicture(first) == red);
  EXPECT_FALSE(reader.TakePicture(first));
  EXPECT_TRUE(reader.TakePicture(second) == blue);
  ImgEdit edit;
  EXPECT_FALSE(edit.Display());
  edit.SetImage(red_file);
  EXPECT_TRUE(edit.Display());
  EXPECT_TRUE(edit.TakePicture() == red);
  EXPECT_FALSE(edit.TakePicture());
  edit.Display();
  edit.SetImage(missing);
  EXPECT_FALSE(edit.Display());
  EXPECT_FALSE(edit.TakePicture());
}

}  // namespace
}  // namespace zelvane::test
