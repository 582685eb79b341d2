#include "driver/compile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

#include "base/console.h"
#include "base/descriptor.h"
#include "base/file.h"
#include "base/format.h"
#include "base/text_search.h"
#include "base/trace.h"
#include "builtins/table.h"
#include "frontend/parser.h"
#include "frontend/scanner.h"
#include "interp/interpreter.h"
#include "lib/sandbox.h"
#include "output/assembly.h"
#include "output/object_writer.h"
#include "output/pic_rewrite.h"
#include "program/layout.h"
#include "retarget/back_end.h"
#include "rtl/generate.h"

namespace vorc {

namespace {

constexpr const char* kErrorLog = "error";
// All that a run writes beside its source, whatever the mode.
constexpr const char* kOutputExtensions[] = {kErrorLog, "asm", "code_gen_analysis.txt", "datafile_tac.txt",
                                             "ai_tac_analysis_input.txt"};
// What a compilation adds to that.
constexpr const char* kRecordExtensions[] = {"symtab", "obj"};

std::string FullPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
  return real == nullptr ? path : std::string(real.get());
}

// True if a file may stand there. One that stands there already is left alone.
bool CanCreate(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666));
  if (!file && errno == EEXIST) return Descriptor(open(path.c_str(), O_RDWR | O_CLOEXEC)) || errno == ENOENT;
  if (!file) return false;
  std::remove(path.c_str());
  return true;
}

Descriptor OpenSafely(const std::string& path) {
  const File file = MorvSafeFopen(path, "wb");
  return Descriptor(file == nullptr ? -1 : dup(fileno(file.get())));
}

/// What the parser finds behind it when nothing is run.
class NothingRuns final : public ParseServices {
 public:
  void AllocateData(SYM_REC*) override {}
  void InitializeData(SYM_REC*) override {}
  int64_t RoomOf(const SYM_REC*) override { return kLargestType; }
  void RunStatement(STATEMENT_BLOCK*) override {}
  bool IsBuiltin(const Name* name) override { return FindSystemFunction(name->Text) != nullptr; }
};

/// One compilation from its options to its exit status.
class Compilation {
 public:
  explicit Compilation(const Options& options)
      : options_(options), slot_(std::make_unique<C_SLOT>()), scanner_(*slot_) {
    if (options.target.script) interpreter_ = std::make_unique<Interpreter>(*slot_);
  }

  int Run();

 private:
  void FillSlot();
  File OpenSource(const std::string& path) const;
  bool OpenRelatedFiles();
  bool OpenTemporaryFiles();
  bool CompileDiskFile();
  bool CompileWithDefines();
  bool ParseDiskFile(const std::string& name);
  void GenerateCode();
  bool MakePositionIndependent();
  int Finish();
  int FinishRtl();

  const Options& options_;
  const std::string full_source_ = FullPath(options_.source);
  std::unique_ptr<C_SLOT> slot_;
  Scanner scanner_;
  std::unique_ptr<Interpreter> interpreter_;  ///< of a script
  NothingRuns nothing_runs_;
  OutputFiles outputs_;
  std::unique_ptr<BackEnd> back_end_;
  bool defines_failed_ = false;
};

int Compilation::Run() {
  FillSlot();
  if ((interpreter_ != nullptr && !interpreter_->ready()) || !slot_->Expressions.reserved()) {
    std::fputs("vorc: failed (the host grants too little address space)\n", stderr);
    return kExitFailure;
  }
  back_end_ = InstallBackEnd(*slot_, options_.source);
  if (!options_.target.quiet) {
    if (back_end_ != nullptr) SendOutput(back_end_->InstalledLine());
    SendOutput(Format("vorc: %s '%s'", options_.target.script ? "interpreting" : "compiling",
                      options_.source.c_str()));
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
  slot_->Target = options_.target;
  slot_->Display.set_quiet(options_.target.quiet);
  slot_->Services = &nothing_runs_;
  if (interpreter_ != nullptr) slot_->Services = interpreter_.get();
  slot_->OpenSource = [this](const std::string& path) { return OpenSource(path); };
  if (!options_.source_text) return;
  scanner_.AddSource(options_.source, *options_.source_text);
  if (full_source_ != options_.source) scanner_.AddSource(full_source_, *options_.source_text);
}

// Included files are files of the script; the source that the command line names isn't.
File Compilation::OpenSource(const std::string& path) const {
  const bool named = path == options_.source || path == full_source_;
  return named ? File(std::fopen(path.c_str(), "rbe")) : MorvSafeFopen(path, "rb");
}

// Removes old outputs and makes the new ones, so that a failed run leaves no stale result.
bool Compilation::OpenRelatedFiles() {
  const auto is_source = [this](const char* extension) {
    return SetFileExt(options_.source, extension) == options_.source;
  };
  if (std::any_of(std::begin(kOutputExtensions), std::end(kOutputExtensions), is_source)) return false;
  if (options_.temporary_outputs) return OpenTemporaryFiles();
  if (!slot_->IsScript() &&
      std::any_of(std::begin(kRecordExtensions), std::end(kRecordExtensions), is_source))
    return false;
  const std::string error_log = SetFileExt(options_.source, kErrorLog);
  unlink(error_log.c_str());
  return slot_->Display.OpenLog(error_log) && outputs_.Open(options_.source);
}

// The files live on as long as they are open. So nothing is left behind, however the run ends. A host
// without a place for them does without: a script writes to none but the log.
bool Compilation::OpenTemporaryFiles() {
  const char* place = std::getenv("TMPDIR");
  std::string folder;
  for (const char* parent : {place == nullptr ? "/tmp" : place, "/tmp", "/var/tmp"}) {
    folder = std::string(parent) + "/morv-XXXXXX";
    if (mkdtemp(folder.data()) != nullptr) break;
    folder.clear();
  }
  if (folder.empty()) return true;
  const std::string name = folder + "/script.c";
  const bool good = slot_->Display.OpenLog(SetFileExt(name, kErrorLog)) && outputs_.Open(name);
  for (const char* extension : kOutputExtensions) unlink(SetFileExt(name, extension).c_str());
  return rmdir(folder.c_str()) == 0 && good;
}

bool Compilation::ParseDiskFile(const std::string& name) {
  if (!scanner_.OpenSourceCodeFile(name)) return false;
  VORC_TRACE("DIAG: ParseDiskFile before GetComboTokenSkipEol\n");
  VORC_TRACE("DIAG: ParseDiskFile before ParseCsyntax, ScriptInterpretor=%d\n", slot_->IsScript() ? 1 : 0);
  Parser(*slot_, scanner_).ParseCsyntax();
  slot_->Display.FlushLog();
  return true;
}

bool Compilation::CompileDiskFile() {
  return OpenRelatedFiles() && ParseDiskFile(options_.source);
}

// Definitions of the command line stand in a source of their own that includes the real one. It is
// read from memory, so that runs side by side don't see each other's.
bool Compilation::CompileWithDefines() {
  const std::string prelude = options_.source + ".vorc_dtmp.c";
  if (!options_.temporary_outputs && !CanCreate(prelude)) {
    WriteErrors(
        Format("vorc: could not create temporary -D prelude file for '%s'\n", options_.source.c_str()));
    defines_failed_ = true;
    return false;
  }
  std::string text;
  for (const std::string& define : options_.defines) {
    const size_t equals = define.find('=');
    text += "#define " + define.substr(0, equals);
    if (equals != std::string::npos) text += " " + define.substr(equals + 1);
    text += '\n';
  }
  text += "#include \"" + full_source_ + "\"\n";
  scanner_.AddSource(prelude, std::move(text));
  return OpenRelatedFiles() && ParseDiskFile(prelude);
}

int Compilation::FinishRtl() {
  const std::string stem = SetFileExt(options_.source, "");
  const std::string design = stem + "v";
  const std::string testbench = stem.substr(0, stem.size() - 1) + "_tb.v";
  if (FullPath(design) == full_source_ || FullPath(testbench) == full_source_) {
    WriteErrors(
        Format("vorc: -rtl: the design would take the place of its source '%s'\n", options_.source.c_str()));
    return kExitFailure;
  }
  if (MorvGenerateRTL(*slot_, options_.source, design, testbench, OpenSafely) != 0) return kExitSuccess;
  for (const std::string& path : {design, testbench}) {
    if (MorvSandboxAllows(path)) unlink(path.c_str());
  }
  WriteErrors(
      Format("vorc: RTL generation failed - removed the partial '%s'\n"
             "      rather than leave a file with no design in it.\n",
             design.c_str()));
  return kExitFailure;
}

// A source without errors becomes code. What can't be written whole is an error of the run.
void Compilation::GenerateCode() {
  if (slot_->Display.ErrorCount == 0 && !slot_->IsScript() &&
      WriteSymbolAndObjectFiles(*slot_, options_.source, outputs_.Reference()))
    EmitAssembly(*slot_, outputs_, options_.source, back_end_.get());
  if (!outputs_.Close()) {
    slot_->Display.DisplayError(options_.source, 0, 0, "The output files could not be written.");
    for (const char* extension : kOutputExtensions) {
      if (extension != kErrorLog) unlink(SetFileExt(options_.source, extension).c_str());
    }
  }
  slot_->Display.FlushLog();
}

bool Compilation::MakePositionIndependent() {
  const std::string assembly = SetFileExt(options_.source, "asm");
  PicCounts counts;
  if (!PicRewriteAsmFile(assembly, options_.target.AddressBytes(), counts)) {
    WriteErrors(Format("vorc: error: -pic: could not rewrite '%s' for position-independent addressing\n",
                       assembly.c_str()));
    return false;
  }
  if (!options_.target.quiet) SendOutput(WithoutLineEnd(PicSummary(counts)));
  return true;
}

int Compilation::Finish() {
  const Diagnostics& display = slot_->Display;
  GenerateCode();
  if (options_.target.pic && display.ErrorCount == 0 && !MakePositionIndependent()) return kExitFailure;
  if (display.ErrorCount == 0 && options_.rtl) return FinishRtl();
  if (display.ErrorCount == 0 && options_.target.script && FindProgramEntryLabel(*slot_) != nullptr) {
    if (!options_.target.quiet) SendOutput("vorc: executing main() ....");
    interpreter_->InterpretScript();
    slot_->Display.FlushLog();
  }
  if (back_end_ != nullptr) back_end_->Finish();
  if (display.ErrorCount == 0 && options_.target.warnings_as_errors && display.WarningCount > 0) {
    std::fprintf(stderr, "vorc: %ld warning(s) treated as errors (-Werr)\n", display.WarningCount);
    return kExitFailure;
  }
  return display.ErrorCount == 0 ? kExitSuccess : kExitFailure;
}

}  // namespace

int RunCompilation(const Options& options) {
  try {
    return Compilation(options).Run();
  } catch (const std::bad_alloc&) {
    WriteErrors("vorc: failed (not enough memory)\n");
    return kExitFailure;
  }
}

}  // namespace vorc
