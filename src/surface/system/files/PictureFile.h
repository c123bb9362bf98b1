#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "surface/codecs/PictureDecoder.h"
#include "surface/system/files/Errand.h"
#include "surface/system/files/Files.h"

namespace zelvane {

/// What was read or written last: which state of the file, and the kind of file that would hold all of it.
struct FileState {
  FileStamp stamp;
  WrittenKind whole_as = WrittenKind::None;
};

/// A picture and the file that it came from.
struct LoadedPicture : Bitmap {
  FileState file;
};

/// Reads a picture file; the bytes decide which reader, not the name. Transparent parts lie on white, an EXIF
/// rotation is carried out, the first frame of an animation and the largest picture of an icon is taken, a
/// metafile is played (`Metafile.h`). No value where the file is missing, damaged or cut short, of no known
/// kind, larger than 32,767 a side, or than memory holds. Throws `ReadingGivenUp`.
std::optional<LoadedPicture> LoadPicture(const std::string& path);

/// The reading of a picture, on a thread of its own, which shares nothing but how far it is and whether it's
/// still wanted.
class PictureReading {
 public:
  /// Begins it.
  explicit PictureReading(const std::string& path);

  bool IsDone() const { return !errand_.IsUnderWay(); }
  /// 0 to 1.
  float Progress() const;
  /// Nothing of it is left, nor does anybody wait for the thread to notice.
  void GiveUp();

 private:
  friend std::optional<LoadedPicture> LoadPicture(const std::string& path);
  struct Work;
  std::optional<LoadedPicture> Finish();
  std::shared_ptr<Work> work_;
  Errand errand_;
};

/// After so many milliseconds a reading is a long one.
inline int PatienceMs = 500;
/// There is a long one. The handler runs events until it's done or given up; without one the program stands
/// still meanwhile.
inline std::function<void(PictureReading& reading)> OnLongReading;

/// The person has given up the reading, which is no fault of the file.
struct ReadingGivenUp : std::runtime_error {
  ReadingGivenUp() : runtime_error("the reading was given up") {}
};

/// Begins to read a picture on a thread of its own, for the next `LoadPicture` of that path to take. Where it
/// can't be read, that call finds out for itself.
void ReadAhead(const std::string& path);

/// Writes a Windows bitmap file of 24 bits a pixel, whatever its name says, as `WriteFileSafely` does.
WriteResult SavePicture(const Bitmap& picture, const WriteTarget& target);

/// The same for other kinds of file (`surface/codecs/PictureEncoder.h` tells what the arguments mean).
WriteResult SaveGif(const Bitmap& picture, const WriteTarget& target);
WriteResult SaveJpeg(const Bitmap& picture, double compression, const WriteTarget& target);
WriteResult SaveTiff(const Bitmap& picture, const WriteTarget& target);
WriteResult SaveIcon(const Bitmap& image, const Bitmap& mask, const WriteTarget& target);

}  // namespace zelvane
