#include "program/diagnostics.h"

#include <cerrno>

#include "base/console.h"
#include "base/format.h"

namespace vorc {

namespace {

// The terminal gets this much of a line; the log always has all of it.
constexpr size_t kShownLength = 900;

std::string MessageLine(const char* kind, std::string_view file, long line, long code,
                        std::string_view text) {
  std::string message = "<";
  message += file;
  message += Format("(%ld)>: %s %ld: ", line, kind, code);
  message += text;
  return message;
}

}  // namespace

bool Diagnostics::OpenLog(const std::string& path) {
  log_path_ = path;
  log_.reset(std::fopen(path.c_str(), "w+e"));
  return log_ != nullptr;
}

void Diagnostics::FlushLog() {
  if (log_ != nullptr && std::fflush(log_.get()) != 0) EndLog(errno);
}

void Diagnostics::EndLog(int error) {
  ReportLostOutput(log_path_, error);
  log_.reset();
}

void Diagnostics::Log(std::string_view line) {
  if (log_ == nullptr) return;
  const bool written = std::fwrite(line.data(), 1, line.size(), log_.get()) == line.size();
  if (!written || std::fputc('\n', log_.get()) == EOF) EndLog(errno);
}

void Diagnostics::Show(std::string line) {
  SendOutput(Clip(std::move(line), kShownLength, " ...[message truncated]"));
}

void Diagnostics::DisplayError(std::string_view file, long line, long code, std::string_view text) {
  ++ErrorCount;
  std::string message = MessageLine("Error", file, line, code, text);
  Log(message);
  Show(std::move(message));
}

void Diagnostics::DisplayWarning(std::string_view file, long line, int code, std::string_view text) {
  ++WarningCount;
  std::string message = MessageLine("Warning", file, line, code, text);
  Log(message);
  Show(std::move(message));
}

void Diagnostics::DisplayInfo(std::string_view file, long line, std::string_view text) {
  std::string message = MessageLine("Info", file, line, 0, text);
  Log(message);
  Show(std::move(message));
}

void Diagnostics::DisplayPrintf(std::string_view file, long line, std::string_view text) {
  std::string message = Format("(lineno=%d) '", static_cast<int>(line));
  message.append(file).append("', ").append(text);
  Log(message);
  if (!quiet_) Show(std::string(text));
}

void Diagnostics::DisplayCompilerErrorWarningCount() {
  const std::string totals = Format("Total errors:%d, Total warnings:%d ", static_cast<int>(ErrorCount),
                                    static_cast<int>(WarningCount));
  Log(totals);
  if (!quiet_) Show(totals);
}

}  // namespace vorc
