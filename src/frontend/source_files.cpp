#include <strings.h>
#include <sys/stat.h>

#include <cstring>

#include "base/file.h"
#include "base/format.h"
#include "frontend/scanner.h"

namespace vorc {

namespace {

constexpr int kDeepestInclude = 1000;
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
constexpr size_t kLargestSource = size_t{64} << 20;
// A loaded buffer is kept in lines of this size; longer ones flow on as further lines.
constexpr size_t kBufferLineLength = 299;

// Line ends of either kind become a line feed, so that both give the same tokens.
void StripCarriageReturns(std::string& text) {
  size_t to = text.find('\r');
  if (to == std::string::npos) return;
  for (size_t from = to; from < text.size(); ++from) {
    if (text[from] == '\r' && from + 1 < text.size() && text[from + 1] == '\n') continue;
    text[to++] = text[from];
  }
  text.resize(to);
}

// A device may never end, and a folder has no text.
bool IsReadable(const struct stat& status) {
  return S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode);
}

bool ReadAll(const std::string& path, const C_SLOT& slot, std::string* text) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || !IsReadable(status)) return false;
  const File file = slot.OpenSource(path);
  if (file == nullptr || fstat(fileno(file.get()), &status) != 0 || !IsReadable(status)) return false;
  char block[size_t{64} * 1024];
  while (const size_t count = std::fread(block, 1, sizeof block, file.get())) {
    text->append(block, count);
    if (text->size() > kLargestSource) return false;
  }
  return std::ferror(file.get()) == 0;
}

std::string FolderOf(std::string_view path) {
  const size_t slash = path.find_last_of("/\\");
  return slash == std::string_view::npos ? std::string() : std::string(path.substr(0, slash + 1));
}

bool IsAbsolute(std::string_view name) {
  return !name.empty() && (name[0] == '/' || name[0] == '\\' || (name.size() > 1 && name[1] == ':'));
}

}  // namespace

const Scanner::SourceText* Scanner::LoadFile(const std::string& path) {
  const auto known = files_by_path_.find(path);
  if (known != files_by_path_.end()) return known->second;
  std::string text;
  if (!ReadAll(path, slot_, &text)) return nullptr;
  AddSource(path, std::move(text));
  return files_by_path_.at(path);
}

void Scanner::AddSource(const std::string& path, std::string text) {
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  StripCarriageReturns(text);
  files_by_path_.emplace(path, slot_.Sources.Add(path, std::move(text)));
}

void Scanner::LoadSrcFromBuffer(const std::string& name, std::string_view text) {
  if (FindBufferFile(name) != nullptr) return;
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::string lines;
  size_t length = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\n' || c == '\r') {
      if (length > 0) lines += '\n';
      length = 0;
      continue;
    }
    if (length++ == kBufferLineLength) {
      lines += '\n';
      length = 1;
    }
    lines += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
  }
  buffers_.push_back(slot_.Sources.Add(name, std::move(lines)));
}

const Scanner::SourceText* Scanner::FindBufferFile(const std::string& name) const {
  if (name.empty()) return nullptr;
  for (const SourceText* buffer : buffers_) {
    if (strcasecmp(buffer->Name.c_str(), name.c_str()) == 0) return buffer;
  }
  return nullptr;
}

bool Scanner::OpenSourceCodeFile(const std::string& name) {
  const SourceText* source = FindBufferFile(name);
  if (source == nullptr) source = LoadFile(name);
  if (source == nullptr) return false;
  PushFile(source);
  slot_.Display.DisplayPrintf(
      name, 0, Format("Compiling: %s ,fp=%x", name.c_str(), static_cast<unsigned>(++opened_files_)));
  ReadLine();
  GetComboTokenSkipEol();
  return true;
}

void Scanner::PushFile(const SourceText* source) {
  FileFrame* parent = now_.Frame;
  if (parent != nullptr) {
    parent->Cursor = now_.Cursor;
    parent->LineEnd = now_.LineEnd;
    parent->LineNumber = now_.LineNumber;
  }
  FileFrame& frame = frames_.emplace_back();
  frame.Source = source;
  frame.Parent = parent;
  frame.Depth = parent == nullptr ? 0 : parent->Depth + 1;
  now_.Frame = &frame;
  now_.Cursor = source->Text.data();
  now_.LineEnd = now_.Cursor;
  now_.LineNumber = 0;
  now_.EndOfFile = false;
  UpdatePlace();
}

bool Scanner::PopFile() {
  FileFrame* ended = now_.Frame;
  if (ended->Parent == nullptr) return false;
  ReportOpenIfs(ended);
  now_.Frame = ended->Parent;
  now_.Cursor = now_.Frame->Cursor;
  now_.LineEnd = now_.Frame->LineEnd;
  now_.LineNumber = now_.Frame->LineNumber;
  now_.EndOfFile = false;
  UpdatePlace();
  return true;
}

// Moves to the start of the next line of the current file. False at its end.
bool Scanner::ReadLine() {
  if (now_.EndOfFile) return false;
  const std::string& text = now_.Frame->Source->Text;
  const char* end = text.data() + text.size();
  const char* line = now_.LineNumber == 0 ? text.data() : now_.LineEnd + 1;
  if (line >= end) {
    now_.EndOfFile = true;
    now_.Cursor = now_.LineEnd = end;
    return false;
  }
  const void* newline = std::memchr(line, '\n', static_cast<size_t>(end - line));
  now_.Cursor = line;
  now_.LineEnd = newline == nullptr ? end : static_cast<const char*>(newline);
  ++now_.LineNumber;
  slot_.Place.Line = static_cast<int32_t>(now_.LineNumber);
  return true;
}

void Scanner::UpdatePlace() {
  slot_.Place = {now_.Frame->Source->Number, static_cast<int32_t>(now_.LineNumber)};
}

int Scanner::IncludeDepth() const {
  return now_.Frame == nullptr ? 0 : now_.Frame->Depth;
}

// The conditionals of an included file that are open, the innermost first.
void Scanner::LogIfStack(const FileFrame& frame) {
  for (size_t i = frame.Ifs.size(); i-- > 0;) {
    const IfEntry& entry = frame.Ifs[i];
    slot_.Display.Log(Format("IfTop=%d,Token='%s', eval_state=%d", static_cast<int>(i),
                             std::string(TokenName(entry.Token)).c_str(), entry.Value ? 1 : 0));
  }
}

void Scanner::ReportOpenIfs(FileFrame* frame) {
  if (frame->Ifs.empty() || frame->Reported || slot_.Muted > 0) return;
  frame->Reported = true;
  if (frame->Parent != nullptr) LogIfStack(*frame);
  slot_.Error(0, "Missing '#endif' or preprocessor statement mismatch.");
  slot_.Error(0, "Unexpected End-of-File...");
  slot_.NoteOpening(frame->Ifs.back().Line, "The conditional");
}

void Scanner::ExaminePreProcessorStack() {
  if (now_.Frame != nullptr) ReportOpenIfs(now_.Frame);
}

void Scanner::ParseInclude() {
  std::string name;
  if (!ReadIncludeName(&name)) {
    SkipToEndOfLine();
    GetComboTokenSkipEol();
    return;
  }
  CheckAfterInclude();
  if (!OpenIncludeFile(name)) slot_.Error(0, Format("Can't open: '%s'", name.c_str()));
  GetComboTokenSkipEol();
}

bool Scanner::ReadIncludeName(std::string* name) {
  ScanBlanks();
  const std::string_view rest(now_.Cursor, static_cast<size_t>(now_.LineEnd - now_.Cursor));
  const char open = rest.empty() ? '\0' : rest[0];
  if (open != '<' && open != '"') {
    slot_.Error(0, "Syntax error in declaration of 'include'.");
    return false;
  }
  const size_t close = rest.find(open == '<' ? '>' : '"', 1);
  if (close == std::string_view::npos) {
    slot_.Error(0, open == '<' ? "Missing '>' in declaration of 'include'."
                               : "Syntax error in declaration of 'include'.");
    return false;
  }
  *name = std::string(rest.substr(1, close - 1));
  now_.Cursor += close + 1;
  return true;
}

// Only blanks and comments may follow. A comment that goes on over the line ends the check: what
// stands behind it is read once the included file has ended.
void Scanner::CheckAfterInclude() {
  const long line = now_.LineNumber;
  while (now_.LineNumber == line) {
    ScanBlanks();
    if (now_.Cursor >= now_.LineEnd) return;
    const std::string_view rest(now_.Cursor, static_cast<size_t>(now_.LineEnd - now_.Cursor));
    if (rest.starts_with("//")) return SkipToEndOfLine();
    if (!rest.starts_with("/*")) {
      slot_.Error(0, "Invalid symbols following 'include' statement");
      return SkipToEndOfLine();
    }
    now_.Cursor += 2;
    ParseBlockCommentBegin();
  }
}

bool Scanner::OpenIncludeFile(const std::string& name) {
  if (now_.Frame->Depth >= kDeepestInclude) {
    slot_.Fatal(Format("Include files nested deeper than %d: '%s'", kDeepestInclude, name.c_str()));
    return true;
  }
  const SourceText* source = FindBufferFile(name);
  const std::string folder = FolderOf(now_.Frame->Source->Name);
  if (source == nullptr && !IsAbsolute(name) && !folder.empty()) source = LoadFile(folder + name);
  if (source == nullptr) source = LoadFile(name);
  for (const std::string& searched : slot_.Target.include_paths) {
    if (source == nullptr) source = LoadFile(searched + "/" + name);
  }
  if (source == nullptr && strcasecmp(name.c_str(), "stdarg.h") == 0) {
    source = slot_.Sources.Add(name, "");
    files_by_path_.emplace(name, source);
  }
  if (source == nullptr) return false;
  PushFile(source);
  slot_.Display.DisplayPrintf(
      source->Name, 0,
      Format("Compiling: %s ,fp=%x", source->Name.c_str(), static_cast<unsigned>(++opened_files_)));
  ReadLine();
  return true;
}

}  // namespace vorc
