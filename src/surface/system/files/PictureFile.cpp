#include "surface/system/files/PictureFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "surface/codecs/PictureDecoder.h"
#include "surface/system/files/SafeFile.h"

namespace zelvane {

namespace {

/// The whole of a regular file in memory: mapping it instead would end the program when somebody cuts the
/// file short while it's read.
class FileBytes {
 public:
  explicit FileBytes(const std::string& path) {
    // A pipe without a writer would block an ordinary open.
    const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) return;
    struct stat found = {};
    if (::fstat(file, &found) == 0 && S_ISREG(found.st_mode) && found.st_size > 0) {
      Read(file, static_cast<size_t>(found.st_size));
    }
    ::close(file);
  }
  ~FileBytes() { std::free(memory_); }
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;

  ByteView View() const { return {memory_, read_}; }

 private:
  void Read(int file, size_t size) {
    std::array<unsigned char, kPictureStart> start{};
    const ssize_t begun = ::pread(file, start.data(), start.size(), 0);
    if (begun <= 0 || !LooksLikePicture({start.data(), static_cast<size_t>(begun)})) return;
    if (static_cast<int64_t>(size) > AvailableMemory() / 2) return;
    // In whole huge pages, where the system has them: fewer faults than there are small pages.
    constexpr size_t kHugePage = size_t{2} << 20;
    const size_t room = size < kHugePage ? size : (size + kHugePage - 1) / kHugePage * kHugePage;
    memory_ = static_cast<unsigned char*>(size < kHugePage ? std::malloc(room)
                                                           : std::aligned_alloc(kHugePage, room));
    if (!memory_) return;
    if (size >= kHugePage) ::madvise(memory_, room, MADV_HUGEPAGE);
    while (read_ < size) {
      const ssize_t got = ::read(file, memory_ + read_, size - read_);
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) return;
      read_ += static_cast<size_t>(got);
    }
  }

  unsigned char* memory_ = nullptr;
  size_t read_ = 0;
};

void PutLittle(std::vector<unsigned char>& bytes, uint64_t value, int count) {
  for (int i = 0; i < count; ++i) bytes.push_back(static_cast<unsigned char>(value >> 8 * i));
}

/// The file's header and the picture's.
std::vector<unsigned char> BmpHeaders(uint64_t width, uint64_t height, uint64_t stride) {
  constexpr uint64_t kFileHeader = 14, kPictureHeader = 40, kPixelsPerMetre = 2835;
  const uint64_t pixels = stride * height;
  std::vector<unsigned char> bytes{'B', 'M'};
  PutLittle(bytes, kFileHeader + kPictureHeader + pixels, 4);
  PutLittle(bytes, 0, 4);
  PutLittle(bytes, kFileHeader + kPictureHeader, 4);
  PutLittle(bytes, kPictureHeader, 4);
  PutLittle(bytes, width, 4);
  PutLittle(bytes, height, 4);
  PutLittle(bytes, 1, 2);   // planes
  PutLittle(bytes, 24, 2);  // bits a pixel
  PutLittle(bytes, 0, 4);   // no compression
  PutLittle(bytes, pixels, 4);
  PutLittle(bytes, kPixelsPerMetre, 4);
  PutLittle(bytes, kPixelsPerMetre, 4);
  PutLittle(bytes, 0, 8);  // colours of a palette
  return bytes;
}

/// Three bytes a pixel. Four are stored at a time, of which the next pixel overwrites one.
void PackRow(const Pixel* from, int width, unsigned char* to) {
  for (int x = 0; x + 1 < width; ++x) std::memcpy(to + 3 * x, from + x, 4);
  std::memcpy(to + 3 * (width - 1), from + width - 1, 3);
}

}  // namespace

std::optional<Bitmap> LoadPicture(const std::string& path) {
  const FileBytes bytes(path);
  return DecodePicture(bytes.View(), LimitByMemory());
}

WriteResult SavePicture(const Bitmap& picture, const std::string& path) {
  if (picture.IsEmpty()) return {"the picture is empty"};
  constexpr size_t kPiece = size_t{1} << 20;
  const size_t stride = (static_cast<size_t>(picture.Width()) * 3 + 3) / 4 * 4;
  const int rows_at_once = static_cast<int>(std::max<size_t>(1, kPiece / stride));
  SafeFile file(path);
  const std::vector<unsigned char> headers =
      BmpHeaders(static_cast<uint64_t>(picture.Width()), static_cast<uint64_t>(picture.Height()), stride);
  file.Write(headers.data(), headers.size());
  std::vector<unsigned char> piece(stride * static_cast<size_t>(rows_at_once));
  for (int bottom = picture.Height(); bottom > 0 && !file.Failed(); bottom -= rows_at_once) {
    const int rows = std::min(rows_at_once, bottom);
    for (int i = 0; i < rows; ++i) {
      PackRow(picture.Row(bottom - 1 - i), picture.Width(), piece.data() + stride * static_cast<size_t>(i));
    }
    file.Write(piece.data(), stride * static_cast<size_t>(rows));
  }
  return file.Commit();
}

}  // namespace zelvane
