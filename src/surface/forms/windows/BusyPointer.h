#pragma once

namespace zelvane {

/// While one stands, the pointer shows everywhere in the program that it's busy.
class BusyPointer {
 public:
  BusyPointer();
  ~BusyPointer();
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

  static bool IsStanding();
};

}  // namespace zelvane
