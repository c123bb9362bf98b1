#include "surface/system/files/FolderWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <QTimer>
#include <array>
#include <cstddef>

namespace zelvane {
namespace {

constexpr int kPauseMs = 100;
constexpr uint32_t kWatched = IN_CREATE | IN_DELETE | IN_MOVE | IN_ONLYDIR;

/// Takes what has come in: true where a folder was among it, or where there was too much to tell.
bool TakeFolderChanges(int descriptor) {
  constexpr size_t kRoom = 16 * 1024;
  alignas(inotify_event) std::array<std::byte, kRoom> room;
  bool is_changed = false;
  for (ssize_t length; (length = read(descriptor, room.data(), room.size())) > 0;) {
    for (ssize_t at = 0; at < length;) {
      const auto* event = reinterpret_cast<const inotify_event*>(room.data() + at);
      const bool is_folder = (event->mask & IN_ISDIR) && (event->mask & (IN_CREATE | IN_DELETE | IN_MOVE));
      is_changed |= is_folder || (event->mask & IN_Q_OVERFLOW);
      at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
  }
  return is_changed;
}

}  // namespace

class FolderWatch::Notices {
 public:
  Notices(const FolderWatch& watch, int descriptor) : coming_(descriptor, QSocketNotifier::Read) {
    pause_.setSingleShot(true);
    pause_.setInterval(kPauseMs);
    QObject::connect(&coming_, &QSocketNotifier::activated, [this, descriptor] {
      if (TakeFolderChanges(descriptor) && !pause_.isActive()) pause_.start();
    });
    QObject::connect(&pause_, &QTimer::timeout, [&watch] {
      if (watch.OnChange) watch.OnChange();
    });
  }

 private:
  QSocketNotifier coming_;
  QTimer pause_;
};

FolderWatch::FolderWatch()
    : descriptor_(new int(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), [](const int* descriptor) {
        if (*descriptor >= 0) close(*descriptor);
        delete descriptor;
      }) {
  if (*descriptor_ >= 0) notices_ = std::make_unique<Notices>(*this, *descriptor_);
}

FolderWatch::~FolderWatch() = default;

std::function<void(const std::string& folder)> FolderWatch::Adder() const {
  return [descriptor = descriptor_](const std::string& folder) {
    inotify_add_watch(*descriptor, folder.c_str(), kWatched);
  };
}

}  // namespace zelvane
