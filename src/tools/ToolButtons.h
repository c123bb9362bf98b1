#pragma once

#include <memory>

#include "shell/state/State.h"
#include "tools/ButtonGroup.h"

namespace zelvane {

/// What is known of a tool before it does anything.
struct ToolFacts {
  const char* tooltip;
  const char* icon;  ///< of the button; the drawn pointer has the same name
  int hot_x, hot_y;  ///< the pixel of the pointer that points
};
const ToolFacts& FactsOf(int tool);

/// The tool buttons in the left bar, in groups with a line between them.
struct ToolButtonControls {
  explicit ToolButtonControls(Control& LeftBar);

  PictureSurface ColorsBg;
  ButtonGroup Cmd;
  ControlArray<PictureSurface> SplitH;

 private:
  void PlaceButtons();
};

/// Stands while the main window does.
inline std::unique_ptr<ToolButtonControls> ToolButtons;

}  // namespace zelvane
