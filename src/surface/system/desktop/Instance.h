#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "surface/system/desktop/Activation.h"
#include "surface/system/files/Descriptor.h"

namespace zelvane {

/// What a start of the program hands to the instance that runs already.
struct StartOrder {
  std::string path;  ///< of a picture, absolute; empty without one
  Activation activation;
};

enum class StartRole {
  First,      ///< no other runs; later starts are told to this one
  Further,    ///< another runs but doesn't answer, or there's no place to meet; nobody hears of this one
  HandedOver  ///< the first has taken the order
};

/// A later start whose order the first has taken. It stands by: where this goes and hasn't told anything, it
/// runs on and opens its picture itself.
class StandBy {
 public:
  explicit StandBy(Descriptor socket) : socket_(std::move(socket)) {}
  /// The picture is open, or the person knows why it isn't.
  void TellDone() const;

 private:
  Descriptor socket_;
};

/// Of one user's instances on one display, the first is told of all later starts.
///
/// They meet in the user's runtime folder, or where there is none in the user's own temporary one. Who holds
/// the lock of a file there is the first, for as long as the process lives; nobody else makes or removes the
/// socket beside it. The file stays for ever: a lock whose file goes could be held twice.
class Instance {
 public:
  Instance();
  ~Instance();

  /// Needs nothing of the toolkit. Waits for a first that is starting, ending or busy, but no longer than
  /// `patience` milliseconds. An order is either taken or withdrawn, never both.
  StartRole Begin(const StartOrder& order, int patience);
  bool IsFirst() const;
  /// After an order was taken: waits, however long, until the first has carried it out. False where the first
  /// has gone without.
  bool WaitUntilDone();

  /// Has the event loop take the orders of later starts, also those that have come meanwhile. Only the first
  /// hears of any.
  void Listen(std::function<void(const StartOrder&, StandBy)> on_order);
  /// Whoever starts now is the first.
  void End();

 private:
  class Listener;
  struct Held;
  std::unique_ptr<Held> held_;
  Descriptor first_;  ///< the connection to the one that took the order
};

}  // namespace zelvane
