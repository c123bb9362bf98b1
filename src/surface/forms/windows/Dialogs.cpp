#include "surface/forms/windows/Dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <utility>
#include <vector>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/windows/MdiForm.h"

namespace zelvane {
namespace {

enum Answers : int16_t { kOk = 1, kCancel, kAbort, kRetry, kIgnore, kYes, kNo };

struct Answer {
  int16_t code;
  const char* caption;
  QMessageBox::ButtonRole role;
};

constexpr Answer kAnswers[] = {
    {kOk, "&OK", QMessageBox::AcceptRole},
    {kCancel, "Cancel", QMessageBox::RejectRole},
    {kAbort, "&Abort", QMessageBox::RejectRole},
    {kRetry, "&Retry", QMessageBox::AcceptRole},
    {kIgnore, "&Ignore", QMessageBox::ActionRole},
    {kYes, "&Yes", QMessageBox::YesRole},
    {kNo, "&No", QMessageBox::NoRole},
};

const std::vector<int16_t>& AnswersOf(int buttons) {
  static const std::vector<int16_t> sets[] = {
      {kOk}, {kOk, kCancel}, {kAbort, kRetry, kIgnore}, {kYes, kNo, kCancel}, {kYes, kNo}, {kRetry, kCancel}};
  return sets[std::clamp(buttons, 0, 5)];
}

QMessageBox::Icon IconOf(int icon) {
  constexpr QMessageBox::Icon kIcons[] = {QMessageBox::NoIcon, QMessageBox::Critical, QMessageBox::Question,
                                          QMessageBox::Warning, QMessageBox::Information};
  return kIcons[std::clamp(icon, 0, 4)];
}

/// A message that Esc and the close box always close, whichever buttons it has.
class MessageWindow : public QMessageBox {
 public:
  using QMessageBox::QMessageBox;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Cancel)) return reject();
    QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override { QDialog::closeEvent(event); }
};

/// The window that a dialog stands above.
QWidget* Owner() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (const Form* form : Forms()) {
    if (dynamic_cast<const MdiForm*>(form) && form->Visible()) return form->Widget();
  }
  return nullptr;
}

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
  QFileDialog dialog(Owner(), ToQt(title));
  dialog.setObjectName("FileDialog");
  dialog.setAcceptMode(mode);
  dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  // The program itself asks before it writes over a file.
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  const QStringList names = FiltersOf(filter);
  dialog.setNameFilters(names);
  if (filter_index > 0 && filter_index <= names.size()) dialog.selectNameFilter(names[filter_index - 1]);
  if (!folder.empty()) dialog.setDirectory(ToQt(folder));
  if (!name.empty()) dialog.selectFile(ToQt(name));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  const auto chosen = names.indexOf(dialog.selectedNameFilter());
  if (chosen >= 0) filter_index = static_cast<int16_t>(chosen + 1);
  return FromQt(dialog.selectedFiles().first());
}

}  // namespace

int16_t ShowMessage(const std::string& prompt, int buttons, int icon, int default_button,
                    const std::string& title) {
  MessageWindow window(Owner());
  window.setObjectName("MessageBox");
  window.setWindowTitle(ToQt(title));
  window.setTextFormat(Qt::PlainText);
  window.setText(ToQt(prompt));
  window.setIcon(IconOf(icon));
  std::vector<std::pair<const QAbstractButton*, int16_t>> codes;
  for (const int16_t code : AnswersOf(buttons)) {
    const Answer& answer = kAnswers[code - 1];
    QPushButton* button = window.addButton(answer.caption, answer.role);
    if (static_cast<int>(codes.size()) == default_button) window.setDefaultButton(button);
    codes.emplace_back(button, code);
  }
  window.exec();
  for (const auto& [button, code] : codes) {
    if (button == window.clickedButton()) return code;
  }
  return kCancel;
}

std::string AskOpenName(const std::string& title, const std::string& filter, const std::string& folder,
                        const std::string& name, int16_t& filter_index) {
  return AskName(QFileDialog::AcceptOpen, title, filter, folder, name, filter_index);
}

std::string AskSaveName(const std::string& title, const std::string& filter, const std::string& folder,
                        const std::string& name, int16_t& filter_index) {
  return AskName(QFileDialog::AcceptSave, title, filter, folder, name, filter_index);
}

}  // namespace zelvane
