#pragma once

#include <cstdint>
#include <string>

#include "surface/forms/controls/Control.h"

namespace zelvane {

enum Appearances : int16_t { kFlat = 0, kRaised = 1 };

/// A button with a drawn icon above its caption. It lies flat until the pointer is over it, or until it is
/// raised, which shows that what it stands for is the case.
class TileButton : public Control {
 public:
  /// `icon`: an SVG of the program's icons, shown `size` logical pixels square.
  TileButton(Control& parent, const std::string& name, const std::string& caption, const std::string& icon,
             int size);

  /// A click leaves it as it is.
  int16_t Appearance() const { return appearance_; }
  void SetAppearance(int16_t appearance);

 protected:
  bool ClicksByPointer() const override { return false; }

 private:
  int16_t appearance_ = kFlat;
};

}  // namespace zelvane
