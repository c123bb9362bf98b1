#pragma once

#include <functional>
#include <string>
#include <vector>

#include "surface/forms/windows/Form.h"

namespace zelvane {

class MdiFrame;

enum Arrangements : int16_t { kCascade = 0, kTileHorizontal = 1, kTileVertical = 2 };

/// The main window: a menu bar on top, panels docked at its sides, child windows in between. Its inside, as
/// `ScaleWidth` and `ScaleHeight` tell it, is the part for the child windows.
class MdiForm : public Form {
 public:
  explicit MdiForm(const std::string& name);
  ~MdiForm() override;

  /// The program's main window; null before it is made and from its unloading on.
  static MdiForm* Main();

  /// The child that has or last had the keyboard; null without one. A minimised child may be active.
  Form* ActiveForm() const;
  /// The child windows in the order of their making.
  std::vector<Form*> Children() const;
  /// 0 cascades, 1 tiles one above the other, 2 tiles side by side; minimised children stay.
  void Arrange(int16_t arrangement);

  void Dock(Control& panel, Align align) override;

  /// Another child became the active one, or the last one went.
  std::function<void()> OnActiveFormChanged;
  /// Files were dropped on the window or on what is in it, as `DroppedFiles` tells them. None are taken while
  /// the window is disabled or a modal one is up.
  std::function<void(const std::vector<std::string>& Paths)> OnFilesDropped;

 private:
  friend class Menu;
  friend class MdiChild;
  bool IsMain() const override { return true; }
  MdiFrame* frame_ = nullptr;
  static inline MdiForm* main_ = nullptr;
};

/// A window inside the main one.
class MdiChild : public Form {
 public:
  MdiChild(const std::string& name, MdiForm& main);

  /// Asks for an inside of that size, in twips. The window takes it as far as the main window has room, now
  /// and whenever the room changes, and is wide enough for its caption. One that shows already only grows;
  /// one that the person has sized keeps its size.
  void Fit(Single width, Single height);
};

}  // namespace zelvane
