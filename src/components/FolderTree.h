#pragma once

#include <QAbstractItemModel>
#include <QDeadlineTimer>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "surface/system/files/FolderWatch.h"
#include "surface/system/files/Folders.h"

namespace zelvane {

/// The folders of the machine as far as they have been opened, from the root, which is the one top row. A
/// folder is listed on a thread of its own, since a disk may answer late or never.
///
/// The toolkit's own model of files leaves out names that aren't UTF-8, and waits for a disk that hangs.
class FolderTree : public QAbstractItemModel {
 public:
  FolderTree();
  ~FolderTree() override;

  /// The bytes of its name and those above.
  std::string PathOf(const QModelIndex& folder) const;
  /// The row of a path that is known to be a folder. The folders above it are listed; what these don't show,
  /// being hidden, gets a row all the same. "." and ".." are taken back on the text.
  QModelIndex Find(const std::string& path);
  /// Lists everything anew that has been listed. Rows of what still exists stay as they are.
  void Refresh();

  /// A folder that is listed has got, lost or renamed one.
  std::function<void()> OnChange;
  /// What the folder holds has come after the call that asked for it.
  std::function<void(const QModelIndex& folder)> OnLate;

  QModelIndex index(int row, int column, const QModelIndex& parent) const override;
  QModelIndex parent(const QModelIndex& folder) const override;
  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex&) const override { return 1; }
  QVariant data(const QModelIndex& folder, int role) const override;
  /// True of a folder that has yet to be listed.
  bool hasChildren(const QModelIndex& parent) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

 private:
  struct Node;
  Node& NodeOf(const QModelIndex& folder) const;
  QModelIndex IndexOf(const Node& node) const;
  void List(Node& node);
  void ListAgain(Node& node);
  void Check(Node& node, const FolderNames& found);
  void Show(Node& node, std::vector<std::string> names);
  void HideAllBut(Node& node, const std::vector<std::string>& names);
  void Run(Node& node, std::function<void()> work, const std::function<void()>& then);
  std::unique_ptr<Node> root_;
  FolderWatch watch_;
  /// How long the call that came from outside may yet wait for disks.
  QDeadlineTimer patience_;
};

}  // namespace zelvane
