#pragma once

#include <array>
#include <string>
#include <vector>

#include "surface/forms/picture/PictureSurface.h"

namespace zelvane {

/// How a hand-drawn button looks. Idle has no edges, hover raised ones, pressed sunken ones.
enum class ButtonLook { Idle, Hover, Pressed };

/// Draws the look: the button's face and its outermost rows and columns.
void DrawButtonLook(PictureSurface& button, ButtonLook look);
/// An edge over a panel's width: a line in shadow colour on top, one in highlight colour beneath.
void DrawEdgeAcross(PictureSurface& panel);
/// An edge over a panel's height, at column `x` and the one beside it.
void DrawEdgeDown(PictureSurface& panel, int x);

/// Which buttons of a group are drawn pressed.
using PressedFlags = std::array<bool, 21>;

/// Picture buttons of which one is pressed. The pressed one doesn't react to the pointer.
class ButtonGroup {
 public:
  ButtonGroup(int count, Control& parent, const std::string& name);

  PictureSurface& operator[](int index) { return buttons_[index]; }
  int Count() const { return buttons_.Count(); }

  /// Gives a button its picture, an icon of the program, and its name for people.
  void SetFace(int index, const std::string& icon, const std::string& tooltip);
  /// Draws a button where it doesn't look so already.
  void Draw(int index, ButtonLook look);
  /// Raises the button under the pointer; flattens the others, but for the pressed ones.
  void Hover(const PressedFlags& pressed);

 private:
  bool IsSeen() const { return Count() > 0 && buttons_[0].WindowRect().right >= 0; }
  ControlArray<PictureSurface> buttons_;
  std::vector<ButtonLook> shown_;
};

}  // namespace zelvane
