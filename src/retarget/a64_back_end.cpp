#include "retarget/a64_back_end.h"

#include <unistd.h>

#include "base/console.h"
#include "base/format.h"
#include "codegen/rendering.h"

namespace vorc {

namespace {

// A record's text on one line.
std::string LineOf(const Procedure& procedure, const Instruction& instruction) {
  std::string text = three_address_instruction_str(procedure, instruction);
  for (char& c : text) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

std::string OperationName(Tok op) {
  const std::string_view name = a64_optype_name(op);
  return name.empty() ? "?" : std::string(name);
}

}  // namespace

A64BackEnd::A64BackEnd(const C_SLOT& slot, const std::string& source)
    : slot_(slot),
      listing_path_(source + ".a64.lst"),
      image_path_(source + ".a64.img"),
      copy_path_(source + ".a64.bin") {
  listing_.Open(listing_path_);
  unlink(image_path_.c_str());
  unlink(copy_path_.c_str());
}

std::string A64BackEnd::InstalledLine() const {
  return "vorc: AArch64 back end installed; selection listing -> " + listing_path_;
}

void A64BackEnd::OpenFunction(Procedure& procedure) {
  CloseFunction();
  if (!data_collected_) {
    data_collected_ = true;
    if (slot_.Display.ErrorCount == 0) unit_.data.Collect(procedure.context);
  }
  ++functions_;
  refused_in_function_ = 0;
  listing_.Write("\n=== FUNCTION ", procedure.name, Format("  (offset 0x%x) ===\n", va64_here(unit_.enc)));
  function_ = std::make_unique<A64Function>(unit_, procedure);
}

void A64BackEnd::CloseFunction() {
  if (function_ == nullptr) return;
  const A64Frame& frame = function_->frame();
  if (!frame.fits()) {
    listing_.Write(Format("    ** frame of %u bytes exceeds the 12-bit immediate", frame.bytes()),
                   " of the instructions that adjust sp: the function is left out\n");
    ++refused_;
    ++refused_in_function_;
    ++refused_by_operation_[Tok::NOTOKEN];
  }
  function_->Close(refused_in_function_ == 0);
  const std::string line =
      Format("--- %s: %d slots, frame %u bytes%s", function_->name().c_str(), static_cast<int>(frame.slots()),
             frame.bytes(), refused_in_function_ == 0 ? "" : " - left out, a call of it stops at a trap");
  listing_.Write(line, '\n');
  SendOutput(line);
  function_.reset();
}

void A64BackEnd::Count(const Procedure& procedure, const Instruction& instruction, bool selected) {
  if (selected) {
    ++selected_;
  } else {
    ++refused_;
    ++refused_in_function_;
    ++refused_by_operation_[instruction.op];
  }
  if (!listing_.is_open()) return;
  constexpr std::string_view kBlanks = "    ";
  const int op = static_cast<int>(instruction.op);
  const size_t digits = op < 10 ? 1 : op < 100 ? 2 : 3;
  listing_.Write(selected ? "  ok   optype=" : "  ??   optype=", op, kBlanks.substr(digits), ' ');
  if (!selected) listing_.Write('(', OperationName(instruction.op), ") ");
  listing_.Write(LineOf(procedure, instruction), '\n');
}

void A64BackEnd::GenerateBasicBlock(Procedure& procedure, BasicBlock& block) {
  if (block.bb_no == 0) OpenFunction(procedure);
  if (function_ == nullptr) return;
  ++blocks_;
  for (const Instruction* at = block.first; at != nullptr; at = at->next_in_block) {
    Count(procedure, *at, function_->a64_select(*at));
  }
  if (&block == &procedure.blocks.back()) CloseFunction();
}

void A64BackEnd::EndOfUnit(CodegenContext& context) {
  CloseFunction();
  if (functions_ == 0 || slot_.Display.ErrorCount > 0) return;
  unit_.data.TakeTexts(context.strings);
  unit_.Finish();
  ListData();
}

void A64BackEnd::ListData() {
  if (unit_.data.variables().empty()) return;
  listing_.Write("\n=== DATA ===\n");
  for (const A64Data::Variable& variable : unit_.data.variables()) {
    listing_.Write(Format("  0x%x %s, %u bytes\n", unit_.data.PlaceOf(variable.name), variable.name.c_str(),
                          variable.size));
  }
}

bool A64BackEnd::WriteImage(const std::string& path) const {
  TextWriter file;
  if (!file.Open(path)) return false;
  const auto bytes = unit_.enc.code.bytes();
  file.Write(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
  if (file.Close()) return true;
  unlink(path.c_str());
  return false;
}

void A64BackEnd::ReportRefused() {
  if (refused_ == 0) return;
  std::string line = "vorc: A64 refused these operation types:";
  for (const auto& [op, count] : refused_by_operation_)
    line += Format(" %s(%d)", OperationName(op).c_str(), count);
  SendOutput(line);
  SendOutput("vorc: the image is INCOMPLETE - see " +
             (listing_.is_open() && !listing_.failed() ? listing_path_ : "(no listing)"));
}

void A64BackEnd::Finish() {
  CloseFunction();
  bool written = false;
  if (functions_ > 0 && slot_.Display.ErrorCount == 0) {
    if (unit_.Resolve()) {
      written = WriteImage(image_path_);
      WriteImage(copy_path_);
    } else {
      SendOutput(Format("vorc: A64 branch resolution failed: %s", va64_error(&unit_.enc)));
      WriteOutput(unit_.MissingLabels());
    }
  }
  SendOutput(Format("vorc: A64 selection: %d function(s), %d block(s), %d statement(s) selected, %d refused",
                    functions_, blocks_, selected_, refused_));
  ReportRefused();
  SendOutput(Format("vorc: A64 code image -> %s (%u bytes)", written ? image_path_.c_str() : "(none)",
                    va64_here(unit_.enc)));
  listing_.Close();
}

std::unique_ptr<BackEnd> MakeAarch64BackEnd(C_SLOT& slot, const std::string& source) {
  return std::make_unique<A64BackEnd>(slot, source);
}

}  // namespace vorc
