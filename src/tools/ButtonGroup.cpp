#include "tools/ButtonGroup.h"

#include "surface/system/desktop/Screen.h"

namespace zelvane {
namespace {

constexpr int kFaceSize = 24;

void DrawEdges(PictureSurface& button, Color top_left, Color bottom_right) {
  const auto right = static_cast<Single>(button.ScaleWidth() - 1);
  const auto bottom = static_cast<Single>(button.ScaleHeight() - 1);
  button.Line(0, 0, right, 0, top_left);
  button.Line(0, 0, 0, bottom, top_left);
  button.Line(right, 0, right, bottom, bottom_right);
  button.Line(0, bottom, right, bottom, bottom_right);
}

}  // namespace

void DrawButtonLook(PictureSurface& button, ButtonLook look) {
  button.SetBackColor(look == ButtonLook::Pressed ? SystemColor::ScrollBar : SystemColor::ButtonFace);
  if (look == ButtonLook::Hover) DrawEdges(button, SystemColor::ButtonHighlight, SystemColor::ButtonShadow);
  if (look == ButtonLook::Pressed) DrawEdges(button, SystemColor::ButtonShadow, SystemColor::ButtonHighlight);
  button.Refresh();
}

void DrawEdgeAcross(PictureSurface& panel) {
  const auto right = static_cast<Single>(panel.ScaleWidth());
  panel.Line(0, 0, right, 0, SystemColor::ButtonShadow);
  panel.Line(0, 1, right, 1, SystemColor::ButtonHighlight);
  panel.Refresh();
}

void DrawEdgeDown(PictureSurface& panel, int x) {
  const auto left = static_cast<Single>(x), bottom = static_cast<Single>(panel.ScaleHeight());
  panel.Line(left, 0, left, bottom, SystemColor::ButtonShadow);
  panel.Line(left + 1, 0, left + 1, bottom, SystemColor::ButtonHighlight);
  panel.Refresh();
}

ButtonGroup::ButtonGroup(int count, Control& parent, const std::string& name)
    : buttons_(count, parent, name), shown_(static_cast<size_t>(count), ButtonLook::Idle) {}

void ButtonGroup::SetFace(int index, const std::string& icon, const std::string& tooltip) {
  PictureSurface& button = buttons_[index];
  button.SetIcon(icon, kFaceSize);
  button.SetToolTip(tooltip);
  button.SetAccessibleName(tooltip);
  DrawButtonLook(button, ButtonLook::Idle);
}

void ButtonGroup::Draw(int index, ButtonLook look) {
  ButtonLook& shown = shown_.at(static_cast<size_t>(index));
  if (shown == look) return;
  shown = look;
  DrawButtonLook(buttons_[index], look);
}

/// A group on a bar that isn't seen costs nothing, not even the question where the pointer is.
void ButtonGroup::Hover(const PressedFlags& pressed) {
  if (!IsSeen()) return;
  const Screen::Point pointer = Screen::CursorPosition();
  for (int i = 0; i < Count(); ++i) {
    if (pressed[static_cast<size_t>(i)]) continue;
    Draw(i, buttons_[i].WindowRect().Contains(pointer.x, pointer.y) ? ButtonLook::Hover : ButtonLook::Idle);
  }
}

}  // namespace zelvane
