#include "retarget/rv_encode.h"

#include <algorithm>
#include <unordered_set>

namespace vorc {
namespace {

constexpr uint32_t kImm20Mask = 0xFFFFF;
constexpr uint32_t kShiftsOf32 = 32;
constexpr uint32_t kShiftsOf64 = 64;
constexpr uint32_t kHalfImm12 = 0x800;

int Fail(VrvEncoder& enc) {
  enc.error = true;
  return 1;
}

/// Emits a word if all its registers are some and its immediate, if any, is in range.
int Checked(VrvEncoder& enc, bool fits, std::initializer_list<uint32_t> registers, uint32_t word) {
  for (const uint32_t number : registers) fits = fits && number < kRvRegisters;
  return fits ? vrv_word(enc, word) : Fail(enc);
}

int Written(VrvEncoder& enc, bool done) {
  return done ? 0 : Fail(enc);
}

int EmitWithFixup(VrvEncoder& enc, VrvFixup::Kind kind, int32_t label, uint32_t word) {
  if (enc.error) return 1;
  if (enc.fixups.size() == kVrvMaxFixups) return Fail(enc);
  enc.fixups.push_back({enc.code.size(), label, kind});
  return vrv_word(enc, word);
}

int LoadUpperAndAdd(VrvEncoder& enc, uint32_t rd, int32_t value, decltype(vrv_addi)& add) {
  if (FitsImm12(value)) return vrv_addi(enc, rd, kX0, value);
  const auto bits = static_cast<uint32_t>(value);
  // The low part is added with its sign, so the upper part makes up for a negative one.
  const int32_t low = SignExtend(bits, 12);
  const int failed = vrv_lui(enc, rd, (bits - static_cast<uint32_t>(low)) >> 12);
  return failed != 0 || low == 0 ? failed : add(enc, rd, rd, low);
}

bool Resolve(VrvEncoder& enc, const VrvFixup& fixup) {
  if (fixup.label < 0 || static_cast<size_t>(fixup.label) >= enc.labels.size()) return false;
  const CodeLabel& label = enc.labels[static_cast<size_t>(fixup.label)];
  if (!label.placed) return false;
  const uint32_t bits = label.offset - fixup.offset;
  const auto distance = static_cast<int32_t>(bits);
  const uint32_t word = enc.code.Word(fixup.offset);
  if (fixup.kind == VrvFixup::kBranch) {
    if (!FitsBranch(distance)) return false;
    enc.code.SetWord(fixup.offset, (word & kRvBranchKept) | RvBranchBits(bits));
  } else {
    if (!FitsJump(distance)) return false;
    enc.code.SetWord(fixup.offset, (word & kRvJumpKept) | RvJumpBits(bits));
  }
  return true;
}

}  // namespace

void vrv_init(VrvEncoder& enc, uint32_t base) {
  enc = {};
  enc.base = base;
}

int vrv_word(VrvEncoder& enc, uint32_t word) {
  return enc.error ? 1 : Written(enc, enc.code.AppendWord(word));
}

int vrv_bytes(VrvEncoder& enc, std::span<const uint8_t> bytes) {
  return enc.error ? 1 : Written(enc, enc.code.Append(bytes));
}

int vrv_string(VrvEncoder& enc, std::string_view text) {
  return enc.error ? 1 : Written(enc, enc.code.AppendText(text));
}

int vrv_align(VrvEncoder& enc, uint32_t n) {
  return enc.error ? 1 : Written(enc, enc.code.Align(n));
}

int vrv_poke_word(VrvEncoder& enc, uint32_t offset, uint32_t word) {
  if (!enc.code.HoldsWord(offset)) return Fail(enc);
  enc.code.SetWord(offset, word);
  return 0;
}

int32_t vrv_new_label(VrvEncoder& enc) {
  if (!enc.free_labels.empty()) {
    const int32_t label = enc.free_labels.back();
    enc.free_labels.pop_back();
    enc.labels[static_cast<size_t>(label)] = {};
    return label;
  }
  if (enc.labels.size() == kVrvMaxLabels) {
    Fail(enc);
    return -1;
  }
  enc.labels.emplace_back();
  return static_cast<int32_t>(enc.labels.size() - 1);
}

int vrv_place_label(VrvEncoder& enc, int32_t label) {
  if (label < 0 || static_cast<size_t>(label) >= enc.labels.size()) return Fail(enc);
  enc.labels[static_cast<size_t>(label)] = {true, enc.code.size()};
  return 0;
}

void vrv_release_labels(VrvEncoder& enc, size_t first_fixup, std::span<const int32_t> labels) {
  std::unordered_set<int32_t> released(labels.begin(), labels.end());
  const auto first =
      enc.fixups.begin() + static_cast<std::ptrdiff_t>(std::min(first_fixup, enc.fixups.size()));
  const auto settled = [&](const VrvFixup& fixup) {
    return released.contains(fixup.label) && Resolve(enc, fixup);
  };
  enc.fixups.erase(std::remove_if(first, enc.fixups.end(), settled), enc.fixups.end());
  for (const VrvFixup& fixup : enc.fixups) released.erase(fixup.label);
  enc.free_labels.insert(enc.free_labels.end(), released.begin(), released.end());
}

int vrv_resolve(VrvEncoder& enc) {
  if (enc.error) return 1;
  for (const VrvFixup& fixup : enc.fixups) {
    if (!Resolve(enc, fixup)) return Fail(enc);
  }
  return 0;
}

uint32_t vrv_word_addi(uint32_t rd, uint32_t rs1, int32_t imm) {
  return FitsImm12(imm) ? RvIWord(kOpImm, rd, 0, rs1, static_cast<uint32_t>(imm)) : 0;
}

uint32_t vrv_word_sw(uint32_t base, int32_t offset, uint32_t rs2) {
  return FitsImm12(offset) ? RvSWord(kOpStore, 2, base, rs2, static_cast<uint32_t>(offset)) : 0;
}

uint32_t vrv_word_lw(uint32_t rd, uint32_t base, int32_t offset) {
  return FitsImm12(offset) ? RvIWord(kOpLoad, rd, 2, base, static_cast<uint32_t>(offset)) : 0;
}

uint32_t vrv_word_nop() {
  return vrv_word_addi(kX0, kX0, 0);
}

int vrv_r_type(VrvEncoder& enc, uint32_t opcode, uint32_t rd, uint32_t funct3, uint32_t rs1, uint32_t rs2,
               uint32_t funct7) {
  return Checked(enc, true, {rd, rs1, rs2}, RvRWord(opcode, rd, funct3, rs1, rs2, funct7));
}

int vrv_i_type(VrvEncoder& enc, uint32_t opcode, uint32_t rd, uint32_t funct3, uint32_t rs1, int32_t imm) {
  return Checked(enc, FitsImm12(imm), {rd, rs1},
                 RvIWord(opcode, rd, funct3, rs1, static_cast<uint32_t>(imm)));
}

int vrv_s_type(VrvEncoder& enc, uint32_t opcode, uint32_t funct3, uint32_t rs1, uint32_t rs2, int32_t imm) {
  return Checked(enc, FitsImm12(imm), {rs1, rs2},
                 RvSWord(opcode, funct3, rs1, rs2, static_cast<uint32_t>(imm)));
}

int vrv_b_type(VrvEncoder& enc, uint32_t opcode, uint32_t funct3, uint32_t rs1, uint32_t rs2, int32_t imm) {
  return Checked(enc, FitsBranch(imm), {rs1, rs2},
                 RvSWord(opcode, funct3, rs1, rs2, 0) | RvBranchBits(static_cast<uint32_t>(imm)));
}

int vrv_u_type(VrvEncoder& enc, uint32_t opcode, uint32_t rd, uint32_t imm20) {
  return Checked(enc, true, {rd}, (imm20 & kImm20Mask) << 12 | rd << 7 | opcode);
}

int vrv_j_type(VrvEncoder& enc, uint32_t opcode, uint32_t rd, int32_t imm) {
  return Checked(enc, FitsJump(imm), {rd}, RvJumpBits(static_cast<uint32_t>(imm)) | rd << 7 | opcode);
}

#define VRV_R(name, opcode, funct3, funct7)                                  \
  int vrv_##name(VrvEncoder& enc, uint32_t rd, uint32_t rs1, uint32_t rs2) { \
    return vrv_r_type(enc, opcode, rd, funct3, rs1, rs2, funct7);            \
  }
#define VRV_I(name, opcode, funct3)                                         \
  int vrv_##name(VrvEncoder& enc, uint32_t rd, uint32_t rs1, int32_t imm) { \
    return vrv_i_type(enc, opcode, rd, funct3, rs1, imm);                   \
  }
#define VRV_SHIFT(name, funct3, funct7)                                                          \
  int vrv_##name(VrvEncoder& enc, uint32_t rd, uint32_t rs1, uint32_t shamt) {                   \
    return Checked(enc, shamt < kShiftsOf32, {rd, rs1},                                          \
                   RvIWord(kOpImm, rd, funct3, rs1, funct7 << 5 | shamt));                       \
  }                                                                                              \
  int vrv_##name##64(VrvEncoder & enc, uint32_t rd, uint32_t rs1, uint32_t shamt) {              \
    if (shamt >= kShiftsOf64) return 1;                                                          \
    return Checked(enc, true, {rd, rs1}, RvIWord(kOpImm, rd, funct3, rs1, funct7 << 5 | shamt)); \
  }
#define VRV_LOAD(name, funct3)                                                  \
  int vrv_##name(VrvEncoder& enc, uint32_t rd, uint32_t base, int32_t offset) { \
    return vrv_i_type(enc, kOpLoad, rd, funct3, base, offset);                  \
  }
#define VRV_LOAD_64 VRV_LOAD
#define VRV_STORE(name, funct3)                                                  \
  int vrv_##name(VrvEncoder& enc, uint32_t base, int32_t offset, uint32_t rs2) { \
    return vrv_s_type(enc, kOpStore, funct3, base, rs2, offset);                 \
  }
#define VRV_STORE_64 VRV_STORE
#define VRV_FIXED(name, word)       \
  int vrv_##name(VrvEncoder& enc) { \
    return vrv_word(enc, word);     \
  }
#include "retarget/rv_instructions.def"

int vrv_lui(VrvEncoder& enc, uint32_t rd, uint32_t imm20) {
  return vrv_u_type(enc, kOpLui, rd, imm20);
}
int vrv_auipc(VrvEncoder& enc, uint32_t rd, uint32_t imm20) {
  return vrv_u_type(enc, kOpAuipc, rd, imm20);
}
int vrv_jalr(VrvEncoder& enc, uint32_t rd, uint32_t rs1, int32_t imm) {
  return vrv_i_type(enc, kOpJalr, rd, 0, rs1, imm);
}

int vrv_mv(VrvEncoder& enc, uint32_t rd, uint32_t rs) {
  return vrv_addi(enc, rd, rs, 0);
}
int vrv_not(VrvEncoder& enc, uint32_t rd, uint32_t rs) {
  return vrv_xori(enc, rd, rs, -1);
}
int vrv_neg(VrvEncoder& enc, uint32_t rd, uint32_t rs) {
  return vrv_sub(enc, rd, kX0, rs);
}

int vrv_branch(VrvEncoder& enc, uint32_t funct3, uint32_t rs1, uint32_t rs2, int32_t label) {
  if (rs1 >= kRvRegisters || rs2 >= kRvRegisters) return Fail(enc);
  return EmitWithFixup(enc, VrvFixup::kBranch, label, RvSWord(kOpBranch, funct3, rs1, rs2, 0));
}

int vrv_jal(VrvEncoder& enc, uint32_t rd, int32_t label) {
  if (rd >= kRvRegisters) return Fail(enc);
  return EmitWithFixup(enc, VrvFixup::kJump, label, rd << 7 | kOpJal);
}

int vrv_j(VrvEncoder& enc, int32_t label) {
  return vrv_jal(enc, kX0, label);
}
int vrv_call(VrvEncoder& enc, int32_t label) {
  return vrv_jal(enc, kRa, label);
}

int vrv_li(VrvEncoder& enc, uint32_t rd, int32_t value) {
  return LoadUpperAndAdd(enc, rd, value, vrv_addi);
}
int vrv_li64(VrvEncoder& enc, uint32_t rd, int32_t value) {
  return LoadUpperAndAdd(enc, rd, value, vrv_addiw);
}

int vrv_la_pcrel(VrvEncoder& enc, uint32_t rd, int64_t target) {
  const int64_t delta = target - (int64_t{enc.base} + enc.code.size());
  if (delta != static_cast<int32_t>(delta)) return 1;
  const auto bits = static_cast<uint32_t>(delta);
  if (vrv_auipc(enc, rd, (bits + kHalfImm12) >> 12) != 0) return 1;
  return vrv_addi(enc, rd, rd, SignExtend(bits, 12));
}

int vrv_cmp_lt(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b) {
  return vrv_slt(enc, rd, a, b);
}
int vrv_cmp_gt(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b) {
  return vrv_slt(enc, rd, b, a);
}

int vrv_cmp_le(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b) {
  return vrv_cmp_gt(enc, rd, a, b) | vrv_xori(enc, rd, rd, 1);
}

int vrv_cmp_ge(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b) {
  return vrv_cmp_lt(enc, rd, a, b) | vrv_xori(enc, rd, rd, 1);
}

int vrv_cmp_eq(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b) {
  return vrv_sub(enc, rd, a, b) | vrv_sltiu(enc, rd, rd, 1);
}

int vrv_cmp_ne(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b) {
  return vrv_sub(enc, rd, a, b) | vrv_sltu(enc, rd, kX0, rd);
}

}  // namespace vorc
