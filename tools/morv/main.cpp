#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/console.h"
#include "base/descriptor.h"
#include "base/version.h"
#include "driver/compile.h"
#include "driver/options.h"
#include "driver/process.h"
#include "morv/interactive.h"
#include "morv/manual.h"

namespace {

constexpr int kExitMisuse = 2;
constexpr size_t kMostArguments = 64;
constexpr size_t kLargestSource = size_t{64} << 20;

constexpr const char* kHelp =
    "Usage: morv [options] script.c [arguments]\n"
    "       morv [options] -e 'statements' [arguments]\n"
    "       morv [options] - [arguments]        the script comes from standard input\n"
    "       morv                                reads statements and answers them\n"
    "\n"
    "Runs a script and leaves no files behind. A first line '#!/usr/bin/env morv' makes a script a command.\n"
    "\n"
    "  -e TEXT         run TEXT as a script; statements with $variables may stand outside of functions\n"
    "  -Ipath          search path for included files, too\n"
    "  -Dname[=value]  define a macro\n"
    "  -Werr           a run with warnings ends with status 1\n"
    "  -llmtrace       let the tensor functions explain their steps\n"
    "  --keep          leave the log and the other files of the run beside the source\n"
    "  --list [WORD]   list the built-in functions\n"
    "  --doc NAME      show a built-in function's arguments, answer and an example\n"
    "  --help          show this help\n"
    "  --version       show the version\n"
    "\n"
    "Exit status: 0, or what the script gave morv_exit; 1 after an error; 2 for a wrong command line.\n"
    "The program behind it is vorc(1), which also compiles.\n";

/// The command line, read.
struct Command {
  enum class Task { kRun, kText, kInput, kInteractive };
  Task task = Task::kInteractive;
  std::string text;  ///< of -e
  bool keep = false;
  vorc::Options options;
};

int Misuse(const std::string& text) {
  vorc::WriteErrors("morv: " + text + "\n      'morv --help' tells how it is used\n");
  return kExitMisuse;
}

int Say(const std::string& text) {
  vorc::WriteOutput(text);
  return vorc::OutputStatus(vorc::kExitSuccess);
}

int ShowList(std::string_view word) {
  const std::string list = vorc::ListFunctions(word);
  if (!list.empty()) return Say(list);
  vorc::WriteErrors("morv: no built-in function has '" + std::string(word) + "' in its name or answer\n");
  return vorc::kExitFailure;
}

int ShowDoc(const std::string& name) {
  const std::string text = vorc::DescribeFunction(name);
  if (!text.empty()) return Say(text);
  std::string message = "morv: there is no built-in function '" + name + "'";
  const char* lead = "; did you mean ";
  for (const std::string& similar : vorc::SimilarFunctions(name)) {
    message += lead + similar;
    lead = ", ";
  }
  vorc::WriteErrors(message + "\n");
  return vorc::kExitFailure;
}

/// Reads the words of the command line from left to right.
class Reader {
 public:
  Reader(const std::vector<std::string>& words, Command* command) : words_(words), command_(*command) {}

  // The exit status, where nothing is to be run.
  std::optional<int> Read() {
    while (at_ < words_.size()) {
      const std::string& word = words_[at_++];
      if (word == "--") {
        if (at_ < words_.size()) TakeSource(words_[at_++]);
        break;
      }
      if (word == "-" || !word.starts_with('-')) {
        TakeSource(word);
        break;
      }
      if (word == "-e") {
        if (at_ == words_.size()) return Misuse("-e needs a text behind it");
        command_.task = Command::Task::kText;
        command_.text = words_[at_++];
        break;
      }
      if (const auto status = ReadOption(word)) return status;
    }
    return ReadArguments();
  }

 private:
  void TakeSource(const std::string& word) {
    command_.task = word == "-" ? Command::Task::kInput : Command::Task::kRun;
    command_.options.source = word;
  }

  std::optional<int> ReadOption(const std::string& word) {
    const std::string next = at_ < words_.size() ? words_[at_] : "";
    if (word == "--help" || word == "-h") return Say(kHelp);
    if (word == "--version" || word == "-version") return Say(std::string("morv ") + vorc::kVersion + "\n");
    if (word == "--list") return ShowList(next);
    if (word == "--doc") return next.empty() ? Misuse("--doc needs the name of a function") : ShowDoc(next);
    if (word == "--keep") {
      command_.keep = true;
      return std::nullopt;
    }
    std::vector<std::string> known{word};
    if ((word == "-D" || word == "-I") && next.empty()) return Misuse(word + " needs a value behind it");
    if (word == "-I") known = {word + words_[at_++]};
    if (word == "-D") known.push_back(words_[at_++]);
    const bool passed_on = word.starts_with("-D") || word.starts_with("-I") || word == "-Werr" ||
                           word == "-Werror" || word == "-llmtrace";
    if (!passed_on) return Misuse("unknown option '" + word + "'");
    return vorc::ParseOptions(known, &command_.options);
  }

  std::optional<int> ReadArguments() {
    auto& arguments = command_.options.script_arguments;
    arguments.assign(words_.begin() + static_cast<std::ptrdiff_t>(at_), words_.end());
    if (arguments.size() > kMostArguments) return Misuse("a script takes 64 arguments at most");
    if (command_.keep && command_.task != Command::Task::kRun)
      return Misuse("--keep needs a script, beside which the files are left");
    return std::nullopt;
  }

  const std::vector<std::string>& words_;
  Command& command_;
  size_t at_ = 0;
};

int FailToRead(const std::string& name, const char* reason) {
  vorc::WriteErrors("morv: cannot read '" + name + "': " + reason + "\n");
  return vorc::kExitFailure;
}

// The whole text of a descriptor. Answers a status where it can't be read.
std::optional<int> ReadText(int descriptor, const std::string& name, std::string* text) {
  char block[size_t{64} << 10];
  for (;;) {
    const ssize_t count = vorc::RetryInterrupted([&] { return read(descriptor, block, sizeof block); });
    if (count < 0) return FailToRead(name, std::strerror(errno));
    if (count == 0) return std::nullopt;
    text->append(block, static_cast<size_t>(count));
    if (text->size() > kLargestSource) return FailToRead(name, "it is larger than 64 MiB");
  }
}

std::optional<int> ReadSource(Command* command) {
  vorc::Options& options = command->options;
  std::string& text = options.source_text.emplace();
  if (command->task == Command::Task::kText) {
    options.source = "-e";
    text = command->text + "\n;\n";
    return std::nullopt;
  }
  if (command->task == Command::Task::kInput) {
    options.source = "stdin";
    return ReadText(STDIN_FILENO, "standard input", &text);
  }
  const vorc::Descriptor file(open(options.source.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) return FailToRead(options.source, std::strerror(errno));
  return ReadText(file.get(), options.source, &text);
}

// The line that makes a script a command is none of the language. Its end stays, so that lines count on.
void DropFirstLine(std::string* text) {
  if (text->starts_with("#!")) text->erase(0, std::min(text->find('\n'), text->size()));
}

int RunScript(Command* command) {
  if (const auto status = ReadSource(command)) return *status;
  vorc::Options& options = command->options;
  DropFirstLine(&*options.source_text);
  options.temporary_outputs = !command->keep;
  return vorc::Leave(
      vorc::OutputStatus(vorc::RunWithLargeStack([&] { return vorc::RunCompilation(options); })));
}

int RunProgram(const std::vector<std::string>& words) {
  Command command;
  if (const auto status = Reader(words, &command).Read()) return *status;
  vorc::Options& options = command.options;
  options.target.script = options.target.quiet = true;
  options.target.typed = command.task == Command::Task::kText;
  if (options.llmtrace) setenv("VORC_LLMTRACE", "1", 1);
  // A request of a web server stays what it is.
  if (!options.script_arguments.empty())
    setenv("QUERY_STRING", vorc::BuildQueryString(options.script_arguments, true).c_str(), 0);
  if (command.task == Command::Task::kInteractive) {
    if (isatty(STDIN_FILENO) != 0) return vorc::RunInteractive(options);
    command.task = Command::Task::kInput;
  }
  return RunScript(&command);
}

}  // namespace

int main(int argc, char** argv) {
  if (!vorc::PrepareProcess()) return vorc::kExitFailure;
  return vorc::WithMemory([&] { return RunProgram(std::vector<std::string>(argv + 1, argv + argc)); });
}
