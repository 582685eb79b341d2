#include "retarget/rv_disassemble.h"

#include <array>

#include "base/format.h"
#include "retarget/rv_formats.h"

namespace vorc {
namespace {

constexpr std::array<std::string_view, kRvRegisters> kRegisterNames = {
    "zero", "ra", "sp", "gp", "tp", "t0", "t1", "t2", "s0", "s1", "a0",  "a1",  "a2", "a3", "a4", "a5",
    "a6",   "a7", "s2", "s3", "s4", "s5", "s6", "s7", "s8", "s9", "s10", "s11", "t3", "t4", "t5", "t6"};

// By funct3; what the table doesn't fill is unknown.
using Names = std::array<const char*, 8>;

constexpr Names UnknownNames() {
  Names names;
  names.fill("?");
  return names;
}

constexpr Names kLoads = [] {
  Names names = UnknownNames();
#define VRV_LOAD(name, funct3) names[funct3] = #name;
#include "retarget/rv_instructions.def"
  return names;
}();

constexpr Names kStores = [] {
  Names names = UnknownNames();
#define VRV_STORE(name, funct3) names[funct3] = #name;
#include "retarget/rv_instructions.def"
  return names;
}();

constexpr Names kImmediates = [] {
  Names names = UnknownNames();
#define VRV_I(name, opcode, funct3) \
  if (opcode == kOpImm) names[funct3] = #name;
#include "retarget/rv_instructions.def"
  return names;
}();

constexpr Names kBranches = {"beq", "bne", "?", "?", "blt", "bge", "bltu", "bgeu"};

struct Row {
  const char* name;
  uint32_t opcode, funct3, funct7;
};

constexpr Row kRegisterRows[] = {
#define VRV_R(name, opcode, funct3, funct7) {#name, opcode, funct3, funct7},
#include "retarget/rv_instructions.def"
};

constexpr Row kShiftRows[] = {
#define VRV_SHIFT(name, funct3, funct7) {#name, kOpImm, funct3, funct7},
#include "retarget/rv_instructions.def"
};

/// A word and its fields.
struct Fields {
  uint32_t word;
  uint32_t opcode = Bits(word, 0, 7);
  uint32_t rd = Bits(word, 7, 5);
  uint32_t funct3 = Bits(word, 12, 3);
  uint32_t rs1 = Bits(word, 15, 5);
  uint32_t rs2 = Bits(word, 20, 5);
  uint32_t funct7 = Bits(word, 25, 7);
  int32_t imm = static_cast<int32_t>(word) >> 20;
};

const char* Name(uint32_t number) {
  return kRegisterNames[number].data();
}

// Each of the following gives an empty text for a word that it doesn't know.

std::string Branch(const Fields& f, uint32_t address) {
  return Format("%-6s %s,%s,0x%x", kBranches[f.funct3], Name(f.rs1), Name(f.rs2),
                address + static_cast<uint32_t>(RvBranchDistance(f.word)));
}

std::string Jump(const Fields& f, uint32_t address) {
  const uint32_t target = address + static_cast<uint32_t>(RvJumpDistance(f.word));
  return f.rd == kX0 ? Format("j      0x%x", target) : Format("jal    %s,0x%x", Name(f.rd), target);
}

std::string JumpRegister(const Fields& f) {
  if (f.funct3 != 0) return {};
  if (f.rd == kX0 && f.rs1 == kRa && f.imm == 0) return "ret";
  return Format("jalr   %s,%d(%s)", Name(f.rd), f.imm, Name(f.rs1));
}

std::string Store(const Fields& f) {
  const int32_t offset = SignExtend(f.funct7 << 5 | f.rd, 12);
  return Format("%-6s %s,%d(%s)", kStores[f.funct3], Name(f.rs2), offset, Name(f.rs1));
}

std::string Shift(const Fields& f) {
  // Where registers have 64 bits, the count has one bit of what is funct7 elsewhere.
  constexpr uint32_t kCountBit = 1;
  for (const Row& row : kShiftRows) {
    if (row.funct3 != f.funct3 || row.funct7 != (f.funct7 & ~kCountBit)) continue;
    return Format("%-6s %s,%s,%u", row.name, Name(f.rd), Name(f.rs1), Bits(f.word, 20, 6));
  }
  return {};
}

std::string Immediate(const Fields& f) {
  const std::string_view name = kImmediates[f.funct3];
  if (name == "?") return Shift(f);
  if (name == "addi") {
    if (f.rd == kX0 && f.rs1 == kX0 && f.imm == 0) return "nop";
    if (f.rs1 == kX0) return Format("li     %s,%d", Name(f.rd), f.imm);
    if (f.imm == 0) return Format("mv     %s,%s", Name(f.rd), Name(f.rs1));
  }
  if (name == "xori" && f.imm == -1) return Format("not    %s,%s", Name(f.rd), Name(f.rs1));
  return Format("%-6s %s,%s,%d", name.data(), Name(f.rd), Name(f.rs1), f.imm);
}

std::string Registers(const Fields& f) {
  for (const Row& row : kRegisterRows) {
    if (row.opcode != kOpReg || row.funct3 != f.funct3 || row.funct7 != f.funct7) continue;
    return Format("%-6s %s,%s,%s", row.name, Name(f.rd), Name(f.rs1), Name(f.rs2));
  }
  return {};
}

std::string Known(const Fields& f, uint32_t address) {
  switch (f.opcode) {
    case kOpJal: return Jump(f, address);
    case kOpBranch: return Branch(f, address);
    case kOpJalr: return JumpRegister(f);
    case kOpSystem: return f.imm == 0 ? "ecall" : "ebreak";
    case kOpLoad: return Format("%-6s %s,%d(%s)", kLoads[f.funct3], Name(f.rd), f.imm, Name(f.rs1));
    case kOpStore: return Store(f);
    case kOpFence: return "fence";
    case kOpImm: return Immediate(f);
    case kOpAuipc: return Format("auipc  %s,0x%x", Name(f.rd), f.word >> 12);
    case kOpLui: return Format("lui    %s,0x%x", Name(f.rd), f.word >> 12);
    case kOpReg: return Registers(f);
    default: return {};
  }
}

}  // namespace

std::string_view vrv_register_name(uint32_t number) {
  return kRegisterNames[number % kRvRegisters];
}

int vrv_disasm_one(uint32_t word, uint32_t address, std::string& out) {
  out = Known(Fields{word}, address);
  if (!out.empty()) return 0;
  out = Format(".word  0x%08x", word);
  return 1;
}

}  // namespace vorc
