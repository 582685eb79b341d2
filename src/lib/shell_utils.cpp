#include "lib/shell_utils.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

#include "base/text_search.h"
#include "lib/file_replace.h"
#include "lib/processes.h"
#include "lib/reading.h"
#include "lib/sandbox.h"
#include "lib/system.h"
#include "lib/tree_walk.h"
#include "lib/wildcard.h"

namespace vorc {

namespace {

constexpr size_t kNone = std::string_view::npos;

// Where the last `count` lines begin; nothing if the text may hold only part of the first of them.
std::optional<size_t> StartOfLastLines(std::string_view text, int32_t count) {
  // The LF that ends the last line separates nothing.
  size_t end = text.ends_with('\n') ? text.size() - 1 : text.size();
  for (; count > 0; --count) {
    const void* lf = memrchr(text.data(), '\n', end);
    if (lf == nullptr) return std::nullopt;
    end = static_cast<size_t>(static_cast<const char*>(lf) - text.data());
  }
  return end + 1;
}

// A line holds LF only at its end, so a needle with LF further in front is in none.
bool FitsInALine(std::string_view needle) {
  const size_t lf = needle.find('\n');
  return lf == kNone || lf == needle.size() - 1;
}

// Searches whole blocks of lines at once and looks for line ends around the hits only.
template <typename Take>
void ForEachLineWith(std::string_view needle, std::string_view lines, const Take& take) {
  size_t done = 0;
  while (done < lines.size()) {
    const size_t hit = FindBytes(lines, needle, done);
    if (hit == kNone) return;
    const std::string_view before = lines.substr(done, hit - done);
    const size_t begin = done + before.rfind('\n') + 1;
    const size_t lf = lines.find('\n', hit);
    done = lf == kNone ? lines.size() : lf + 1;
    take(lines.substr(begin, done - begin));
  }
}

template <typename Take>
void ForEachLineOfFileWith(const std::string& path, std::string_view needle, const Take& take) {
  if (!FitsInALine(needle)) return;
  File file = OpenForReading(path);
  if (!file) return;
  LineReader reader(std::move(file));
  while (const std::optional<std::string_view> lines = reader.NextLines()) {
    ForEachLineWith(needle, *lines, take);
  }
}

std::string_view WithoutCr(std::string_view text) {
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

std::string_view FieldOf(std::string_view line, std::string_view delimiter, int32_t field) {
  for (; field > 1; --field) {
    const size_t at = FindBytes(line, delimiter);
    if (at == kNone) return {};
    line.remove_prefix(at + delimiter.size());
  }
  return WithoutCr(line.substr(0, FindBytes(line, delimiter)));
}

// A link is followed, as far as the sandbox lets it.
bool LeadsToFolder(const Descriptor& folder, const std::string& path, const FolderEntry& entry) {
  if (!S_ISLNK(entry.mode)) return S_ISDIR(entry.mode);
  struct stat status {};
  return MorvSandboxAllows(path) && fstatat(folder.get(), entry.name.c_str(), &status, 0) == 0 &&
         S_ISDIR(status.st_mode);
}

}  // namespace

std::string MorvUtilCat(const std::string& path) {
  const File file = OpenForReading(path);
  return file ? ReadToEnd(file.get()).value_or("") : std::string();
}

std::string MorvUtilHead(const std::string& path, int32_t count) {
  std::string result;
  File file = OpenForReading(path);
  if (!file) return result;
  LineReader reader(std::move(file));
  for (; count > 0; --count) {
    const std::optional<std::string_view> line = reader.NextLine();
    if (!line) break;
    result += *line;
  }
  return result;
}

std::string MorvUtilTail(const std::string& path, int32_t count) {
  constexpr size_t kFirstSpan = size_t{64} * 1024;
  const File file = OpenForReading(path);
  if (!file || count < 1) return {};
  // From the end of a regular file backward, further on each try; all of a pipe.
  const size_t size = RegularFileSize(file.get()).value_or(0);
  for (size_t span = std::min(size, kFirstSpan);; span = std::min(size, span * 4)) {
    if (size > 0 && fseeko(file.get(), static_cast<off_t>(size - span), SEEK_SET) != 0) return {};
    const std::optional<std::string> text = ReadToEnd(file.get());
    if (!text) return {};
    const std::optional<size_t> start = StartOfLastLines(*text, count);
    if (start || span >= size) return text->substr(start.value_or(0));
  }
}

std::string MorvUtilGrep(const std::string& path, std::string_view needle) {
  std::string result;
  ForEachLineOfFileWith(path, needle, [&](std::string_view line) { result += line; });
  return result;
}

int32_t MorvUtilGrepCount(const std::string& path, std::string_view needle) {
  int32_t count = 0;
  ForEachLineOfFileWith(path, needle, [&](std::string_view) { ++count; });
  return count;
}

std::string MorvUtilCut(std::string_view text, std::string_view delimiter, int32_t field) {
  std::string result;
  if (delimiter.empty() || field < 1) return result;
  while (!text.empty()) {
    const size_t lf = text.find('\n');
    result.append(FieldOf(WithoutCr(text.substr(0, lf)), delimiter, field)).push_back('\n');
    text.remove_prefix(lf == kNone ? text.size() : lf + 1);
  }
  return result;
}

std::string MorvUtilLs(const std::string& dir) {
  const std::string folder_name = dir.empty() ? "." : dir;
  const Descriptor folder = MorvSafeFolder(folder_name);
  if (!folder) return {};
  std::string result;
  for (const FolderEntry& entry : ListFolder(folder)) {
    result += entry.name;
    result += LeadsToFolder(folder, JoinedPath(folder_name, entry.name), entry) ? "/\n" : "\n";
  }
  return result;
}

std::string MorvUtilFind(const std::string& dir, std::string_view pattern) {
  std::string result;
  WalkTree(dir, [&](const std::string& path, const std::string& name, mode_t mode) {
    if (S_ISREG(mode) && morv_util_wild(pattern, name)) result.append(path).push_back('\n');
  });
  return result;
}

int32_t MorvUtilReplace(const std::string& path, std::string_view from, std::string_view to) {
  return MorvFileReplace(path, from, to);
}

int32_t MorvUtilMake(std::string_view arguments, Processes& processes) {
  const std::string tool = MorvGetenv("VMAKE_EXE");
  const std::string command = tool.empty() ? "vmake.exe" : "\"" + tool + "\"";
  return processes.MorvExec(command + " " + std::string(arguments));
}

std::string MorvUtilBash(std::string_view command, Processes& processes) {
  std::string line = "bash -c \"";
  for (const char c : command) {
    if (c == '"' || c == '\\') line += '\\';
    line += c;
  }
  return processes.MorvExecCapture(line + "\"", kBashOutputLimit);
}

}  // namespace vorc
