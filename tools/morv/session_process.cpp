#include "morv/session_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <optional>
#include <utility>

#include "base/console.h"
#include "driver/compile.h"
#include "driver/process.h"
#include "driver/session.h"
#include "morv/input.h"

namespace vorc {

namespace {

// What a process tells another one.
constexpr char kDone = 'd';
constexpr char kFailed = 'f';
constexpr char kLost = 'l';  ///< the process that ran the input is gone, and told nothing

struct Reply {
  char outcome;
  int32_t process;  ///< which goes on with the session
};

bool ReadAll(int from, void* data, size_t size) {
  auto* at = static_cast<char*>(data);
  while (size > 0) {
    const ssize_t count = RetryInterrupted([&] { return read(from, at, size); });
    if (count <= 0) return false;
    at += count;
    size -= static_cast<size_t>(count);
  }
  return true;
}

bool WriteAll(int to, const void* data, size_t size) {
  const auto* at = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t count = RetryInterrupted([&] { return write(to, at, size); });
    if (count <= 0) return false;
    at += count;
    size -= static_cast<size_t>(count);
  }
  return true;
}

/// The process that runs inputs.
class Worker {
 public:
  Worker(const Options& options, int link) : session_(options), link_(link) {}

  // Inputs until there are no more.
  int Work() {
    if (!session_.ready()) return kExitFailure;
    uint64_t size = 0;
    std::string text;
    while (ReadAll(link_, &size, sizeof size)) {
      text.resize(size);
      if (!ReadAll(link_, text.data(), size)) break;
      RunGuarded(text);
    }
    return kExitSuccess;
  }

 private:
  void RunGuarded(const std::string& text) {
    ++inputs_;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return Answer(kFailed);
    Descriptor news(ends[0]);
    Descriptor tell(ends[1]);
    const pid_t copy = fork();
    if (copy < 0) return Answer(kFailed);
    if (copy == 0) {
      tell.Close();
      return StandBy(news.get());
    }
    news.Close();
    std::signal(SIGINT, SIG_DFL);
    const bool good = RunText(text);
    std::signal(SIGINT, SIG_IGN);
    const char outcome = good ? kDone : kFailed;
    const bool told = WriteAll(tell.get(), &outcome, 1);
    if (!good || !told) _exit(kExitFailure);
    RetryInterrupted([&] { return waitpid(copy, nullptr, 0); });
    Answer(kDone);
  }

  // The copy: it waits for how the input ends, and goes on with the session if it ends badly.
  void StandBy(int news) {
    char outcome = kLost;
    if (ReadAll(news, &outcome, 1) && outcome == kDone) _exit(kExitSuccess);
    Answer(outcome);
  }

  bool RunText(const std::string& text) {
    const std::string name = "input-" + std::to_string(inputs_);
    const std::optional<Expression> expression = AsExpression(text);
    const bool shown = expression && !session_.BeginsNoExpression(expression->word) &&
                       !session_.AnswersNothing(expression->called);
    return session_.Run(name, shown ? "printf(\"%s\\n\", " + expression->text + ");\n" : text + "\n;\n");
  }

  void Answer(char outcome) {
    const Reply reply{outcome, static_cast<int32_t>(getpid())};
    if (!WriteAll(link_, &reply, sizeof reply)) _exit(kExitFailure);
  }

  Session session_;
  int link_;
  int inputs_ = 0;
};

}  // namespace

SessionProcess::SessionProcess(const Options& options) {
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
  Descriptor here(ends[0]);
  const Descriptor there(ends[1]);
  // A copy that takes over has lost its parent; it becomes a child of this process.
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  process_ = fork();
  if (process_ < 0) return;
  if (process_ == 0) {
    here.Close();
    std::signal(SIGINT, SIG_IGN);
    _exit(RunWithLargeStack([&] { return WithMemory([&] { return Worker(options, there.get()).Work(); }); }));
  }
  link_ = std::move(here);
}

InputEnd SessionProcess::Run(const std::string& text) {
  const uint64_t size = text.size();
  Reply reply{};
  const bool answered = WriteAll(link_.get(), &size, sizeof size) &&
                        WriteAll(link_.get(), text.data(), text.size()) &&
                        ReadAll(link_.get(), &reply, sizeof reply);
  if (answered && reply.outcome == kDone) return {InputEnd::Kind::kDone};
  int status = 0;
  const bool ended = RetryInterrupted([&] { return waitpid(process_, &status, 0); }) == process_;
  if (!answered) return {InputEnd::Kind::kOver, kExitFailure};
  process_ = reply.process;
  if (reply.outcome == kFailed) return {InputEnd::Kind::kFailed};
  if (ended && WIFEXITED(status)) return {InputEnd::Kind::kOver, WEXITSTATUS(status)};
  return {InputEnd::Kind::kKilled, ended && WIFSIGNALED(status) ? WTERMSIG(status) : 0};
}

}  // namespace vorc
