#include "files/FileListBox.h"

#include <memory>
#include <utility>
#include <vector>

#include "surface/forms/controls/Events.h"
#include "surface/system/files/Files.h"
#include "surface/system/text/ReadingOrder.h"

namespace zelvane {

namespace {

/// Milliseconds that a setter waits for the names: enough for hundreds, too few to be felt.
constexpr int kPatience = 40;

}  // namespace

FileListBox::FileListBox(Control& parent, const std::string& name) : ListBox(parent, name) {}

void FileListBox::SetPath(const std::string& Path) {
  Path_ = Path;
  ListFiles();
}

void FileListBox::SetPattern(const std::string& Pattern) {
  Pattern_ = Pattern;
  ListFiles();
}

void FileListBox::Clear() {
  Path_.clear();
  Pattern_.clear();
  ListFiles();
}

void FileListBox::ListFiles() {
  listing_.Drop();
  SetItems({});
  if (Path_.empty() || Pattern_.empty()) return;
  const auto names = std::make_shared<std::vector<std::string>>();
  listing_.OnDone = [this, names] {
    SetItems(std::move(*names));
    FireEvent(OnListed);
  };
  const auto list = [names, folder = Path_, patterns = Pattern_] {
    *names = FilesIn(folder, patterns);
    SortForReading(*names);
  };
  if (listing_.Begin(list, kPatience)) SetItems(std::move(*names));
}

}  // namespace zelvane
