#include "lib/processes_by_name.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/ascii.h"
#include "base/file.h"

namespace vorc {

namespace {

constexpr std::string_view kExeSuffix = ".exe";
constexpr size_t kLongestName = 511;
// The kernel keeps no more of a program's name in `comm`.
constexpr size_t kCommLength = 15;

std::string_view WithoutExe(std::string_view name) {
  if (name.size() < kExeSuffix.size()) return name;
  const std::string_view stem = name.substr(0, name.size() - kExeSuffix.size());
  return EqualIgnoringCase(name.substr(stem.size()), kExeSuffix) ? stem : name;
}

std::string CommandName(const std::string& process_folder) {
  const File file(std::fopen((process_folder + "/comm").c_str(), "rbe"));
  char line[64] = "";
  if (file == nullptr || std::fgets(line, sizeof line, file.get()) == nullptr) return {};
  std::string name(line);
  if (name.ends_with('\n')) name.pop_back();
  if (name.ends_with('\r')) name.pop_back();
  return name;
}

std::string ProgramName(const std::string& process_folder) {
  std::error_code error;
  return std::filesystem::read_symlink(process_folder + "/exe", error).filename().string();
}

bool IsNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsAsciiDigit);
}

// The number that digits give; 0, which names no process, if it is out of range.
pid_t ProcessNumber(std::string_view digits) {
  pid_t pid = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), pid);
  return error == std::errc() && end == digits.data() + digits.size() ? pid : 0;
}

}  // namespace

bool morv_proc_name_matches(pid_t pid, std::string_view name) {
  name = WithoutExe(name);
  if (name.empty() || name.size() > kLongestName) return false;
  const std::string folder = "/proc/" + std::to_string(pid);
  if (EqualIgnoringCase(CommandName(folder), name)) return true;
  return name.size() > kCommLength && EqualIgnoringCase(ProgramName(folder), name);
}

void morv_proc_walk(std::string_view name, const std::function<void(pid_t)>& found) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry("/proc", error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string folder = entry->path().filename().string();
    const pid_t pid = IsNumber(folder) ? ProcessNumber(folder) : 0;
    if (pid > 0 && pid != getpid() && morv_proc_name_matches(pid, name)) found(pid);
  }
}

int32_t MorvUtilKill(std::string_view target, Processes& processes) {
  if (IsNumber(target)) {
    const pid_t pid = ProcessNumber(target);
    return pid >= 1 && processes.Kill(pid);
  }
  int32_t killed = 0;
  morv_proc_walk(target, [&](pid_t pid) { killed += processes.Kill(pid); });
  return killed;
}

int32_t MorvUtilRunning(std::string_view target) {
  if (IsNumber(target)) {
    const pid_t pid = ProcessNumber(target);
    return pid >= 1 && (kill(pid, 0) == 0 || errno == EPERM);
  }
  int32_t running = 0;
  morv_proc_walk(target, [&](pid_t) { ++running; });
  return running;
}

}  // namespace vorc
