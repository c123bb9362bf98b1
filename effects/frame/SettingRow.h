#pragma once

#include <QGridLayout>
#include <functional>

#include "effects/pixels/Effect.h"

namespace zelvane {

/// A setting's controls, in a row of a grid. `Value` reads them, `SetValue` writes them and tells `OnChange`
/// where that changed anything.
struct SettingRow {
  std::function<double()> Value;
  std::function<void(double)> SetValue;
};

SettingRow AddSettingRow(const Setting& setting, QGridLayout& grid, const std::function<void()>& OnChange);

}  // namespace zelvane
