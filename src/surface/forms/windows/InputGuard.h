#pragma once

#include <memory>

namespace zelvane {

/// While one stands, the pointer, the keys and the close buttons of windows do nothing in the program, but
/// that Esc, or closing a window, asks to give up what it is busy with.
class InputGuard {
 public:
  InputGuard();
  ~InputGuard();

  bool GaveUp() const;

 private:
  class Filter;
  std::unique_ptr<Filter> filter_;
};

}  // namespace zelvane
