#include "effects/frame/Worker.h"

#include <utility>

#include "effects/frame/Reduced.h"
#include "surface/raster/FailingStep.h"

namespace zelvane {

void Worker::Start(const Effect& effect, const Bitmap& picture, const Values& values, double scale) {
  Stop();
  work_ = std::make_shared<Work>();
  thread_ = std::jthread([this, &effect, picture, values, scale, work = work_] {
    std::optional<Result> result;
    Attempt([&] {
      Bitmap whole = effect.apply(picture, values, *work);
      Bitmap reduced = work->IsStopped() ? Bitmap() : Reduced(whole, scale);
      result = Result{std::move(whole), std::move(reduced)};
    });
    QMetaObject::invokeMethod(
        &here_,
        [this, work, result = std::move(result)]() mutable {
          if (work != work_) return;
          work_.reset();
          OnDone(std::move(result));
        },
        Qt::QueuedConnection);
  });
}

void Worker::Stop() {
  if (work_) work_->Stop();
  work_.reset();
  if (thread_.joinable()) thread_.join();
}

}  // namespace zelvane
