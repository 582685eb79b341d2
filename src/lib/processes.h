#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// The commands that a script runs. Several threads may run commands at once.
class Processes {
 public:
  /// Runs a command line and waits for it: through /bin/sh if one of `| & < >` stands outside double
  /// quotes, else the program itself. The answer is its exit status, 128 plus the signal that killed
  /// it, or -1 if it could not be started or the sandbox refuses it.
  int MorvExec(std::string_view command);

  /// Like MorvExec; answers what the command wrote to standard output and standard error, cut to
  /// `capacity` - 1 bytes. Empty if it could not be started.
  std::string MorvExecCapture(std::string_view command, size_t capacity);

  /// Like MorvExec, with both outputs written to a file that is created or emptied. A file that can't
  /// be opened gives 127, and the command doesn't run.
  int MorvExecToFile(std::string_view command, const std::string& path);

  /// The answer of the last command that ended, in any thread. 0 before the first.
  int MorvExecStatus() const { return last_status_; }

  /// Ends a process. Inside a sandbox only one that was started here and still runs. False if it
  /// could not be, or may not.
  bool Kill(pid_t pid);

 private:
  struct Output;

  int morv_exec_run(std::string_view command, const Output& output);
  int RunAndRemember(std::string_view command, const Output& output);
  pid_t Start(const class Launch& launch);
  int WaitFor(pid_t child);

  std::atomic<int> last_status_{0};
  std::mutex lock_;              ///< guards the list
  std::vector<pid_t> children_;  ///< started and not reaped: their numbers name nobody else
};

/// Makes writing to a closed pipe, or beyond the largest size of a file, fail instead of ending this
/// process. Commands that it starts get the usual dispositions back.
void IgnoreWriteSignals();

}  // namespace vorc
