#include "surface/system/files/ExchangeFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <new>

#include "surface/codecs/PictureEncoder.h"
#include "surface/system/files/SafeFile.h"

namespace zelvane {

ExchangeFile::ExchangeFile(const std::string& folder, const std::string& name)
    : path_(JoinPath(folder, name)), name_(name), folder_(OpenFolder(folder)) {}

std::string ExchangeFile::OwnPath() const {
  return JoinPath(PathOf(folder_), name_);
}

WriteResult ExchangeFile::Write(const Bitmap& picture) const {
  constexpr int kOnlyNew = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  Remove();
  Descriptor file(::openat(folder_.Get(), name_.c_str(), kOnlyNew, 0600));
  if (!file.IsOpen()) return {PhraseFor(errno)};
  int error = 0;
  try {
    const bool whole = EncodeBmp(picture, [&](const void* bytes, size_t count) {
      error = WriteAll(file.Get(), bytes, count);
      return error == 0;
    });
    if (!whole && error == 0) return {"the picture is empty"};
  } catch (const std::bad_alloc&) {
    error = ENOMEM;
  }
  if (error == 0) error = file.Close();
  return {error == 0 ? std::string() : PhraseFor(error)};
}

bool ExchangeFile::Exists() const {
  return folder_.IsOpen() && FileExists(OwnPath());
}

std::optional<LoadedPicture> ExchangeFile::Read() const {
  return LoadPicture(OwnPath());
}

void ExchangeFile::Remove() const {
  if (!folder_.IsOpen() || ::unlinkat(folder_.Get(), name_.c_str(), 0) == 0 || errno == ENOENT) return;
  std::error_code error;
  std::filesystem::remove_all(OwnPath(), error);
}

}  // namespace zelvane
