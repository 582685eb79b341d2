#include "morv/interactive.h"

#include <csignal>
#include <cstring>
#include <string>
#include <string_view>

#include "base/console.h"
#include "base/format.h"
#include "base/version.h"
#include "driver/compile.h"
#include "morv/editor.h"
#include "morv/input.h"
#include "morv/manual.h"
#include "morv/session_process.h"

namespace vorc {

namespace {

constexpr const char* kHelp =
    "Type statements, declarations and functions; an expression shows its value.\n"
    "An input that is not finished goes on in the next line; Ctrl-C drops it, or stops what runs.\n"
    "  :doc NAME     what a built-in function does, with an example\n"
    "  :list [WORD]  the built-in functions\n"
    "  :quit         ends, as Ctrl-D does\n";

std::string_view Trim(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\n";
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

void ShowDoc(std::string_view name) {
  const std::string text = DescribeFunction(name);
  if (!text.empty()) return WriteOutput(text);
  WriteOutput("There is no built-in function '" + std::string(name) + "'.\n");
  for (const std::string& similar : SimilarFunctions(name)) WriteOutput("  " + similar + "\n");
}

/// A session at a terminal.
class Terminal {
 public:
  explicit Terminal(const Options& options) : process_(options), editor_(FunctionNames()) {}

  int Run() {
    if (!process_.ready()) {
      WriteErrors("morv: cannot start a process for the session\n");
      return kExitFailure;
    }
    WriteOutput(std::string("morv ") + kVersion + ". Type :help for help, Ctrl-D to leave.\n");
    std::string input;
    while (!over_ && ReadInput(&input)) {
      if (!Trim(input).empty()) Take(input);
    }
    return status_;
  }

 private:
  // Lines up to the end of a statement. False at the end of all input.
  bool ReadInput(std::string* input) {
    input->clear();
    std::string line;
    while (input->empty() || IsUnfinished(*input)) {
      const Editor::End end = editor_.Read(input->empty() ? "morv> " : "  ... ", &line);
      if (end == Editor::End::kOver && input->empty()) {
        WriteOutput("\n");
        return false;
      }
      if (end != Editor::End::kLine) {
        WriteOutput("\n");
        input->clear();
        continue;
      }
      input->append(line).append("\n");
      if (Trim(line).starts_with(':') && input->size() == line.size() + 1) return true;
    }
    return true;
  }

  void Take(const std::string& input) {
    const std::string_view text = Trim(input);
    editor_.Remember(std::string(text));
    if (text.starts_with(':') || text == "quit" || text == "exit" || text == "help") return Command(text);
    const InputEnd end = process_.Run(input);
    if (end.kind == InputEnd::Kind::kKilled)
      WriteOutput(end.number == SIGINT
                      ? std::string("\nInterrupted; the session stands where it stood.\n")
                      : Format("\nEnded by signal %d (%s); the session stands where it stood.\n", end.number,
                               strsignal(end.number)));
    over_ = end.kind == InputEnd::Kind::kOver;
    if (over_) status_ = end.number;
  }

  void Command(std::string_view text) {
    if (text.starts_with(':')) text.remove_prefix(1);
    const size_t blank = std::min(text.find(' '), text.size());
    const std::string_view command = text.substr(0, blank);
    const std::string_view rest = Trim(text.substr(blank));
    if (command == "q" || command == "quit" || command == "exit") {
      over_ = true;
    } else if (command == "doc") {
      ShowDoc(rest);
    } else if (command == "list") {
      WriteOutput(ListFunctions(rest));
    } else {
      WriteOutput(kHelp);
    }
  }

  SessionProcess process_;
  Editor editor_;
  bool over_ = false;
  int status_ = kExitSuccess;
};

}  // namespace

int RunInteractive(const Options& options) {
  return Terminal(options).Run();
}

}  // namespace vorc
