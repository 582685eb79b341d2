#include "program/slot.h"

#include "base/format.h"

namespace vorc {

void C_SLOT::ErrorAt(SourceLine line, long code, std::string_view text) {
  if (!Stopped && Muted == 0) Display.DisplayError(Sources.FileName(line), line.Line, code, text);
}

void C_SLOT::Warning(std::string_view text) {
  WarningAt(Place, text);
}

void C_SLOT::WarningAt(SourceLine line, std::string_view text) {
  if (!Stopped && Muted == 0) Display.DisplayWarning(Sources.FileName(line), line.Line, 0, text);
}

void C_SLOT::NoteOpening(SourceLine line, std::string_view what) {
  if (Stopped || Muted > 0) return;
  Display.DisplayInfo(Sources.FileName(line), line.Line,
                      std::string(what) + " that begins here is never closed.");
}

void C_SLOT::Fatal(std::string_view text) {
  Muted = 0;
  Error(0, text);
  Stopped = true;
}

void C_SLOT::ReportFull(const char* what, size_t capacity) {
  if (!Stopped) Fatal(Format("Too many %s: a source file can have %zu.", what, capacity));
}

}  // namespace vorc
