#pragma once

#include <functional>
#include <string>

#include "surface/forms/controls/ListBox.h"
#include "surface/system/files/Errand.h"

namespace zelvane {

/// The names of a folder's files that match a pattern, sorted for reading. Listing never holds the window up:
/// an ordinary folder's names are there when a setter returns, those of a huge or slow one come later, and
/// the list is empty until then and where the folder can't be read.
class FileListBox : public ListBox {
 public:
  FileListBox(Control& parent, const std::string& name);

  /// The folder; empty for none. Each setting lists anew.
  const std::string& Path() const { return Path_; }
  void SetPath(const std::string& Path);
  /// Patterns as `FilesIn` takes them, such as "*.jpg;*.jpe"; empty for no file.
  const std::string& Pattern() const { return Pattern_; }
  void SetPattern(const std::string& Pattern);
  /// Empties list, folder and pattern. A folder set next lists once its pattern is.
  void Clear();

  /// The names have come after their setting. Nothing is chosen.
  std::function<void()> OnListed;

 private:
  void ListFiles();
  std::string Path_, Pattern_;
  Errand listing_;
};

}  // namespace zelvane
