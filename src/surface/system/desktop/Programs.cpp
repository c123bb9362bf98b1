#include "surface/system/desktop/Programs.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <system_error>
#include <thread>

namespace zelvane {

namespace {

using Code = std::atomic<int>;

/// As shells tell that a signal ended the program.
constexpr int kEndedBySignal = 128;

/// Takes the exit code as soon as there is one, so that no dead entry stays in the process table, whether
/// anybody asks or not.
void WaitFor(pid_t process, const std::shared_ptr<Code>& code) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return code->store(0);
  }
  code->store(WIFEXITED(status) ? WEXITSTATUS(status) : kEndedBySignal + WTERMSIG(status));
}

class StartedProgram : public Program {
 public:
  explicit StartedProgram(std::shared_ptr<Code> code) : code_(std::move(code)) {}
  int ExitCode() override { return code_->load(); }

 private:
  std::shared_ptr<Code> code_;
};

/// 0 where it couldn't be started. The program begins with no signal blocked or ignored.
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
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  pid_t process = 0;
  const int error = ::posix_spawn(&process, path.c_str(), nullptr, &attributes, words.data(), environ);
  posix_spawnattr_destroy(&attributes);
  return error == 0 ? process : 0;
}

}  // namespace

std::unique_ptr<Program> StartProgram(const std::string& path, const std::vector<std::string>& arguments) {
  const pid_t process = Spawn(path, arguments);
  if (process == 0) return nullptr;
  auto code = std::make_shared<Code>(kStillActive);
  try {
    std::thread(WaitFor, process, code).detach();
  } catch (const std::system_error&) {
    code->store(0);  // no thread to be had: it runs, but its end stays unknown
  }
  return std::make_unique<StartedProgram>(code);
}

}  // namespace zelvane
