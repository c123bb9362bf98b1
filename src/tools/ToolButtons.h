#pragma once

#include <memory>

#include "shell/state/State.h"
#include "surface/forms/PictureSurface.h"

namespace zelvane {

/// How a hand-drawn button looks. Idle has no edges, hover raised ones, pressed sunken ones.
enum class ButtonLook { Idle, Hover, Pressed };

/// Draws the look on a button's outermost rows and columns, and its face.
void DrawButtonLook(PictureSurface& button, ButtonLook look);
/// Two lines beside each other, the second in highlight colour: the edge between panels.
void DrawEdgeAcross(PictureSurface& panel);

/// What is known of a tool before it does anything.
struct ToolFacts {
  const char* tooltip;
  const char* icon;
};
const ToolFacts& FactsOf(int tool);

/// The tool buttons in the left bar, in groups with a line between them.
struct ToolButtonControls {
  explicit ToolButtonControls(Control& LeftBar);

  PictureSurface ColorsBg;
  ControlArray<PictureSurface> Cmd;
  ControlArray<PictureSurface> SplitH;
};

/// Stands while the main window does.
inline std::unique_ptr<ToolButtonControls> ToolButtons;

}  // namespace zelvane
