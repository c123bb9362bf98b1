#include "components/FolderTree.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>
#include <utility>

#include "surface/system/files/Errand.h"
#include "surface/system/text/QtText.h"
#include "surface/system/text/ReadingOrder.h"

namespace zelvane {

struct FolderTree::Node {
  std::string name;
  Node* parent = nullptr;
  int row = 0;
  std::vector<std::unique_ptr<Node>> children;
  bool is_asked = false, is_listed = false;
  Errand listing;

  Node* Child(const std::string& wanted) const {
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&](const auto& child) { return child->name == wanted; });
    return found == children.end() ? nullptr : found->get();
  }
  void Number(size_t from) {
    for (size_t i = from; i < children.size(); ++i) children[i]->row = static_cast<int>(i);
  }
  std::string Path() const {
    if (!parent) return name;
    return parent->parent ? parent->Path() + '/' + name : '/' + name;
  }
};

namespace {

constexpr int kPatience = 150;  // milliseconds

std::vector<std::string> NamesOf(const std::string& path) {
  std::vector<std::string> names;
  std::istringstream parts(path);
  for (std::string name; std::getline(parts, name, '/');) {
    if (name == ".." && !names.empty()) names.pop_back();
    if (!name.empty() && name != "." && name != "..") names.push_back(name);
  }
  return names;
}

std::vector<std::string> Joined(std::vector<std::string> names, const std::vector<std::string>& more) {
  names.insert(names.end(), more.begin(), more.end());
  return names;
}

}  // namespace

FolderTree::FolderTree() : root_(std::make_unique<Node>()) {
  root_->name = "/";
  watch_.OnChange = [this] {
    if (OnChange) OnChange();
  };
}

FolderTree::~FolderTree() = default;

FolderTree::Node& FolderTree::NodeOf(const QModelIndex& folder) const {
  return *static_cast<Node*>(folder.internalPointer());
}

QModelIndex FolderTree::IndexOf(const Node& node) const {
  return createIndex(node.row, 0, &node);
}

std::string FolderTree::PathOf(const QModelIndex& folder) const {
  return NodeOf(folder).Path();
}

QModelIndex FolderTree::Find(const std::string& path) {
  patience_.setRemainingTime(kPatience);
  Node* node = root_.get();
  for (const std::string& name : NamesOf(path)) {
    if (!node->is_asked) List(*node);
    if (!node->Child(name)) Show(*node, {name});
    node = node->Child(name);
  }
  return IndexOf(*node);
}

void FolderTree::Refresh() {
  patience_.setRemainingTime(kPatience);
  ListAgain(*root_);
}

void FolderTree::ListAgain(Node& node) {
  if (!node.is_asked) return;
  List(node);
  for (const auto& child : node.children) ListAgain(*child);
}

/// Does `work` on a thread, and `then` here.
void FolderTree::Run(Node& node, std::function<void()> work, const std::function<void()>& then) {
  node.listing.OnDone = [this, &node, then] {
    then();
    if (OnLate) OnLate(IndexOf(node));
  };
  if (node.listing.Begin(std::move(work), static_cast<int>(patience_.remainingTime()))) then();
}

void FolderTree::List(Node& node) {
  node.is_asked = true;
  const auto found = std::make_shared<FolderNames>();
  Run(
      node,
      [found, watch = watch_.Adder(), path = node.Path()] {
        watch(path);
        *found = FoldersIn(path);
      },
      [this, &node, found] {
        node.is_listed = true;
        Check(node, *found);
      });
}

/// Links, and rows that the listing doesn't tell of, have to be looked at one by one, which may take longer.
void FolderTree::Check(Node& node, const FolderNames& found) {
  std::set<std::string> doubtful(found.links.begin(), found.links.end());
  for (const auto& child : node.children) doubtful.insert(child->name);
  for (const std::string& name : found.folders) doubtful.erase(name);
  Show(node, found.folders);
  if (doubtful.empty()) return;
  const auto sure = std::make_shared<std::vector<std::string>>();
  const std::string path = node.parent ? node.Path() + '/' : node.name;
  Run(
      node,
      [sure, path, doubtful = std::move(doubtful)] {
        std::copy_if(doubtful.begin(), doubtful.end(), std::back_inserter(*sure),
                     [&](const std::string& name) { return IsFolder(path + name); });
      },
      [this, &node, sure, folders = found.folders] {
        const std::vector<std::string> names = Joined(folders, *sure);
        HideAllBut(node, names);
        Show(node, names);
      });
}

/// Those of `names` that have no row yet get one.
void FolderTree::Show(Node& node, std::vector<std::string> names) {
  std::set<std::string> present;
  for (const auto& child : node.children) present.insert(child->name);
  names.insert(names.end(), present.begin(), present.end());
  SortForReading(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  for (size_t at = 0; at < names.size();) {
    const auto first = names.begin() + static_cast<ptrdiff_t>(at);
    const auto last =
        std::find_if(first, names.end(), [&](const auto& name) { return present.contains(name); });
    const size_t count = static_cast<size_t>(last - first);
    if (count > 0) {
      beginInsertRows(IndexOf(node), static_cast<int>(at), static_cast<int>(at + count) - 1);
      std::vector<std::unique_ptr<Node>> fresh;
      std::transform(first, last, std::back_inserter(fresh), [&](const std::string& name) {
        auto child = std::make_unique<Node>();
        child->name = name;
        child->parent = &node;
        return child;
      });
      node.children.insert(node.children.begin() + static_cast<ptrdiff_t>(at),
                           std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
      node.Number(at);
      endInsertRows();
    }
    at += count + 1;  // that which stood there already
  }
}

void FolderTree::HideAllBut(Node& node, const std::vector<std::string>& names) {
  const std::set<std::string> kept(names.begin(), names.end());
  for (size_t at = node.children.size(); at-- > 0;) {
    if (kept.contains(node.children[at]->name)) continue;
    beginRemoveRows(IndexOf(node), static_cast<int>(at), static_cast<int>(at));
    // Destroyed once nobody asks for it any more.
    const std::unique_ptr<Node> gone = std::move(node.children[at]);
    node.children.erase(node.children.begin() + static_cast<ptrdiff_t>(at));
    node.Number(at);
    endRemoveRows();
  }
}

QModelIndex FolderTree::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) return {};
  return IndexOf(parent.isValid() ? *NodeOf(parent).children[static_cast<size_t>(row)] : *root_);
}

QModelIndex FolderTree::parent(const QModelIndex& folder) const {
  const Node* above = folder.isValid() ? NodeOf(folder).parent : nullptr;
  return above ? IndexOf(*above) : QModelIndex();
}

int FolderTree::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? static_cast<int>(NodeOf(parent).children.size()) : 1;
}

QVariant FolderTree::data(const QModelIndex& folder, int role) const {
  if (!folder.isValid() || role != Qt::DisplayRole) return {};
  return OneLine(ToQt(NodeOf(folder).name));
}

bool FolderTree::hasChildren(const QModelIndex& parent) const {
  return rowCount(parent) > 0 || !NodeOf(parent).is_listed;
}

bool FolderTree::canFetchMore(const QModelIndex& parent) const {
  return parent.isValid() && !NodeOf(parent).is_asked;
}

void FolderTree::fetchMore(const QModelIndex& parent) {
  patience_.setRemainingTime(kPatience);
  List(NodeOf(parent));
}

}  // namespace zelvane
