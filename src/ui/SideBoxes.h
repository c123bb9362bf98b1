#pragma once

#include "surface/forms/controls/Label.h"
#include "ui/NumberBox.h"

namespace zelvane {

/// The two labelled boxes that ask for the width and the height of an image in pixels, in a window that
/// measures in twips.
struct SideBoxes {
  Label& lblWidth;
  NumberBox& txtWidth;
  Label& lblHeight;
  NumberBox& txtHeight;

  /// Whole numbers of 1 to 32,767, each box called by its label's text.
  void Prepare() const;
  struct Corner {
    Single right, bottom;
  };
  /// The height below the width, each line `row` high. Returns where the boxes end.
  Corner PlaceAt(Single left, Single top, Single row) const;
  /// Whether both are 1 to 32,767, as what is typed isn't limited. If not that is told, and the box at fault
  /// gets the keyboard.
  bool HoldSize() const;
  /// There is no memory for an image of what the boxes hold. The note of it is taken away.
  void TellWantOfMemory() const;
};

}  // namespace zelvane
