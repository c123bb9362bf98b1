#pragma once

#include <functional>
#include <memory>
#include <string>

#include "surface/forms/windows/MdiForm.h"

namespace zelvane {

/// The caption that shows a text as it is: a single ampersand would mark the key.
std::string CaptionOf(const std::string& text);

/// A menu or an entry of one. An ampersand in the caption marks the key, two stand for one; "-" is a
/// separator.
///
/// The shortcut works always, also where the entry is disabled or hidden: whoever is fired by it checks for
/// himself whether he can act.
class Menu {
 public:
  /// A menu of the main window's bar.
  Menu(MdiForm& window, const std::string& name, const std::string& caption);
  /// An entry at the end of a menu, which thereby becomes one. The shortcut is spelled "Ctrl+N", "Del".
  Menu(Menu& parent, const std::string& name, const std::string& caption, const std::string& shortcut = "");
  ~Menu();
  Menu(const Menu&) = delete;
  Menu& operator=(const Menu&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  bool Checked() const { return checked_; }
  void SetChecked(bool checked);
  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  /// Lists the child windows at the end of the menu, the active one with a mark; a click activates.
  void SetWindowList(bool list);

  /// An entry: it was chosen. A menu: it is about to open.
  std::function<void()> OnClick;

 private:
  struct Native;
  std::unique_ptr<Native> native_;
  std::string name_, caption_, tag_;
  bool enabled_ = true, visible_ = true, checked_ = false;
};

}  // namespace zelvane
