#pragma once

#include <cstdint>

#include "surface/forms/windows/Form.h"

namespace zelvane {

/// The keys that every window has: Esc unloads it, Shift+Esc the main window behind it as well.
void RouteKey(Form& form, int16_t KeyCode, int16_t Shift);

}  // namespace zelvane
