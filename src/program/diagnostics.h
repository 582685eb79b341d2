#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include "base/file.h"

namespace vorc {

/// Errors, warnings and status lines of one compilation: counted, logged in the `.error` file and
/// shown on standard output.
class Diagnostics {
 public:
  /// Opens the log anew. False if it can't be written.
  bool OpenLog(const std::string& path);
  /// Writes what the log still holds. A log that can't be written is told once and ends there.
  void FlushLog();
  void set_quiet(bool quiet) { quiet_ = quiet; }
  bool quiet() const { return quiet_; }

  void DisplayError(std::string_view file, long line, long code, std::string_view text);
  void DisplayWarning(std::string_view file, long line, int code, std::string_view text);
  /// Adds to an error; not counted.
  void DisplayInfo(std::string_view file, long line, std::string_view text);
  /// Logged with its place; shown bare, unless quiet.
  void DisplayPrintf(std::string_view file, long line, std::string_view text);
  void DisplayCompilerErrorWarningCount();
  /// A line for the log alone.
  void Log(std::string_view line);

  long ErrorCount = 0;
  long WarningCount = 0;

 private:
  void Show(std::string line);
  void EndLog(int error);

  File log_;
  std::string log_path_;
  bool quiet_ = false;
};

}  // namespace vorc
