#include "surface/system/desktop/Instance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QObject>
#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <thread>
#include <utility>

#include "surface/raster/FailingStep.h"
#include "surface/system/files/Descriptor.h"
#include "surface/system/files/Files.h"

namespace zelvane {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kBetweenTries{4};
constexpr size_t kLongestOrder = size_t{1} << 20;  // bytes
constexpr char kTaken = 1, kDone = 2;              // the first's answers

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

/// A folder that only this user writes to.
bool IsOwnFolder(const std::string& path) {
  constexpr mode_t kOthersWrite = 0022;
  struct stat found = {};
  return path.starts_with('/') && ::stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode) &&
         found.st_uid == ::geteuid() && (found.st_mode & kOthersWrite) == 0;
}

/// Each display has a first of its own: nobody looks at another one for a window.
std::string DisplayName() {
  std::string display = Variable("WAYLAND_DISPLAY");
  if (display.empty()) display = Variable("DISPLAY");
  std::replace(display.begin(), display.end(), '/', '_');
  return display;
}

/// Where the instances of this user meet.
struct MeetingPlace {
  Descriptor folder;
  std::string lock, socket;  ///< names in it

  MeetingPlace() {
    const std::string runtime = Variable("XDG_RUNTIME_DIR");
    folder = OpenFolder(IsOwnFolder(runtime) ? runtime : OwnTemporaryFolder());
    const std::string name = "zelvane" + DisplayName();
    lock = name + ".lock";
    socket = name + ".socket";
  }

  /// Through the folder's number, since the place for a socket's path is short.
  sockaddr_un Address() const {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::string path = JoinPath(PathOf(folder), socket);
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
  }
};

Descriptor NewSocket() {
  return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

template <class Call>
bool AtAddress(const MeetingPlace& place, const Descriptor& socket, Call call) {
  const sockaddr_un address = place.Address();
  return call(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

/// For the holder of the lock: a socket that stands there was left by one that died.
Descriptor OpenForStarts(const MeetingPlace& place) {
  ::unlinkat(place.folder.Get(), place.socket.c_str(), 0);
  Descriptor door = NewSocket();
  if (!AtAddress(place, door, ::bind) || ::listen(door.Get(), SOMAXCONN) != 0) return Descriptor();
  return door;
}

bool IsOfThisUser(const Descriptor& socket) {
  ucred other = {};
  socklen_t size = sizeof other;
  return ::getsockopt(socket.Get(), SOL_SOCKET, SO_PEERCRED, &other, &size) == 0 && other.uid == ::geteuid();
}

/// Each text of the order with an end behind it.
std::string Packed(const StartOrder& order) {
  std::string packed;
  for (const std::string* text : {&order.path, &order.activation.token, &order.activation.startup_id})
    packed.append(text->c_str(), text->size() + 1);
  return packed;
}

std::optional<StartOrder> Unpacked(const std::string& packed) {
  StartOrder order;
  size_t at = 0;
  for (std::string* text : {&order.path, &order.activation.token, &order.activation.startup_id}) {
    const size_t end = packed.find('\0', at);
    if (end == std::string::npos) return std::nullopt;
    *text = packed.substr(at, end - at);
    at = end + 1;
  }
  return order;
}

bool WaitUntil(Clock::time_point deadline, const Descriptor& socket, short event) {
  pollfd waited{socket.Get(), event, 0};
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
  return ::poll(&waited, 1, static_cast<int>(std::max<decltype(left)>(left, 0))) > 0;
}

bool Send(const std::string& bytes, const Descriptor& socket, Clock::time_point deadline) {
  size_t at = 0;
  while (at < bytes.size()) {
    const ssize_t sent = ::send(socket.Get(), bytes.data() + at, bytes.size() - at, MSG_NOSIGNAL);
    if (sent > 0) at += static_cast<size_t>(sent);
    if (sent < 0 && errno != EAGAIN && errno != EINTR) return false;
    if (at < bytes.size() && Clock::now() >= deadline) return false;
    if (at < bytes.size()) WaitUntil(deadline, socket, POLLOUT);
  }
  return ::shutdown(socket.Get(), SHUT_WR) == 0;
}

bool HasAnswered(char answer, const Descriptor& socket) {
  char heard = 0;
  return ::recv(socket.Get(), &heard, 1, MSG_DONTWAIT) == 1 && heard == answer;
}

/// The connection to the first, which has taken the order; closed where it can't answer any further. Nothing:
/// there is none to hear it, or it hasn't taken it by the deadline and now can't any more.
std::optional<Descriptor> HandOver(const std::string& order, const MeetingPlace& place,
                                   Clock::time_point deadline) {
  Descriptor socket = NewSocket();
  if (!AtAddress(place, socket, ::connect) || !IsOfThisUser(socket)) return std::nullopt;
  if (!Send(order, socket, deadline)) return std::nullopt;
  WaitUntil(deadline, socket, POLLIN);
  if (HasAnswered(kTaken, socket)) return socket;
  // From here on an answer can't be sent, so the order is taken if one has come and withdrawn if not.
  ::shutdown(socket.Get(), SHUT_RD);
  return HasAnswered(kTaken, socket) ? std::optional(Descriptor()) : std::nullopt;
}

/// Reads one start's order as it comes, and takes it. One that says nothing holds nothing up.
class Caller : public QObject {
 public:
  Caller(QObject* parent, Descriptor socket, const std::function<void(const StartOrder&, StandBy)>& on_order)
      : QObject(parent),
        socket_(std::move(socket)),
        on_order_(on_order),
        readable_(socket_.Get(), QSocketNotifier::Read) {
    connect(&readable_, &QSocketNotifier::activated, this, [this] { Read(); });
  }

 private:
  void Read() {
    std::array<char, 4096> piece{};
    const ssize_t got = ::recv(socket_.Get(), piece.data(), piece.size(), 0);
    if (got < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (got > 0) heard_.append(piece.data(), static_cast<size_t>(got));
    if (got > 0 && heard_.size() <= kLongestOrder) return;
    readable_.setEnabled(false);
    deleteLater();
    if (got == 0) Take();
  }

  /// Where the answer can't be sent, the order has been withdrawn.
  void Take() {
    const std::optional<StartOrder> order = Unpacked(heard_);
    if (!order || ::send(socket_.Get(), &kTaken, 1, MSG_NOSIGNAL) != 1) return;
    Attempt([&] { on_order_(*order, StandBy(std::move(socket_))); });
  }

  Descriptor socket_;
  std::function<void(const StartOrder&, StandBy)> on_order_;
  QSocketNotifier readable_;
  std::string heard_;
};

}  // namespace

class Instance::Listener : public QObject {
 public:
  Listener(const Descriptor& door, std::function<void(const StartOrder&, StandBy)> on_order)
      : door_(door), on_order_(std::move(on_order)), callable_(door.Get(), QSocketNotifier::Read) {
    connect(&callable_, &QSocketNotifier::activated, this, [this] { Accept(); });
  }

 private:
  void Accept() {
    Descriptor socket(::accept4(door_.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (socket.IsOpen() && IsOfThisUser(socket)) new Caller(this, std::move(socket), on_order_);
  }

  const Descriptor& door_;
  std::function<void(const StartOrder&, StandBy)> on_order_;
  QSocketNotifier callable_;
};

struct Instance::Held {
  MeetingPlace place;
  Descriptor lock, door;
  std::unique_ptr<Listener> listener;

  /// 0, or the system's number of the error.
  int Lock() {
    lock = Descriptor(
        ::openat(place.folder.Get(), place.lock.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
    return lock.IsOpen() && ::flock(lock.Get(), LOCK_EX | LOCK_NB) == 0 ? 0 : errno;
  }
};

void StandBy::TellDone() const {
  ::send(socket_.Get(), &kDone, 1, MSG_NOSIGNAL);
}

Instance::Instance() = default;

Instance::~Instance() {
  End();
}

StartRole Instance::Begin(const StartOrder& order, int patience) {
  const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(patience);
  const std::string packed = Packed(order);
  auto held = std::make_unique<Held>();
  do {
    const int error = held->Lock();
    if (error == 0) {
      held->door = OpenForStarts(held->place);
      if (!held->door.IsOpen()) return StartRole::Further;
      held_ = std::move(held);
      return StartRole::First;
    }
    if (error != EWOULDBLOCK) return StartRole::Further;
    if (std::optional<Descriptor> first = HandOver(packed, held->place, deadline)) {
      first_ = std::move(*first);
      return StartRole::HandedOver;
    }
    std::this_thread::sleep_for(kBetweenTries);
  } while (Clock::now() < deadline);
  return StartRole::Further;
}

bool Instance::IsFirst() const {
  return held_ != nullptr;
}

bool Instance::WaitUntilDone() {
  if (!first_.IsOpen()) return true;
  pollfd waited{first_.Get(), POLLIN, 0};
  while (::poll(&waited, 1, -1) < 0 && errno == EINTR) {
  }
  return HasAnswered(kDone, std::exchange(first_, Descriptor()));
}

void Instance::Listen(std::function<void(const StartOrder&, StandBy)> on_order) {
  if (held_) held_->listener = std::make_unique<Listener>(held_->door, std::move(on_order));
}

void Instance::End() {
  if (!held_) return;
  held_->listener.reset();
  ::unlinkat(held_->place.folder.Get(), held_->place.socket.c_str(), 0);
  held_.reset();
}

}  // namespace zelvane
