#pragma once

#include <functional>

#include "surface/forms/windows/Form.h"

namespace zelvane {

/// A form is being made, of which only the name and the window stand yet.
inline std::function<void(Form& form)> OnFormMade;

}  // namespace zelvane
