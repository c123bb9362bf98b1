#include "surface/forms/windows/Dialogs.h"

#include <QFileDialog>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/windows/DialogForm.h"

namespace zelvane {
namespace {

/// "Text|*.a;*.b" becomes "Text (*.a *.b)"; patterns that the text already ends with aren't said twice.
QStringList FiltersOf(const std::string& pairs) {
  QStringList filters;
  const QStringList parts = ToQt(pairs).split('|');
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    QString text = parts[i].trimmed(), patterns = parts[i + 1];
    patterns.replace(';', ' ');
    const auto opening = text.lastIndexOf('(');
    if (opening > 0 && text.endsWith(')') && text.indexOf('*', opening) > 0) text.truncate(opening);
    filters.push_back(text.trimmed() + " (" + patterns.simplified() + ")");
  }
  return filters;
}

std::string AskName(QFileDialog::AcceptMode mode, const std::string& title, const std::string& filter,
                    const std::string& folder, const std::string& name, int16_t& filter_index) {
  QFileDialog dialog(OwnerOfDialogs(), ToQt(title));
  dialog.setObjectName("FileDialog");
  dialog.setAcceptMode(mode);
  dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  // The program itself asks before it writes over a file.
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  const QStringList names = FiltersOf(filter);
  dialog.setNameFilters(names);
  if (filter_index >= 0 && filter_index < names.size()) dialog.selectNameFilter(names[filter_index]);
  if (!folder.empty()) dialog.setDirectory(ToQt(folder));
  if (!name.empty()) dialog.selectFile(ToQt(name));
  const bool is_chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
  const auto filter_shown = names.indexOf(dialog.selectedNameFilter());
  if (filter_shown >= 0) filter_index = static_cast<int16_t>(filter_shown);
  if (!is_chosen) return {};
  return FromQt(dialog.selectedFiles().first());
}

}  // namespace

std::string AskOpenName(const std::string& title, const std::string& filter, const std::string& folder,
                        const std::string& name, int16_t& filter_index) {
  return AskName(QFileDialog::AcceptOpen, title, filter, folder, name, filter_index);
}

std::string AskSaveName(const std::string& title, const std::string& filter, const std::string& folder,
                        const std::string& name, int16_t& filter_index) {
  return AskName(QFileDialog::AcceptSave, title, filter, folder, name, filter_index);
}

}  // namespace zelvane
