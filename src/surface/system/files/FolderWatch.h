#pragma once

#include <functional>
#include <memory>
#include <string>

namespace zelvane {

/// Tells when a folder has been made, removed or given a new name within one of the folders that are watched.
/// What happens to files isn't told.
class FolderWatch {
 public:
  FolderWatch();
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

  /// Adds a folder. May be called on any thread, as a disk may answer late, and after the watch has gone. A
  /// folder that can't be watched is left out; one that goes is forgotten.
  std::function<void(const std::string& folder)> Adder() const;

  /// Comes once for all that has happened in a tenth of a second, from the event loop.
  std::function<void()> OnChange;

 private:
  class Notices;
  std::shared_ptr<const int> descriptor_;
  std::unique_ptr<Notices> notices_;
};

}  // namespace zelvane
