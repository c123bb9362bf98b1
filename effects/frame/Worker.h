#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "effects/pixels/Effect.h"
#include "surface/raster/Bitmap.h"

namespace zelvane {

/// An effect's result on the whole picture, and the reduced copy of that.
struct Result {
  Bitmap whole, reduced;
};

/// Applies an effect on a thread of its own, one order at a time.
class Worker {
 public:
  /// No value where memory doesn't suffice.
  std::function<void(std::optional<Result>)> OnDone;

  ~Worker() { Stop(); }
  /// Stops what runs; `OnDone` then comes for this order only, as an event of this thread.
  void Start(const Effect& effect, const Bitmap& picture, const Values& values, double scale);
  void Stop();
  bool IsRunning() const { return work_ != nullptr; }
  float Progress() const { return work_ ? work_->Progress() : 0; }

 private:
  QObject here_;
  std::shared_ptr<Work> work_;
  std::jthread thread_;
};

}  // namespace zelvane
