#pragma once

#include <QGridLayout>
#include <functional>

#include "effects/pixels/Effect.h"

namespace zelvane {

/// A setting's controls, in a row of a grid. `Value` reads them, `SetValue` writes them and tells `OnChange`
/// where that changed anything; `SetEnabled` greys them, with their label.
struct SettingRow {
  std::function<double()> Value;
  std::function<void(double)> SetValue;
  std::function<void(bool)> SetEnabled = {};
};

SettingRow AddSettingRow(const Setting& setting, QGridLayout& grid, const std::function<void()>& OnChange);

}  // namespace zelvane
