#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/console.h"
#include "base/file.h"
#include "base/version.h"
#include "view/attention.h"
#include "view/log_reader.h"
#include "view/page.h"

namespace {

namespace fs = std::filesystem;

constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1;
constexpr int kExitMisuse = 2;

constexpr const char* kHelp =
    "Usage: vorc-view [-o page.html] [options of vorc] source.c\n"
    "       vorc-view --attention [-o prefix] trace.txt\n"
    "\n"
    "Compiles a source and shows what became of each function, in one page of HTML: its flow graph, the "
    "live\n"
    "ranges of its variables in the colours of their registers, the source beside the assembly. The page is "
    "named\n"
    "after the source, unless -o tells otherwise; - is standard output.\n"
    "\n"
    "With --attention it reads what a run with -llmtrace has printed (- is standard input) and draws the "
    "weights of\n"
    "each head, as prefix-1-head0.svg and so on.\n";

struct Command {
  bool attention = false;
  std::string output;
  std::string input;
  std::vector<std::string> passed_on;
};

int Fail(const std::string& text, int status = kExitFailure) {
  vorc::WriteErrors("vorc-view: " + text + "\n");
  return status;
}

std::optional<std::string> ReadFile(const std::string& path) {
  const bool standard_input = path == "-";
  vorc::File opened(standard_input ? nullptr : std::fopen(path.c_str(), "rbe"));
  std::FILE* file = standard_input ? stdin : opened.get();
  if (file == nullptr) return std::nullopt;
  std::string text;
  char block[size_t{64} << 10];
  while (const size_t count = std::fread(block, 1, sizeof block, file)) text.append(block, count);
  if (std::ferror(file) != 0) return std::nullopt;
  return text;
}

bool WriteFile(const std::string& path, const std::string& text) {
  if (path == "-") {
    vorc::WriteOutput(text);
    return vorc::OutputStatus(kExitSuccess) == kExitSuccess;
  }
  vorc::File file(std::fopen(path.c_str(), "wbe"));
  if (file == nullptr) return false;
  const bool written = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
  return std::fclose(file.release()) == 0 && written;
}

/// A folder that goes away.
class Workplace {
 public:
  Workplace() {
    std::string name = (fs::temp_directory_path() / "vorc-view-XXXXXX").string();
    if (mkdtemp(name.data()) != nullptr) path_ = name;
  }
  ~Workplace() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
  }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// The compiler that stands beside this program, or else the one that the shell would find.
std::string CompilerPath() {
  std::error_code error;
  const fs::path here = fs::read_symlink("/proc/self/exe", error).parent_path() / "vorc";
  return !error && fs::exists(here, error) ? here.string() : "vorc";
}

// Runs the compiler in a folder; what it says goes to standard error, since the page may go to standard
// output. The exit status, -1 where the program can't be started.
int RunCompiler(const std::vector<std::string>& words, const std::string& folder) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
  pid_t child = 0;
  const int error = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) return -1;
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return WIFEXITED(status) ? WEXITSTATUS(status) : kExitFailure;
}

std::string Absolute(const fs::path& path) {
  std::error_code error;
  return fs::absolute(path.empty() ? fs::path(".") : path, error).string();
}

int ShowFunctions(const Command& command) {
  const std::optional<std::string> source = ReadFile(command.input);
  if (!source) return Fail("cannot read '" + command.input + "': " + std::strerror(errno));
  const Workplace place;
  const fs::path name = fs::path(command.input).filename();
  const std::string copy = place.path() + "/" + (name == "-" ? std::string("stdin.c") : name.string());
  if (place.path().empty() || !WriteFile(copy, *source)) return Fail("cannot write to the temporary folder");
  std::vector<std::string> words{CompilerPath(), "-morvquiet",
                                 "-I" + Absolute(fs::path(command.input).parent_path())};
  words.insert(words.end(), command.passed_on.begin(), command.passed_on.end());
  words.push_back(fs::path(copy).filename().string());
  if (RunCompiler(words, place.path()) != kExitSuccess)
    return Fail("'" + command.input + "' could not be compiled");
  const std::string stem = (fs::path(copy).parent_path() / fs::path(copy).stem()).string();
  const std::optional<std::string> log = ReadFile(stem + ".code_gen_analysis.txt");
  const std::optional<std::string> assembly = ReadFile(stem + ".asm");
  if (!log || !assembly) return Fail("the compiler left no log");
  std::vector<vorc::CompiledFunction> functions = vorc::ReadAnalysisLog(*log);
  vorc::AddAssembly(*assembly, &functions);
  const std::string output = command.output.empty() ? name.stem().string() + ".html" : command.output;
  if (!WriteFile(output, vorc::FunctionsPage(name.string(), functions)))
    return Fail("cannot write to '" + output + "': " + std::strerror(errno));
  return kExitSuccess;
}

int ShowAttention(const Command& command) {
  const std::optional<std::string> trace = ReadFile(command.input);
  if (!trace) return Fail("cannot read '" + command.input + "': " + std::strerror(errno));
  const std::vector<vorc::AttentionHead> heads = vorc::ReadAttention(*trace);
  if (heads.empty()) return Fail("there is no attention in '" + command.input + "'");
  const std::string prefix = command.output.empty() ? "attention" : command.output;
  for (const vorc::AttentionHead& head : heads) {
    const std::string path =
        prefix + "-" + std::to_string(head.step) + "-head" + std::to_string(head.head) + ".svg";
    if (!WriteFile(path, vorc::AttentionSvg(head)))
      return Fail("cannot write to '" + path + "': " + std::strerror(errno));
    vorc::WriteOutput(path + "\n");
  }
  return vorc::OutputStatus(kExitSuccess);
}

// The exit status, where nothing is to be shown.
std::optional<int> ReadCommand(const std::vector<std::string>& words, Command* command) {
  for (size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    const bool value = i + 1 < words.size();
    if (word == "--help" || word == "-h") return vorc::WriteOutput(kHelp), vorc::OutputStatus(kExitSuccess);
    if (word == "--version")
      return vorc::WriteOutput(std::string("vorc-view ") + vorc::kVersion + "\n"),
             vorc::OutputStatus(kExitSuccess);
    if (word == "--attention") {
      command->attention = true;
    } else if (word == "-o" && value) {
      command->output = words[++i];
    } else if (word == "-D" && value) {
      command->passed_on.push_back("-D" + words[++i]);
    } else if (word.starts_with("-I")) {
      command->passed_on.push_back("-I" + Absolute(word.substr(2)));
    } else if (word.starts_with("-") && word != "-") {
      command->passed_on.push_back(word);
    } else if (command->input.empty()) {
      command->input = word;
    } else {
      return Fail("one source at a time", kExitMisuse);
    }
  }
  if (!command->input.empty()) return std::nullopt;
  vorc::WriteErrors(kHelp);
  return kExitMisuse;
}

}  // namespace

int main(int argc, char** argv) {
  Command command;
  if (const auto status = ReadCommand(std::vector<std::string>(argv + 1, argv + argc), &command))
    return *status;
  return command.attention ? ShowAttention(command) : ShowFunctions(command);
}
