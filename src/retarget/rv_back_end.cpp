#include "retarget/rv_back_end.h"

#include <unistd.h>

#include "base/console.h"
#include "base/format.h"
#include "retarget/rv_trace.h"
#include "retarget/rv_unit.h"

namespace vorc {
namespace {

std::string_view TextOf(std::span<const uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// A file that lacks its end is worse than none.
void CloseWhole(TextWriter& file, const std::string& path) {
  if (file.Close()) return;
  WriteErrors(Format("vorc rv32: %s could not be written\n", path.c_str()));
  unlink(path.c_str());
}

void TellNothingEmitted(const char* reason) {
  WriteOutput(Format("vorc rv32: nothing emitted - %s\n", reason));
}

}  // namespace

RvBackEnd::RvBackEnd(C_SLOT& slot, const std::string& source)
    : slot_(slot), path_(source + ".rv32.lst"), unit_(slot.Target.xlen, slot.Target.multiply_divide) {
  if (listing_.Open(path_)) listing_.Write(RvListingHead());
  image_.Open(path_ + ".bin");
  map_.Open(path_ + ".map");
  // An object of an earlier run is not this one's.
  unlink((path_ + ".o").c_str());
}

std::string RvBackEnd::InstalledLine() const {
  return Format("vorc: RV%d back end installed; selection listing -> %s", slot_.Target.xlen, path_.c_str());
}

void RvBackEnd::AllocateGlobals() {
  globals_done_ = true;
  for (const SYM_REC* symbol : slot_.Globals.Symbols) {
    if (symbol->IsLabel || symbol->OnlyCalled || symbol->name == nullptr) continue;
    if (unit_.rv32_global_for(slot_, symbol, symbol->name->Text) != RvUnitCode::kNone) continue;
    WriteOutput(Format("vorc rv32: global '%s' has no usable size - not allocated\n", symbol->name->c_str()));
  }
}

// A fault that no record stands for.
void RvBackEnd::CountFault() {
  ++unhandled_;
  coverage_.CountUnhandled();
}

void RvBackEnd::OpenFunction(Procedure& procedure) {
  if (!started_) vrv_init(unit_.enc, 0);
  started_ = true;
  unhandled_ = 0;
  selector_.Reset();
  if (!function_.Open(procedure)) CountFault();
}

void RvBackEnd::CloseFunction() {
  if (!function_.is_open()) return;
  const std::string name = function_.name();
  if (unhandled_ == 0 && !unit_.enc.error && !function_.IsComplete()) CountFault();
  if (!function_.rv32_flush_function(unhandled_ == 0)) {
    WriteErrors(Format(
        "vorc rv32: %s needs a %d-byte frame, past ADDI's 2047-byte reach - large frames not implemented\n",
        name.c_str(), function_.frame_bytes()));
    CountFault();
  }
  if (unhandled_ == 0) return;
  WriteOutput(Format(
      "vorc rv32: %s not emitted - %d statement(s) could not be translated (see the coverage summary)\n",
      name.c_str(), unhandled_));
  if (listing_.is_open())
    listing_.Write("; ", name, " NOT EMITTED - ", unhandled_, " untranslated statement(s)\n");
}

void RvBackEnd::Select(const Instruction& record) {
  if (listing_.is_open()) RvTraceRecord(listing_, record);
  if (selector_.rv32_select(slot_, record)) return coverage_.CountEmitted();
  ++unhandled_;
  coverage_.CountUnhandled(record);
}

void RvBackEnd::GenerateBasicBlock(Procedure& procedure, BasicBlock& block) {
  if (!globals_done_) AllocateGlobals();
  if (function_.is_open() && function_.proto() != procedure.proto) CloseFunction();
  if (!function_.is_open()) OpenFunction(procedure);
  coverage_.CountBlock(function_.BeginBlock(procedure, block));
  for (const Instruction* at = block.first; at != nullptr; at = at->next_in_block) {
    Select(*at);
  }
  if (!function_.rv32_flush_residents()) CountFault();
}

// Code of other units can't be called.
bool RvBackEnd::CallsAreDefined() {
  bool defined = true;
  for (const RvFunction& function : unit_.unit.functions) {
    if (unit_.IsPlaced(function.label)) continue;
    defined = false;
    WriteOutput(
        Format("vorc rv32: '%s' is called but not defined in this unit - cross-unit calls are not "
               "implemented\n",
               function.name.c_str()));
  }
  return defined;
}

void RvBackEnd::WriteObject() {
  const std::string path = path_ + ".o";
  TextWriter file;
  if (!file.Open(path)) return;
  const RvObject object = RvElfObject(unit_.unit);
  file.Write(object.bytes);
  const bool whole = file.Close();
  if (!whole) return CloseWhole(file, path);
  WriteOutput(Format("vorc rv32: wrote %s (%d symbols, %d relocations)\n", path.c_str(), object.symbols,
                     object.relocations));
}

void RvBackEnd::WriteUnit() {
  if (!CallsAreDefined()) return TellNothingEmitted("unresolved calls");
  RvUnit& unit = unit_.unit;
  const bool resolved = vrv_resolve(unit_.enc) == 0;
  unit.image = std::move(unit_.enc.code);
  if (!resolved || !RvPlaceData(unit)) return TellNothingEmitted("branch resolution failed");
  WriteObject();
  if (image_.is_open()) image_.Write(TextOf(unit.image.bytes()));
  if (map_.is_open()) map_.Write(RvMap(unit));
  if (listing_.is_open()) listing_.Write(RvListing(unit));
}

void RvBackEnd::CloseFiles() {
  CloseWhole(listing_, path_);
  CloseWhole(image_, path_ + ".bin");
  CloseWhole(map_, path_ + ".map");
}

void RvBackEnd::Finish() {
  CloseFunction();
  if (started_) WriteUnit();
  WriteOutput(coverage_.Summary(static_cast<int>(RvFunctionCode::RV32_REGPOOL.size())));
  CloseFiles();
}

std::unique_ptr<BackEnd> MakeRiscvBackEnd(C_SLOT& slot, const std::string& source) {
  return std::make_unique<RvBackEnd>(slot, source);
}

}  // namespace vorc
