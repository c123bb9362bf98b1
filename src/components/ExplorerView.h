#pragma once

#include <functional>
#include <memory>
#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

class FolderTree;

/// A tree of the machine's folders, of which one is chosen. Hidden folders show only where they lead to the
/// chosen one. Folders are listed as they are opened, and watched from then on.
class ExplorerDisplay : public Control {
 public:
  ExplorerDisplay(Control& parent, const std::string& name);
  ~ExplorerDisplay() override;

  /// The chosen folder, the bytes as they were set or chosen, without a separator at the end but for the
  /// root. Empty before there is one.
  const std::string& Path() const { return Path_; }
  /// Chooses the folder and brings it into view, opened up to it. What is no folder is left out. One on a
  /// disk that doesn't answer soon is taken, but not shown.
  void SetPath(const std::string& path);
  /// Lists anew; what is open stays open, and what is chosen chosen, where it still exists.
  void Refresh();

  /// A folder has been chosen, by the person or by `SetPath`, which may set the same again.
  std::function<void(const std::string& path)> OnChange;
  /// Any program has made, removed or renamed a folder among those that have been opened.
  std::function<void()> OnFoldersChanged;

 protected:
  bool ClicksByPointer() const override { return false; }

 private:
  class View;
  View* Tree() const;
  void Take(const std::string& path);
  std::string Path_;
  std::unique_ptr<FolderTree> folders_;
};

}  // namespace zelvane
