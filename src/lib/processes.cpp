#include "lib/processes.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <mutex>
#include <optional>
#include <vector>

#include "base/descriptor.h"
#include "base/environment.h"
#include "lib/command_line.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

constexpr int kNotStarted = -1;
constexpr int kChildFailed = 127;

// Signals that a write raises; ignored here, since a failing write is told.
constexpr int kWriteSignals[] = {SIGPIPE, SIGXFSZ};

struct Pipe {
  Descriptor reading;
  Descriptor writing;
};

// Keeps clear of the numbers 0 to 2, which the child is about to replace; one of them may be free.
Descriptor AboveStandardStreams(Descriptor descriptor) {
  if (!descriptor || descriptor.get() > STDERR_FILENO) return descriptor;
  return Descriptor(fcntl(descriptor.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

std::optional<Pipe> OpenPipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
  Pipe pipe{Descriptor(ends[0]), Descriptor(ends[1])};
  pipe.reading = AboveStandardStreams(std::move(pipe.reading));
  pipe.writing = AboveStandardStreams(std::move(pipe.writing));
  if (!pipe.reading || !pipe.writing) return std::nullopt;
  return pipe;
}

}  // namespace

/// All that a child needs, made before the fork: between fork and exec it must not allocate, since
/// another thread may have held the allocator's lock.
class Launch {
 public:
  /// Nothing if the command has no word or too many.
  static std::optional<Launch> Prepare(std::string_view command) {
    if (CommandNeedsShell(command)) return Launch("/bin/sh", {"sh", "-c", std::string(command)});
    auto words = SplitCommand(command);
    if (!words) return std::nullopt;
    std::string program = words->front();
    return Launch(std::move(program), std::move(*words));
  }

  Launch(Launch&&) = default;

  const char* file = nullptr;  ///< where both outputs go, or null
  int output = -1;             ///< the descriptor where both outputs go, or -1
  int failure = -1;            ///< the pipe that takes the reason if exec fails

  [[noreturn]] void RunInChild() const {
    if (!RestoreSignals() || !RedirectOutputs()) _exit(kChildFailed);
    execvp(program_.c_str(), pointers_.data());
    const int reason = errno;
    RetryInterrupted([&] { return write(failure, &reason, sizeof reason); });
    _exit(kChildFailed);
  }

 private:
  Launch(std::string program, std::vector<std::string> words)
      : program_(std::move(program)), words_(std::move(words)) {
    for (std::string& word : words_) pointers_.push_back(word.data());
    pointers_.push_back(nullptr);
  }

  static bool RestoreSignals() {
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    bool restored = true;
    for (const int number : kWriteSignals) restored &= sigaction(number, &action, nullptr) == 0;
    return restored;
  }

  bool RedirectOutputs() const {
    int target = output;
    if (file != nullptr) {
      target = RetryInterrupted([&] { return open(file, O_WRONLY | O_CREAT | O_TRUNC, 0666); });
      if (target < 0) return false;
    }
    if (target < 0) return true;
    if (dup2(target, STDOUT_FILENO) < 0 || dup2(target, STDERR_FILENO) < 0) return false;
    if (target > STDERR_FILENO) close(target);
    return true;
  }

  std::string program_;
  std::vector<std::string> words_;
  std::vector<char*> pointers_;
};

/// Where a command's outputs go, if not to this process's own.
struct Processes::Output {
  std::string* capture = nullptr;
  size_t capacity = 0;
  const char* file = nullptr;
};

namespace {

bool ExecFailed(const Pipe& failure) {
  int reason = 0;
  return RetryInterrupted([&] { return read(failure.reading.get(), &reason, sizeof reason); }) ==
         sizeof reason;
}

// Keeps what fits and reads on to the end, so that a talkative child never blocks.
void Collect(const Descriptor& output, std::string& text, size_t limit) {
  std::vector<char> piece(size_t{64} * 1024);
  while (true) {
    const ssize_t count = RetryInterrupted([&] { return read(output.get(), piece.data(), piece.size()); });
    if (count <= 0) return;
    text.append(piece.data(), std::min(static_cast<size_t>(count), limit - text.size()));
  }
}

}  // namespace

pid_t Processes::Start(const Launch& launch) {
  std::fflush(stdout);
  const std::lock_guard list(lock_);
  children_.reserve(children_.size() + 1);
  const std::lock_guard environment(EnvironmentLock());
  const pid_t child = fork();
  if (child == 0) launch.RunInChild();
  if (child > 0) children_.push_back(child);
  return child;
}

// The child leaves the list before its number can be given to another process.
int Processes::WaitFor(pid_t child) {
  siginfo_t ended{};
  RetryInterrupted([&] { return waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT); });
  const std::lock_guard list(lock_);
  std::erase(children_, child);
  int status = 0;
  if (RetryInterrupted([&] { return waitpid(child, &status, 0); }) != child) return kNotStarted;
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
  return kNotStarted;
}

int Processes::morv_exec_run(std::string_view command, const Output& wanted) {
  if (!MorvSandboxAllowsExec(command) || command.empty()) return kNotStarted;
  auto launch = Launch::Prepare(command);
  auto failure = OpenPipe();
  auto output = wanted.capture == nullptr ? std::optional<Pipe>(Pipe{}) : OpenPipe();
  if (!launch || !failure || !output) return kNotStarted;
  launch->file = wanted.file;
  launch->output = output->writing.get();
  launch->failure = failure->writing.get();

  const pid_t child = Start(*launch);
  failure->writing.Close();
  output->writing.Close();
  if (child < 0) return kNotStarted;
  const bool failed = ExecFailed(*failure);
  if (!failed && wanted.capture != nullptr) Collect(output->reading, *wanted.capture, wanted.capacity - 1);
  output->reading.Close();
  const int status = WaitFor(child);
  return failed ? kNotStarted : status;
}

int Processes::RunAndRemember(std::string_view command, const Output& output) {
  int status = kNotStarted;
  try {
    status = morv_exec_run(command, output);
  } catch (const std::exception&) {  // out of memory
  }
  last_status_ = status;
  return status;
}

int Processes::MorvExec(std::string_view command) {
  return RunAndRemember(command, {});
}

std::string Processes::MorvExecCapture(std::string_view command, size_t capacity) {
  std::string text;
  if (capacity == 0) return text;
  RunAndRemember(command, {&text, capacity, nullptr});
  return text;
}

int Processes::MorvExecToFile(std::string_view command, const std::string& path) {
  return RunAndRemember(command, {nullptr, 0, path.c_str()});
}

bool Processes::Kill(pid_t pid) {
  const std::lock_guard list(lock_);
  const bool allowed = !MorvSandboxActive() || std::ranges::find(children_, pid) != children_.end();
  return allowed && kill(pid, SIGKILL) == 0;
}

void IgnoreWriteSignals() {
  for (const int number : kWriteSignals) std::signal(number, SIG_IGN);
}

}  // namespace vorc
