#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorc {

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
int MorvExecStatus();

/// Makes writing to a closed pipe fail instead of ending this process. Commands that it starts get
/// the usual disposition back.
void IgnoreBrokenPipes();

}  // namespace vorc
