#include "program/slot.h"

#include "base/format.h"

namespace vorc {

void C_SLOT::ErrorAt(SourceLine line, long code, std::string_view text) {
  if (!Stopped) Display.DisplayError(Sources.FileName(line), line.Line, code, text);
}

void C_SLOT::Warning(std::string_view text) {
  WarningAt(Place, text);
}

void C_SLOT::WarningAt(SourceLine line, std::string_view text) {
  if (!Stopped) Display.DisplayWarning(Sources.FileName(line), line.Line, 0, text);
}

void C_SLOT::Fatal(std::string_view text) {
  Error(0, text);
  Stopped = true;
}

void C_SLOT::ReportFull(const char* what, size_t capacity) {
  if (!Stopped) Fatal(Format("Too many %s: a source file can have %zu.", what, capacity));
}

}  // namespace vorc
