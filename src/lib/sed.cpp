#include "lib/sed.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <optional>
#include <utility>

#include "base/console.h"
#include "base/format.h"
#include "lib/file_rewrite.h"
#include "lib/regex.h"
#include "lib/regex_replacement.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

// How often searches may look at a line in vain before they are made to look ahead no more.
constexpr size_t kPatience = 8;

struct SedCommand {
  std::string pattern;
  RegexReplacement replacement;
  bool global = false;
};

// Takes what stands before the delimiter. A backslash makes the delimiter an ordinary byte, and
// stays in front of all others. Nothing if the delimiter is missing.
std::optional<std::string> TakePart(std::string_view& rest, char delimiter) {
  std::string part;
  for (size_t i = 0; i < rest.size(); ++i) {
    if (rest[i] == delimiter) {
      rest.remove_prefix(i + 1);
      return part;
    }
    if (rest[i] == '\\' && i + 1 < rest.size() && rest[++i] != delimiter) part.push_back('\\');
    part.push_back(rest[i]);
  }
  return std::nullopt;
}

void AddEscaped(RegexReplacement& replacement, char byte) {
  switch (byte) {
    case 'n': replacement.AddByte('\n'); break;
    case 't': replacement.AddByte('\t'); break;
    default:
      if (byte >= '1' && byte <= '9') {
        replacement.AddReference(static_cast<size_t>(byte - '0'));
      } else {
        replacement.AddByte(byte);
      }
  }
}

RegexReplacement ParseReplacement(std::string_view source) {
  RegexReplacement replacement;
  for (size_t i = 0; i < source.size(); ++i) {
    if (source[i] == '&') {
      replacement.AddReference(RegexReplacement::kWholeMatch);
    } else if (source[i] == '\\' && i + 1 < source.size()) {
      AddEscaped(replacement, source[++i]);
    } else {
      replacement.AddByte(source[i]);
    }
  }
  return replacement;
}

bool ParseGlobalFlag(std::string_view flags) {
  const size_t flag = flags.find_first_not_of(" \t;");
  return flag != std::string_view::npos && flags[flag] == 'g';
}

std::optional<SedCommand> ParseCommand(std::string_view script) {
  script.remove_prefix(std::min(script.find_first_not_of(" \t"), script.size()));
  if (script.size() < 2 || script[0] != 's') return std::nullopt;
  const char delimiter = script[1];
  if (delimiter == '\0' || delimiter == '\n' || delimiter == '\\') return std::nullopt;
  script.remove_prefix(2);
  const std::optional<std::string> pattern = TakePart(script, delimiter);
  if (!pattern) return std::nullopt;
  const std::optional<std::string> replacement = TakePart(script, delimiter);
  if (!replacement) return std::nullopt;
  return SedCommand{*pattern, ParseReplacement(*replacement), ParseGlobalFlag(script)};
}

class SedRun {
 public:
  SedRun(const SedCommand& command, std::string_view text)
      : command_(command), regex_(command.pattern, command.replacement.GroupSlots()), text_(text) {}

  /// False if memory ran out; what was done until then stands.
  bool Run();
  std::string Take() { return std::move(out_); }

 private:
  void EditText();
  void EditLine(std::string_view line);

  const SedCommand& command_;
  Regex regex_;
  std::string_view text_;
  std::string out_;
};

bool SedRun::Run() {
  try {
    EditText();
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

// Lines in which no match can start are copied many at a time.
void SedRun::EditText() {
  out_.reserve(text_.size());
  size_t at = 0;
  while (at < text_.size()) {
    const size_t candidate = regex_.NextCandidateLine(text_, at);
    if (candidate >= text_.size()) break;
    const void* before = memrchr(text_.data() + at, '\n', candidate - at);
    const size_t start =
        before == nullptr ? at : static_cast<size_t>(static_cast<const char*>(before) - text_.data()) + 1;
    const size_t end = std::min(text_.find('\n', start), text_.size());
    out_.append(text_.substr(at, start - at));
    EditLine(text_.substr(start, end - start));
    at = end;
    if (at < text_.size()) out_.push_back(text_[at++]);
  }
  out_.append(text_.substr(at));
}

// The search goes on in what is left of the line, so `^` matches there again.
void SedRun::EditLine(std::string_view line) {
  RegexMatch match;
  // Each search may look at all that is left, only to take a byte of it.
  size_t patience = kPatience * line.size();
  regex_.ForgetForesight();
  while (regex_.FindFirst(line, match)) {
    if (command_.global && patience > 0) {
      const size_t wasted = regex_.looked() - static_cast<size_t>(match.whole.start + match.whole.length);
      patience -= std::min(patience, wasted);
      if (patience == 0) regex_.Foresee(line);
    }
    const auto start = static_cast<size_t>(match.whole.start);
    out_.append(line.substr(0, start));
    command_.replacement.AppendTo(out_, line, match);
    line.remove_prefix(start + static_cast<size_t>(match.whole.length));
    if (!command_.global) break;
    if (match.whole.length > 0) continue;
    if (line.empty()) break;
    out_.push_back(line.front());
    line.remove_prefix(1);
  }
  out_.append(line);
}

bool WriteAndClose(File file, std::string_view content) {
  const bool written = std::fwrite(content.data(), 1, content.size(), file.get()) == content.size();
  return std::fclose(file.release()) == 0 && written;
}

// For a file that may be written in a folder that takes no new one. If that fails midway, the old
// content is put back.
bool WriteInPlace(const std::string& path, std::string_view content, std::string_view old) {
  File file = MorvSafeFopen(path, "wb");
  if (file == nullptr) return false;
  if (WriteAndClose(std::move(file), content)) return true;
  file = MorvSafeFopen(path, "wb");
  if (file != nullptr) WriteAndClose(std::move(file), old);
  return false;
}

void ReportBadScript(std::string_view script) {
  const std::string shown(script);
  WriteErrors(Format("ised: cannot parse '%s' - expected s/pattern/replacement/[g]\n", shown.c_str()));
}

}  // namespace

std::string MorvSed(std::string_view text, std::string_view script) {
  const std::optional<SedCommand> command = ParseCommand(script);
  if (!command) {
    ReportBadScript(script);
    return std::string(text);
  }
  SedRun run(*command, text);
  run.Run();
  return run.Take();
}

int MorvSedFile(const std::string& path, std::string_view script) {
  std::optional<FileRewrite> file = FileRewrite::Open(path);
  const std::optional<std::string> old = file ? file->Read() : std::nullopt;
  if (!old) return -1;
  const std::optional<SedCommand> command = ParseCommand(script);
  if (!command) {
    ReportBadScript(script);
    return 0;
  }
  SedRun run(*command, *old);
  if (!run.Run()) return -1;
  const std::string edited = run.Take();
  if (edited == *old) return 0;
  if (!file->Writable()) return -1;
  const bool written =
      file->Begin() ? file->Append(edited) && file->Commit() : WriteInPlace(path, edited, *old);
  return written ? 1 : -1;
}

}  // namespace vorc
