#pragma once

#include <string_view>

namespace vorc {

/// Writes bytes to standard output at once, so that everything interleaves in call order. The first
/// write that fails is told on standard error; nothing more is written then, and OutputStatus tells
/// of it at the end. When the reader of a pipe has gone, the process ends quietly with status 1.
void WriteOutput(std::string_view bytes);

/// One line on standard output, as WriteOutput writes.
void SendOutput(std::string_view text);

/// Writes bytes to standard error at once; whatever fails is let be.
void WriteErrors(std::string_view bytes);

/// A message box of old: title and text on standard error.
void MessageBox(const char* text, const char* title);

/// Tells on standard error that what was written to `name` is lost, and why (an errno value).
void ReportLostOutput(std::string_view name, int error);

/// The status to end with: `status`, or 1 where it tells of success although output was lost.
int OutputStatus(int status);

}  // namespace vorc
