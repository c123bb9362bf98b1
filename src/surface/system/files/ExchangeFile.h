#pragma once

#include <optional>
#include <string>

#include "surface/system/files/Descriptor.h"
#include "surface/system/files/PictureFile.h"

namespace zelvane {

/// A picture file that another program takes and gives back. The other may do anything to it: all that
/// happens here happens in the folder as it was at first, and nothing beyond it is ever deleted. What stands
/// under the name in the end goes with the object.
class ExchangeFile {
 public:
  ExchangeFile(const std::string& folder, const std::string& name);
  ~ExchangeFile() { Remove(); }
  ExchangeFile(const ExchangeFile&) = delete;
  ExchangeFile& operator=(const ExchangeFile&) = delete;

  const std::string& Path() const { return path_; }
  /// As a bitmap file of 24 bits a pixel, in place of whatever stood there; only this user may read it. It
  /// isn't forced onto the disk.
  WriteResult Write(const Bitmap& picture) const;
  /// A file stands there, or a link to one.
  bool Exists() const;
  std::optional<LoadedPicture> Read() const;
  /// A folder goes with all that is in it, a link alone.
  void Remove() const;

 private:
  std::string OwnPath() const;

  std::string path_, name_;
  Descriptor folder_;
};

}  // namespace zelvane
