#include "surface/system/files/PictureFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "surface/codecs/PictureDecoder.h"
#include "surface/codecs/PictureEncoder.h"
#include "surface/raster/Memory.h"
#include "surface/system/files/SafeFile.h"
#include "surface/system/metafiles/Metafile.h"

namespace zelvane {

namespace {

bool MayBePicture(ByteView start) {
  return LooksLikePicture(start) || LooksLikeMetafile(start);
}

/// The whole of a regular file in memory: mapping it instead would end the program when somebody cuts the
/// file short while it's read.
class FileBytes {
 public:
  FileBytes(const std::string& path, ReadingWatch& watch) {
    // A pipe without a writer would block an ordinary open.
    const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) return;
    struct stat found = {};
    if (::fstat(file, &found) == 0) stamp_ = StampOf(found);
    if (S_ISREG(found.st_mode) && found.st_size > 0) {
      Read(file, static_cast<size_t>(found.st_size), watch);
    }
    ::close(file);
  }
  ~FileBytes() { std::free(memory_); }
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;

  ByteView View() const { return {memory_, read_}; }
  const FileStamp& Stamp() const { return stamp_; }

 private:
  void Read(int file, size_t size, ReadingWatch& watch) {
    std::array<unsigned char, kPictureStart> start{};
    const ssize_t begun = ::pread(file, start.data(), start.size(), 0);
    if (begun <= 0 || !MayBePicture({start.data(), static_cast<size_t>(begun)})) return;
    if (static_cast<int64_t>(size) > AvailableMemory() / 2) return;
    // In whole huge pages, where the system has them: fewer faults than there are small pages.
    constexpr size_t kHugePage = size_t{2} << 20;
    const size_t room = size < kHugePage ? size : (size + kHugePage - 1) / kHugePage * kHugePage;
    memory_ = static_cast<unsigned char*>(size < kHugePage ? std::malloc(room)
                                                           : std::aligned_alloc(kHugePage, room));
    if (!memory_) return;
    if (size >= kHugePage) ::madvise(memory_, room, MADV_HUGEPAGE);
    constexpr size_t kPiece = size_t{8} << 20;
    while (read_ < size && watch.GoOn(0, 1)) {
      const ssize_t got = ::read(file, memory_ + read_, std::min(size - read_, kPiece));
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) return;
      read_ += static_cast<size_t>(got);
    }
  }

  unsigned char* memory_ = nullptr;
  size_t read_ = 0;
  FileStamp stamp_;
};

std::optional<LoadedPicture> ReadPicture(const std::string& path, ReadingWatch& watch) {
  const FileBytes bytes(path, watch);
  const bool metafile = LooksLikeMetafile(bytes.View());
  std::optional<DecodedPicture> picture = metafile ? DecodeMetafile(bytes.View(), LimitByMemory(), watch)
                                                   : DecodePicture(bytes.View(), LimitByMemory(), watch);
  if (!picture) return std::nullopt;
  const WrittenKind kind = picture->whole_as;
  return LoadedPicture{std::move(*picture), {bytes.Stamp(), kind}};
}

/// The picture being read ahead.
struct Ahead {
  std::string path;
  std::unique_ptr<PictureReading> reading;
} ahead;

WriteResult Write(const Bitmap& picture, const WriteTarget& target, const PieceSource& source) {
  if (picture.IsEmpty()) return {"the picture is empty"};
  return WriteSafely(target, source);
}

}  // namespace

struct PictureReading::Work {
  std::string path;
  ReadingWatch watch;
  bool given_up = false;  // the person's side only
  std::optional<LoadedPicture> picture;
};

PictureReading::PictureReading(const std::string& path) : work_(std::make_shared<Work>()) {
  work_->path = path;
  errand_.Begin([work = work_] { work->picture = ReadPicture(work->path, work->watch); }, 0);
}

float PictureReading::Progress() const {
  return work_->watch.Progress();
}

void PictureReading::GiveUp() {
  constexpr int kPatienceMs = 100;
  work_->given_up = true;
  work_->watch.Stop();
  // Most readers notice at once. One within a library's long step goes on alone.
  if (!errand_.Wait(kPatienceMs)) errand_.Drop();
}

std::optional<LoadedPicture> PictureReading::Finish() {
  if (!errand_.Wait(PatienceMs) && OnLongReading) OnLongReading(*this);
  if (work_->given_up) throw ReadingGivenUp();
  constexpr int kMinuteMs = 60000;
  while (!errand_.Wait(kMinuteMs)) {
  }
  return std::move(work_->picture);
}

void ReadAhead(const std::string& path) {
  ahead = {path, std::make_unique<PictureReading>(path)};
}

std::optional<LoadedPicture> LoadPicture(const std::string& path) {
  if (ahead.reading && ahead.path == path) {
    if (auto picture = std::exchange(ahead, {}).reading->Finish()) return picture;
  }
  return PictureReading(path).Finish();
}

WriteResult SavePicture(const Bitmap& picture, const WriteTarget& target) {
  return Write(picture, target, [&](const PieceSink& sink) { return EncodeBmp(picture, sink); });
}

WriteResult SaveGif(const Bitmap& picture, const WriteTarget& target) {
  return Write(picture, target, [&](const PieceSink& sink) { return EncodeGif(picture, sink); });
}

WriteResult SaveJpeg(const Bitmap& picture, double compression, const WriteTarget& target) {
  return Write(picture, target,
               [&](const PieceSink& sink) { return EncodeJpeg(picture, compression, sink); });
}

WriteResult SaveTiff(const Bitmap& picture, const WriteTarget& target) {
  return Write(picture, target, [&](const PieceSink& sink) { return EncodeTiff(picture, sink); });
}

WriteResult SaveIcon(const Bitmap& image, const Bitmap& mask, const WriteTarget& target) {
  return Write(image, target, [&](const PieceSink& sink) { return EncodeIco(image, mask, sink); });
}

}  // namespace zelvane
