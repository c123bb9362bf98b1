#pragma once

#include <sys/types.h>

#include <string>
#include <utility>

struct stat;

/// Steps with open files. What yields an `int` yields the system's number of the error, 0 where there's none.
namespace zelvane {

/// An open file, closed in the end.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor();

  int Get() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }
  /// Hands the number over, to be closed elsewhere.
  int Release() { return std::exchange(number_, -1); }
  /// A network's file system may tell only now that something wasn't written.
  int Close();

 private:
  int number_;
};

/// Where the file is found by its number. It stays so after it has lost its name or before it gets one.
std::string PathOf(const Descriptor& file);

/// For reading at least, and never waits for a pipe's other end.
Descriptor OpenFolder(const std::string& path);

int WriteAll(int file, const void* bytes, size_t count);
/// To the disk. A file system that knows no such thing has done all it can.
int Sync(int file);
/// Makes `to` hold the first `size` bytes of `from`, those alone, on the disk.
int CopyContents(int from, off_t size, int to);
/// Owner, group, extended attributes, access list and mode, as far as this user may give them. Nobody gets
/// more rights for it. `old` tells those of `from`, which needn't be open.
int CopyRights(const struct stat& old, int from, int to);

}  // namespace zelvane
