#include "surface/system/desktop/Instance.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <future>
#include <string>
#include <vector>

#include "surface/forms/windows/EventLoop.h"

using namespace zelvane;

namespace {

constexpr int kLong = 20000, kShort = 30;  // ms

/// Starts of the program, each on a thread where it may wait while the test plays the first one.
class Instances : public testing::Test {
 protected:
  Instances() { qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit()); }
  ~Instances() override { qunsetenv("XDG_RUNTIME_DIR"); }

  static std::future<StartRole> Start(Instance& instance, const std::string& path, int patience = kLong) {
    return std::async(std::launch::async, [&instance, path, patience] {
      return instance.Begin({path, {"token", "id"}}, patience);
    });
  }
  static StartRole Answered(std::future<StartRole> start) {
    while (start.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) DoEvents();
    return start.get();
  }
  void Listen() {
    first_.Listen([this](const StartOrder& order, const StandBy&) {
      heard_.push_back(order.path + ' ' + order.activation.token + ' ' + order.activation.startup_id);
    });
  }
  /// Somebody at the door who says `words`.
  int Call(const std::string& words) {
    const QByteArray path =
        folder_.filePath(QDir(folder_.path()).entryList({"*.socket"}, QDir::System)[0]).toLocal8Bit();
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
    const int caller = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(::connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::send(caller, words.data(), words.size(), 0), static_cast<ssize_t>(words.size()));
    return caller;
  }

  QTemporaryDir folder_;
  Instance first_, later_;
  std::vector<std::string> heard_;
};

}  // namespace

TEST_F(Instances, TheFirstTakesWhatLaterStartsAreGiven) {
  ASSERT_EQ(first_.Begin({}, 0), StartRole::First);
  const std::string longest = '/' + std::string(200000, 'x') + "\n\xFF";
  std::vector<std::future<StartRole>> starts;
  std::vector<Instance> instances(10);
  for (Instance& instance : instances) starts.push_back(Start(instance, longest));
  // Neither who says nothing nor who says half of it holds the others up; what is no order is let go.
  const std::vector<int> callers = {Call(""), Call(std::string("/half", 6)), Call("/none")};
  ::shutdown(callers[2], SHUT_WR);
  Listen();
  for (std::future<StartRole>& start : starts) EXPECT_EQ(Answered(std::move(start)), StartRole::HandedOver);
  EXPECT_EQ(heard_, std::vector(10, longest + " token id"));
  for (const int caller : callers) ::close(caller);
  DoEvents();
  EXPECT_EQ(heard_.size(), 10u);
}

TEST_F(Instances, AnOrderThatTheFirstDidNotTakeIsWithdrawn) {
  ASSERT_EQ(first_.Begin({}, 0), StartRole::First);
  EXPECT_EQ(Start(later_, "/late.png", kShort).get(), StartRole::Further);
  EXPECT_FALSE(later_.IsFirst());
  Listen();
  EXPECT_EQ(Answered(Start(later_, "/new.png")), StartRole::HandedOver);
  EXPECT_EQ(heard_, std::vector<std::string>{"/new.png token id"});
}

TEST_F(Instances, WhoWaitsForOneThatEndsTakesItsPlace) {
  ASSERT_EQ(first_.Begin({}, 0), StartRole::First);
  Instance third;
  std::future<StartRole> second_start = Start(later_, "/a.png"), third_start = Start(third, "/b.png");
  ::close(Call("/c.png"));
  first_.End();
  // Of the two that wait one is the first now, to which the other's picture goes.
  using namespace std::chrono_literals;
  const auto leads = [](std::future<StartRole>& start) {
    return start.wait_for(1ms) == std::future_status::ready;
  };
  while (!leads(second_start) && !leads(third_start)) {
  }
  const bool is_second = leads(second_start);
  (is_second ? later_ : third).Listen([this](const StartOrder& order, const StandBy&) {
    heard_.push_back(order.path);
  });
  EXPECT_EQ(Answered(std::move(is_second ? third_start : second_start)), StartRole::HandedOver);
  EXPECT_EQ(heard_, std::vector<std::string>{is_second ? "/b.png" : "/a.png"});
}

TEST_F(Instances, WithoutAFolderOfItsOwnItMeetsInTheTemporaryOne) {
  qputenv("TMPDIR", folder_.path().toLocal8Bit());
  for (const QByteArray& runtime :
       {folder_.filePath("none").toLocal8Bit(), QByteArray(), QByteArray("/tmp")}) {
    qputenv("XDG_RUNTIME_DIR", runtime);
    Instance first, second;
    EXPECT_EQ(first.Begin({}, 0), StartRole::First);
    EXPECT_EQ(second.Begin({}, kShort), StartRole::Further);
    EXPECT_FALSE(QFile::exists(folder_.filePath("none"))) << "the folder isn't ours to make";
  }
  // Each display has its first.
  Instance first, other;
  EXPECT_EQ(first.Begin({}, 0), StartRole::First);
  qputenv("WAYLAND_DISPLAY", "/run/other");
  EXPECT_EQ(other.Begin({}, 0), StartRole::First);
  qunsetenv("WAYLAND_DISPLAY");
  qunsetenv("TMPDIR");
}
