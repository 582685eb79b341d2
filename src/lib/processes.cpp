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

std::atomic<int> g_morv_last_exec_status{0};

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
    if (!RestoreBrokenPipes() || !RedirectOutputs()) _exit(kChildFailed);
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

  static bool RestoreBrokenPipes() {
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    return sigaction(SIGPIPE, &action, nullptr) == 0;
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

pid_t Fork(const Launch& launch) {
  std::fflush(stdout);
  const std::lock_guard guard(EnvironmentLock());
  const pid_t child = fork();
  if (child == 0) launch.RunInChild();
  return child;
}

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

int WaitFor(pid_t child) {
  int status = 0;
  if (RetryInterrupted([&] { return waitpid(child, &status, 0); }) != child) return kNotStarted;
  if (WIFEXITED(status)) return WEXITSTATUS(status);
  if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
  return kNotStarted;
}

// Runs a command with its outputs inherited, captured up to `capacity` - 1 bytes, or sent to a file.
int morv_exec_run(std::string_view command, std::string* capture, size_t capacity, const char* file) {
  if (!MorvSandboxAllowsExec(command) || command.empty()) return kNotStarted;
  auto launch = Launch::Prepare(command);
  auto failure = OpenPipe();
  auto output = capture == nullptr ? std::optional<Pipe>(Pipe{}) : OpenPipe();
  if (!launch || !failure || !output) return kNotStarted;
  launch->file = file;
  launch->output = output->writing.get();
  launch->failure = failure->writing.get();

  const pid_t child = Fork(*launch);
  failure->writing.Close();
  output->writing.Close();
  if (child < 0) return kNotStarted;
  const bool failed = ExecFailed(*failure);
  if (!failed && capture != nullptr) Collect(output->reading, *capture, capacity - 1);
  output->reading.Close();
  const int status = WaitFor(child);
  return failed ? kNotStarted : status;
}

int RunAndRemember(std::string_view command, std::string* capture, size_t capacity, const char* file) {
  int status = kNotStarted;
  try {
    status = morv_exec_run(command, capture, capacity, file);
  } catch (const std::exception&) {  // out of memory
  }
  g_morv_last_exec_status = status;
  return status;
}

}  // namespace

int MorvExec(std::string_view command) {
  return RunAndRemember(command, nullptr, 0, nullptr);
}

std::string MorvExecCapture(std::string_view command, size_t capacity) {
  std::string text;
  if (capacity == 0) return text;
  RunAndRemember(command, &text, capacity, nullptr);
  return text;
}

int MorvExecToFile(std::string_view command, const std::string& path) {
  return RunAndRemember(command, nullptr, 0, path.c_str());
}

int MorvExecStatus() {
  return g_morv_last_exec_status;
}

void IgnoreBrokenPipes() {
  std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace vorc
