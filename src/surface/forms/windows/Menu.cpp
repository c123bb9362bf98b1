#include "surface/forms/windows/Menu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QPointer>
#include <QShortcut>
#include <algorithm>
#include <vector>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Events.h"
#include "surface/forms/windows/MdiFrame.h"

namespace zelvane {

std::string CaptionOf(const std::string& text) {
  std::string caption;
  for (const char character : text) caption.append(character == '&' ? 2 : 1, character);
  return caption;
}

/// The toolkit's side of an entry. The main window may go before its menus do.
struct Menu::Native {
  Menu& self;
  MdiForm& window;
  QPointer<QMainWindow> frame;
  Native* parent = nullptr;
  std::vector<Native*> entries;
  QPointer<QAction> action;
  QPointer<QMenu> menu;
  /// The window bears it, since an entry that is hidden or disabled would hold it back.
  QPointer<QShortcut> shortcut;
  bool lists_windows = false;
  std::vector<QPointer<QAction>> window_list;

  Native(Menu& of, MdiForm& in, QMainWindow& on, Native* inside)
      : self(of), window(in), frame(&on), parent(inside) {}

  void Make(const std::string& shortcut_text);
  void BecomeMenu();
  void Opening();
  void Chosen();
  void ListWindows();

  QString Text() const;
};

void Menu::Native::Make(const std::string& shortcut_text) {
  action = new QAction(frame);
  action->setObjectName(ToQt(self.name_));
  // No entry belongs to the application's own menu, whatever its caption sounds like.
  action->setMenuRole(QAction::NoRole);
  QObject::connect(action, &QAction::triggered, action, [this] { Chosen(); });
  if (parent) {
    parent->BecomeMenu();
    parent->entries.push_back(this);
    parent->menu->addAction(action);
  } else {
    frame->menuBar()->addAction(action);
  }
  if (shortcut_text.empty()) return;
  shortcut = new QShortcut(QKeySequence::fromString(ToQt(shortcut_text), QKeySequence::PortableText), frame);
  QObject::connect(shortcut, &QShortcut::activated, shortcut, [this] { FireEvent(self.OnClick); });
}

/// The caption with the shortcut in a column of its own.
QString Menu::Native::Text() const {
  const QString caption = OneLine(ToQt(self.caption_));
  return shortcut ? caption + '\t' + shortcut->key().toString(QKeySequence::NativeText) : caption;
}

void Menu::Native::BecomeMenu() {
  if (menu || !frame) return;
  menu = new QMenu(frame);
  menu->setObjectName(ToQt(self.name_));
  menu->setToolTipsVisible(false);
  action->setMenu(menu);
  QObject::connect(menu, &QMenu::aboutToShow, menu, [this] { Opening(); });
}

void Menu::Native::Opening() {
  FireEvent(self.OnClick);
  if (lists_windows) ListWindows();
}

void Menu::Native::Chosen() {
  if (menu) return;
  // The toolkit has toggled the mark by itself; it is the program that does.
  if (action->isCheckable()) action->setChecked(self.checked_);
  // Assistive tools choose entries in a window that takes no input, too.
  if (!window.Enabled()) return;
  FireEvent(self.OnClick);
}

void Menu::Native::ListWindows() {
  for (const QPointer<QAction>& entry : window_list) delete entry;
  window_list.clear();
  const std::vector<Form*> children = window.Children();
  if (children.empty()) return;
  window_list.push_back(menu->addSeparator());
  int number = 0;
  for (Form* child : children) {
    if (!child->Visible()) continue;
    QString caption = ToQt(child->Caption());
    caption.replace('&', "&&");
    const QString key = ++number < 10 ? "&" : "";
    QAction* entry = menu->addAction(key + QString::number(number) + " " + caption);
    entry->setCheckable(child == window.ActiveForm());
    entry->setChecked(child == window.ActiveForm());
    QObject::connect(entry, &QAction::triggered, entry, [this, child] {
      const std::vector<Form*> left = window.Children();
      if (std::find(left.begin(), left.end(), child) != left.end()) child->Activate();
    });
    window_list.push_back(entry);
  }
}

Menu::Menu(MdiForm& window, const std::string& name, const std::string& caption)
    : native_(new Native(*this, window, *window.frame_, nullptr)), name_(name) {
  native_->Make("");
  SetCaption(caption);
}

Menu::Menu(Menu& parent, const std::string& name, const std::string& caption, const std::string& shortcut)
    : native_(new Native(*this, parent.native_->window, *parent.native_->frame, parent.native_.get())),
      name_(name) {
  native_->Make(shortcut);
  SetCaption(caption);
}

Menu::~Menu() {
  if (native_->parent) std::erase(native_->parent->entries, native_.get());
  for (Native* entry : native_->entries) entry->parent = nullptr;
  // An entry may go in its own event, from which the toolkit still has to return.
  for (QObject* object : {static_cast<QObject*>(native_->action), static_cast<QObject*>(native_->menu),
                          static_cast<QObject*>(native_->shortcut)}) {
    if (!object) continue;
    object->disconnect();
    object->deleteLater();
  }
  if (native_->action) native_->action->setVisible(false);
  if (native_->shortcut) native_->shortcut->setEnabled(false);
}

void Menu::SetCaption(const std::string& caption) {
  caption_ = caption;
  if (!native_->action) return;
  native_->action->setSeparator(caption == "-");
  native_->action->setText(caption == "-" ? QString() : native_->Text());
}

void Menu::SetEnabled(bool enabled) {
  enabled_ = enabled;
  if (native_->action) native_->action->setEnabled(enabled);
}

void Menu::SetVisible(bool visible) {
  visible_ = visible;
  if (native_->action) native_->action->setVisible(visible);
}

void Menu::SetChecked(bool checked) {
  checked_ = checked;
  if (!native_->action) return;
  native_->action->setCheckable(true);
  native_->action->setChecked(checked);
}

void Menu::SetWindowList(bool list) {
  native_->lists_windows = list;
  if (list) native_->BecomeMenu();
}

}  // namespace zelvane
