#include "surface/system/desktop/Programs.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QObject>
#include <cerrno>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace zelvane {

namespace {

/// As shells tell that a signal ended the program.
constexpr int kEndedBySignal = 128;

/// What the program's thread and the one that waits share.
struct Process {
  pid_t id = 0;
  std::mutex mutex;
  int code = kStillActive;
  /// Lives on the program's thread and wakes its event loop; null once nobody wants to hear.
  std::unique_ptr<QObject> listener = std::make_unique<QObject>();

  void End(int status) {
    code = WIFEXITED(status) ? WEXITSTATUS(status) : kEndedBySignal + WTERMSIG(status);
    if (listener)
      QMetaObject::invokeMethod(
          listener.get(), [] {}, Qt::QueuedConnection);
  }
};

/// Takes the exit code as soon as there is one, so that no dead entry stays in the process table, whether
/// anybody asks or not. Until it's taken the number is the program's: `Stop` never hits another one.
void WaitFor(Process& process) {
  siginfo_t told;
  while (::waitid(P_PID, static_cast<id_t>(process.id), &told, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
  }
  const std::lock_guard lock(process.mutex);
  int status = 0;
  ::waitpid(process.id, &status, 0);
  process.End(status);
}

class StartedProgram : public Program {
 public:
  explicit StartedProgram(std::shared_ptr<Process> process) : process_(std::move(process)) {}
  ~StartedProgram() override {
    const std::lock_guard lock(process_->mutex);
    process_->listener.reset();
  }
  int ExitCode() override {
    const std::lock_guard lock(process_->mutex);
    return process_->code;
  }
  void Stop() override {
    const std::lock_guard lock(process_->mutex);
    if (process_->code == kStillActive) ::kill(-process_->id, SIGKILL);
  }

 private:
  std::shared_ptr<Process> process_;
};

/// 0 where it couldn't be started. The program begins with no signal blocked or ignored, and leads a group of
/// its own.
pid_t Spawn(const std::string& path, const std::vector<std::string>& arguments) {
  std::vector<char*> words{const_cast<char*>(path.c_str())};
  for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  sigset_t none, all;
  sigemptyset(&none);
  sigfillset(&all);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setflags(&attributes,
                           POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  pid_t process = 0;
  const int error = ::posix_spawn(&process, path.c_str(), nullptr, &attributes, words.data(), environ);
  posix_spawnattr_destroy(&attributes);
  return error == 0 ? process : 0;
}

}  // namespace

std::unique_ptr<Program> StartProgram(const std::string& path, const std::vector<std::string>& arguments) {
  auto process = std::make_shared<Process>();
  process->id = Spawn(path, arguments);
  if (process->id == 0) return nullptr;
  try {
    std::thread([process] { WaitFor(*process); }).detach();
  } catch (const std::system_error&) {
    process->code = 0;  // no thread to be had: it runs, but its end stays unknown
  }
  return std::make_unique<StartedProgram>(process);
}

void GoOnUnseen() {
  constexpr int kInThisFolder = 1, kWithoutStandardFiles = 0;
  static_cast<void>(::daemon(kInThisFolder, kWithoutStandardFiles));
}

}  // namespace zelvane
