#include "base/console.h"

#include <poll.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "base/format.h"

namespace vorc {

namespace {

constexpr int kOutputLost = 1;
// Longer lines are rare; this much is copied to leave with its line feed in one piece.
constexpr size_t kLineCopy = 2048;

std::atomic<bool> output_failed = false;  // standard output takes nothing more
std::atomic<bool> lost = false;           // something that was written stands nowhere

// The error number, or 0 once all is written. Waits for a descriptor that doesn't block.
int WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(descriptor, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<size_t>(count));
    } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
      pollfd ready{descriptor, POLLOUT, 0};
      poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

void NoteFailure(int error) {
  if (error == EPIPE) {
    std::fflush(nullptr);  // the logs
    _exit(kOutputLost);
  }
  if (!output_failed.exchange(true)) ReportLostOutput("standard output", error);
}

}  // namespace

void WriteOutput(std::string_view bytes) {
  if (output_failed.load(std::memory_order_relaxed)) return;
  if (const int error = WriteAll(STDOUT_FILENO, bytes)) NoteFailure(error);
}

void SendOutput(std::string_view text) {
  if (text.size() >= kLineCopy) return WriteOutput(std::string(text) += '\n');
  char line[kLineCopy];
  if (!text.empty()) std::memcpy(line, text.data(), text.size());
  line[text.size()] = '\n';
  WriteOutput({line, text.size() + 1});
}

void WriteErrors(std::string_view bytes) {
  WriteAll(STDERR_FILENO, bytes);
}

void MessageBox(const char* text, const char* title) {
  WriteErrors(Format("%s: %s\n", title, text));
}

void ReportLostOutput(std::string_view name, int error) {
  lost = true;
  const std::string shown(name);
  WriteErrors(Format("vorc: cannot write to %s: %s\n", shown.c_str(), std::strerror(error)));
}

int OutputStatus(int status) {
  // Only the low byte of a status leaves the process.
  return lost && (status & 0xff) == 0 ? kOutputLost : status;
}

}  // namespace vorc
