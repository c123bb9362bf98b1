#include "surface/forms/windows/Menu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QPointer>
#include <algorithm>
#include <vector>

#include "surface/forms/controls/Conversions.h"
#include "surface/forms/controls/Toolkit.h"
#include "surface/forms/windows/MdiFrame.h"

namespace zelvane {

/// The toolkit's side of an entry. The main window may go before its menus do.
struct Menu::Native {
  Menu& self;
  MdiForm& window;
  QPointer<QMainWindow> frame;
  Native* parent = nullptr;
  std::vector<Native*> entries;
  QPointer<QAction> action;
  QPointer<QMenu> menu;
  QKeySequence shortcut;
  bool lists_windows = false;
  std::vector<QPointer<QAction>> window_list;

  Native(Menu& of, MdiForm& in, QMainWindow& on, Native* inside)
      : self(of), window(in), frame(&on), parent(inside) {}

  void Make(const std::string& shortcut_text);
  void BecomeMenu();
  void Opening();
  void Closing();
  void Chosen();
  void ListWindows();

  bool IsOpen() const { return menu && menu->isVisible(); }
  /// Whether the entry and every menu round it are visible.
  bool IsReachable() const { return self.visible_ && (!parent || parent->IsReachable()); }
  void ShowEnabled(bool in_open_menu) {
    action->setEnabled(self.enabled_ || (!in_open_menu && HoldsShortcut()));
  }
  bool HoldsShortcut() const {
    return !shortcut.isEmpty() || std::any_of(entries.begin(), entries.end(),
                                              [](const Native* entry) { return entry->HoldsShortcut(); });
  }
  void ShowShortcut();
};

void Menu::Native::Make(const std::string& shortcut_text) {
  shortcut = QKeySequence::fromString(ToQt(shortcut_text), QKeySequence::PortableText);
  action = new QAction(frame);
  action->setObjectName(ToQt(self.name_));
  action->setShortcutContext(Qt::WindowShortcut);
  // No entry belongs to the application's own menu, whatever its caption sounds like.
  action->setMenuRole(QAction::NoRole);
  QObject::connect(action, &QAction::triggered, action, [this] { Chosen(); });
  if (parent) {
    parent->BecomeMenu();
    parent->entries.push_back(this);
    parent->menu->addAction(action);
    // The window bears the shortcut too, so that a menu that is disabled doesn't hold it back.
    if (!shortcut.isEmpty()) frame->addAction(action);
  } else {
    frame->menuBar()->addAction(action);
  }
  ShowShortcut();
}

void Menu::Native::BecomeMenu() {
  if (menu || !frame) return;
  menu = new QMenu(frame);
  menu->setObjectName(ToQt(self.name_));
  menu->setToolTipsVisible(false);
  action->setMenu(menu);
  QObject::connect(menu, &QMenu::aboutToShow, menu, [this] { Opening(); });
  QObject::connect(menu, &QMenu::aboutToHide, menu, [this] { Closing(); });
}

void Menu::Native::Opening() {
  FireEvent(self.OnClick);
  for (Native* entry : entries) entry->ShowEnabled(true);
  if (lists_windows) ListWindows();
}

void Menu::Native::Closing() {
  // What was clicked is told after this, and only where it was enabled when it was clicked.
  for (Native* entry : entries) entry->ShowEnabled(false);
}

void Menu::Native::Chosen() {
  if (menu) return;
  // The toolkit has toggled the mark by itself; it is the program that does.
  if (action->isCheckable()) action->setChecked(self.checked_);
  FireEvent(self.OnClick);
}

void Menu::Native::ShowShortcut() {
  if (action) action->setShortcut(IsReachable() ? shortcut : QKeySequence());
  for (Native* entry : entries) entry->ShowShortcut();
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
  for (QObject* object : {static_cast<QObject*>(native_->action), static_cast<QObject*>(native_->menu)}) {
    if (!object) continue;
    object->disconnect();
    object->deleteLater();
  }
  if (native_->action) native_->action->setVisible(false);
}

void Menu::SetCaption(const std::string& caption) {
  caption_ = caption;
  if (!native_->action) return;
  native_->action->setSeparator(caption == "-");
  native_->action->setText(caption == "-" ? QString() : ToQt(caption));
}

void Menu::SetEnabled(bool enabled) {
  enabled_ = enabled;
  if (!native_->action) return;
  // The bar's own menus are always in view.
  native_->ShowEnabled(!native_->parent || native_->parent->IsOpen());
}

void Menu::SetVisible(bool visible) {
  visible_ = visible;
  if (!native_->action) return;
  native_->action->setVisible(visible);
  native_->ShowShortcut();
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
