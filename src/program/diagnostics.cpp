#include "program/diagnostics.h"

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
  log_.reset(std::fopen(path.c_str(), "w+"));
  return log_ != nullptr;
}

void Diagnostics::FlushLog() {
  if (log_ != nullptr) std::fflush(log_.get());
}

void Diagnostics::Log(std::string_view line) {
  if (log_ == nullptr) return;
  std::fwrite(line.data(), 1, line.size(), log_.get());
  std::fputc('\n', log_.get());
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

void Diagnostics::DisplayPrintf(std::string_view file, long line, std::string_view text) {
  if (log_ != nullptr) {
    const std::string name(file);
    const std::string message(text);
    std::fprintf(log_.get(), "(lineno=%d) '%s', %s\n", static_cast<int>(line), name.c_str(), message.c_str());
  }
  if (!quiet_) Show(std::string(text));
}

void Diagnostics::DisplayCompilerErrorWarningCount() {
  const std::string totals = Format("Total errors:%d, Total warnings:%d ", static_cast<int>(ErrorCount),
                                    static_cast<int>(WarningCount));
  Log(totals);
  if (!quiet_) Show(totals);
}

}  // namespace vorc
