#pragma once

#include <string>

#include "surface/system/files/Descriptor.h"

namespace zelvane {

/// A file in the making. It has no name until it's whole, so that not even a killed process leaves one; where
/// the file system knows no such files, it has a name and a lock on it, and the next draft in the folder
/// clears away what died. What yields an `int` yields the number of the error, 0 where there's none.
class Draft {
 public:
  Draft() = default;
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;
  /// Nothing remains of a draft that got no name.
  ~Draft();

  /// A new draft in place of the last one. The folder stays open as long as the draft lives.
  int Create(const Descriptor& folder, mode_t mode);
  /// For reading and writing.
  int File() const { return file_.Get(); }
  /// Takes the name, which nothing may have yet (EEXIST).
  int TakeName(const std::string& name);
  /// Takes the name and the place of what has it, in one step.
  int Replace(const std::string& name);

 private:
  void Discard();
  bool CreateUnnamed(mode_t mode);
  int CreateNamed(mode_t mode);
  int LinkAs(const std::string& name) const;
  int TakeDraftName();
  int FinishWriting();

  const Descriptor* folder_ = nullptr;
  Descriptor file_;
  std::string name_;  ///< of the draft; empty while it has none
};

}  // namespace zelvane
