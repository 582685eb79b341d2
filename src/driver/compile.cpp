#include "driver/compile.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "base/console.h"
#include "base/file.h"
#include "base/format.h"
#include "base/trace.h"
#include "frontend/parser.h"
#include "frontend/scanner.h"
#include "interp/interpreter.h"

namespace vorc {

namespace {

// Written beside the source, whatever the mode; the first is the error log.
constexpr const char* kOutputExtensions[] = {"error", "asm", "code_gen_analysis.txt", "datafile_tac.txt",
                                             "ai_tac_analysis_input.txt"};
constexpr const char* kRemovedExtension = "ai_tac_analysis_output.txt";

std::string FullPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
  return real == nullptr ? path : std::string(real.get());
}

/// One compilation from its options to its exit status.
class Compilation {
 public:
  explicit Compilation(const Options& options)
      : options_(options), slot_(std::make_unique<C_SLOT>()), scanner_(*slot_), interpreter_(*slot_) {}

  int Run();

 private:
  void FillSlot();
  bool OpenRelatedFiles();
  bool CompileDiskFile();
  bool CompileWithDefines();
  bool ParseDiskFile(const std::string& name);
  int Finish();
  int FinishRtl();

  const Options& options_;
  std::unique_ptr<C_SLOT> slot_;
  Scanner scanner_;
  Interpreter interpreter_;
  bool defines_failed_ = false;
};

int Compilation::Run() {
  FillSlot();
  if (!interpreter_.ready() || !slot_->Expressions.reserved()) {
    std::fputs("vorc: failed (the host grants too little address space)\n", stderr);
    return kExitFailure;
  }
  if (!options_.quiet) {
    std::printf("vorc: %s '%s'\n", options_.morv ? "interpreting" : "compiling", options_.source.c_str());
    std::fflush(stdout);
  }
  const bool compiled = options_.defines.empty() ? CompileDiskFile() : CompileWithDefines();
  if (defines_failed_) return kExitFailure;
  if (!compiled) {
    std::fputs("vorc: failed (cannot open source or output files)\n", stderr);
    return kExitFailure;
  }
  return Finish();
}

void Compilation::FillSlot() {
  TargetOptions& target = slot_->Target;
  target.CPUSIZE = options_.cpu_size;
  target.ADDRSIZE = options_.address_size;
  target.EXEFORMAT = options_.exe_format;
  target.WarningsAsErrors = options_.warnings_as_errors;
  target.DebugSymbols = options_.debug_symbols;
  target.PicMode = options_.pic;
  if (options_.optimization_level >= 0) target.OptimizationLevel = options_.optimization_level;
  target.ScriptInterpretor = options_.morv;
  target.IncludePaths = options_.include_paths;
  slot_->Display.set_quiet(options_.quiet);
  slot_->Services = &interpreter_;
}

// Removes old outputs and makes the new ones, so that a failed run leaves no stale result.
bool Compilation::OpenRelatedFiles() {
  for (const char* extension : kOutputExtensions) {
    if (SetFileExt(options_.source, extension) == options_.source) return false;
  }
  std::remove(SetFileExt(options_.source, kRemovedExtension).c_str());
  for (const char* extension : kOutputExtensions) std::remove(SetFileExt(options_.source, extension).c_str());
  if (!slot_->Display.OpenLog(SetFileExt(options_.source, kOutputExtensions[0]))) return false;
  for (const char* extension : kOutputExtensions) {
    if (extension == kOutputExtensions[0]) continue;
    const File file(std::fopen(SetFileExt(options_.source, extension).c_str(), "w+"));
    if (file == nullptr) return false;
  }
  return true;
}

bool Compilation::ParseDiskFile(const std::string& name) {
  VORC_TRACE("DIAG: ParseDiskFile before GetComboTokenSkipEol\n");
  if (!scanner_.OpenSourceCodeFile(name)) return false;
  VORC_TRACE("DIAG: ParseDiskFile before ParseCsyntax, ScriptInterpretor=%d\n", slot_->IsScript() ? 1 : 0);
  Parser(*slot_, scanner_).ParseCsyntax();
  slot_->Display.FlushLog();
  return true;
}

bool Compilation::CompileDiskFile() {
  return OpenRelatedFiles() && ParseDiskFile(options_.source);
}

// Definitions of the command line stand in a file of their own that includes the source.
bool Compilation::CompileWithDefines() {
  const std::string prelude = options_.source + ".vorc_dtmp.c";
  File file(std::fopen(prelude.c_str(), "w"));
  if (file == nullptr) {
    std::fprintf(stderr, "vorc: could not create temporary -D prelude file for '%s'\n",
                 options_.source.c_str());
    defines_failed_ = true;
    return false;
  }
  for (const std::string& define : options_.defines) {
    const size_t equals = define.find('=');
    if (equals == std::string::npos) {
      std::fprintf(file.get(), "#define %s\n", define.c_str());
    } else {
      std::fprintf(file.get(), "#define %s %s\n", define.substr(0, equals).c_str(),
                   define.substr(equals + 1).c_str());
    }
  }
  std::fprintf(file.get(), "#include \"%s\"\n", FullPath(options_.source).c_str());
  file.reset();
  const bool compiled = OpenRelatedFiles() && ParseDiskFile(prelude);
  std::remove(prelude.c_str());
  return compiled;
}

int Compilation::FinishRtl() {
  std::fputs("vorc: -rtl: Verilog generation is not part of this build\n", stderr);
  return kExitFailure;
}

int Compilation::Finish() {
  const Diagnostics& display = slot_->Display;
  if (display.ErrorCount == 0 && options_.rtl) return FinishRtl();
  if (display.ErrorCount == 0 && options_.morv && FindProgramEntryLabel(*slot_) != nullptr) {
    if (!options_.quiet) SendOutput("vorc: executing main() ....");
    interpreter_.InterpretScript();
    slot_->Display.FlushLog();
  }
  if (display.ErrorCount == 0 && options_.warnings_as_errors && display.WarningCount > 0) {
    std::fprintf(stderr, "vorc: %ld warning(s) treated as errors (-Werr)\n", display.WarningCount);
    return kExitFailure;
  }
  return display.ErrorCount == 0 ? kExitSuccess : kExitFailure;
}

}  // namespace

std::string SetFileExt(const std::string& path, const std::string& extension) {
  const size_t slash = path.find_last_of('/');
  const size_t dot = path.find_last_of('.');
  const bool has_extension =
      dot != std::string::npos && (slash == std::string::npos || dot > slash + 1) && dot > 0;
  return (has_extension ? path.substr(0, dot) : path) + "." + extension;
}

int RunCompilation(const Options& options) {
  return Compilation(options).Run();
}

}  // namespace vorc
