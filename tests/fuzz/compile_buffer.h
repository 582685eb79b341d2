#pragma once

#include <pthread.h>
#include <sys/time.h>

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "builtins/table.h"
#include "frontend/parser.h"
#include "frontend/scanner.h"
#include "interp/interpreter.h"
#include "program/slot.h"

namespace vorc::fuzz {

/// Compiles a text the way the driver compiles a file, but keeps it from the world: no log is
/// opened, and of the built-ins only those work that neither touch files, processes and the
/// environment nor wait.
class BufferCompilation {
 public:
  BufferCompilation(std::string_view text, bool script, Road road = Road::kMachine)
      : interpreter_(*slot_, road) {
    slot_->Target.script = script;
    slot_->Display.set_quiet(true);
    slot_->Services = &interpreter_;
    scanner_.LoadSrcFromBuffer(kName, text);
  }

  C_SLOT& slot() { return *slot_; }

  void Parse() {
    if (scanner_.OpenSourceCodeFile(kName)) Parser(*slot_, scanner_).ParseCsyntax();
  }

  /// Runs `main`, if there is one and the parse went well.
  void RunMain() {
    if (slot_->Display.ErrorCount == 0 && FindProgramEntryLabel(*slot_) != nullptr)
      interpreter_.InterpretScript();
  }

 private:
  static constexpr const char* kName = "fuzz.c";

  std::unique_ptr<C_SLOT> slot_ = std::make_unique<C_SLOT>();
  Scanner scanner_{*slot_};
  Interpreter interpreter_;
};

/// Takes the handler from every built-in that isn't known to be harmless; calling one is an error.
inline void DisarmBuiltins() {
  constexpr std::string_view kHarmless[] = {
      "printf",      "malloc",         "iprint",           "isprint",          "morv_concat", "morv_getparam",
      "morv_str",    "morv_starts",    "morv_ends",        "morv_search",      "morv_substr", "morv_trim",
      "morv_upper",  "morv_lower",     "morv_replace_all", "morv_html",        "morv_hex",    "morv_bits",
      "morv_atoi",   "morv_parse_hex", "morv_list_",       "morv_map_",        "morv_dict_",  "morv_set_",
      "morv_tuple_", "morv_split",     "morv_join",        "morv_json_get",    "morv_re",     "ised",
      "morv_sha256", "morv_base64",    "morv_unbase64",    "morv_version_cmp", "icut",        "morv_assert"};
  constexpr std::string_view kHarmful[] = {"morv_remove", "morv_rename", "ised_file"};
  constexpr std::string_view kAll[] = {
#define SYSFUNC(name, count, result) name,
#include "builtins/builtins.def"
#undef SYSFUNC
  };
  for (const std::string_view name : kAll) {
    bool harmless = false;
    for (const std::string_view start : kHarmless) harmless |= name.starts_with(start);
    for (const std::string_view whole : kHarmful) harmless &= name != whole;
    if (!harmless) const_cast<SysFunc*>(FindSystemFunction(name))->handler = nullptr;
  }
}

/// Gives a script an error when it has run for a while, so that an endless loop ends.
class ScriptTimer {
 public:
  explicit ScriptTimer(C_SLOT& slot) {
    running_ = &slot;
    std::signal(SIGVTALRM, [](int) {
      if (running_ != nullptr) running_->Display.ErrorCount = 1;
    });
    const itimerval every{{0, kTickMicroseconds}, {0, kTickMicroseconds}};
    setitimer(ITIMER_VIRTUAL, &every, nullptr);
  }
  ~ScriptTimer() {
    const itimerval none{};
    setitimer(ITIMER_VIRTUAL, &none, nullptr);
    running_ = nullptr;
  }
  ScriptTimer(const ScriptTimer&) = delete;
  ScriptTimer& operator=(const ScriptTimer&) = delete;

 private:
  static constexpr int kTickMicroseconds = 100'000;
  static inline C_SLOT* volatile running_ = nullptr;
};

/// Runs a function on a stack as large as the program's own.
template <typename Function>
void RunWithLargeStack(Function function) {
  constexpr size_t kStackSize = size_t{512} << 20;
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kStackSize);
  const auto run = [](void* argument) -> void* {
    (*static_cast<Function*>(argument))();
    return nullptr;
  };
  pthread_t thread;
  if (pthread_create(&thread, &attributes, run, &function) == 0) pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

}  // namespace vorc::fuzz
