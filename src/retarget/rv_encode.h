#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "retarget/code_bytes.h"
#include "retarget/rv_formats.h"

namespace vorc {

inline constexpr size_t kVrvMaxLabels = 4096;
inline constexpr size_t kVrvMaxFixups = 8192;

/// A word whose distance to a label is still to be filled in.
struct VrvFixup {
  enum Kind : uint32_t { kBranch = 0, kJump = 1 };

  uint32_t offset = 0;
  int32_t label = 0;
  Kind kind = kBranch;
};

/// RISC-V machine code as it grows. Registers are numbers 0 to 31, offsets count bytes of `code`.
struct VrvEncoder {
  CodeBytes code;
  /// The address of the first byte.
  uint32_t base = 0;
  std::vector<CodeLabel> labels;
  std::vector<int32_t> free_labels;  ///< numbers that may be given again
  std::vector<VrvFixup> fixups;
  /// Set by the first fault and never cleared: nothing is written any more.
  bool error = false;
};

// All that emit give 0, or 1 if they could not. An operand out of range, a full table or a bad label sets
// the error, unless said otherwise.

/// Starts anew, with no code and no fault.
void vrv_init(VrvEncoder& enc, uint32_t base);

int vrv_word(VrvEncoder& enc, uint32_t word);
int vrv_bytes(VrvEncoder& enc, std::span<const uint8_t> bytes);
/// A text and its final zero.
int vrv_string(VrvEncoder& enc, std::string_view text);
/// Zero bytes up to a multiple of `n`; none for 0.
int vrv_align(VrvEncoder& enc, uint32_t n);
/// Overwrites a word that lies within the code.
int vrv_poke_word(VrvEncoder& enc, uint32_t offset, uint32_t word);

/// The number of a fresh label, -1 if there is none left.
int32_t vrv_new_label(VrvEncoder& enc);
/// Puts a label where the next byte goes.
int vrv_place_label(VrvEncoder& enc, int32_t label);
/// Fills in the branches to these labels that are recorded from `first_fixup` on, and gives the labels back
/// for new ones. A branch that is out of reach stays, with its label, for vrv_resolve to find.
void vrv_release_labels(VrvEncoder& enc, size_t first_fixup, std::span<const int32_t> labels);
/// Fills in the distances of all other branches and jumps. To be called once, when all code is there. Ends at
/// the first label that is not placed or out of reach; what was filled in before stays.
int vrv_resolve(VrvEncoder& enc);

// Words for overwriting placeholders. 0, which is no instruction, if the immediate is out of range.
uint32_t vrv_word_addi(uint32_t rd, uint32_t rs1, int32_t imm);
uint32_t vrv_word_sw(uint32_t base, int32_t offset, uint32_t rs2);
uint32_t vrv_word_lw(uint32_t rd, uint32_t base, int32_t offset);
uint32_t vrv_word_nop();

// The formats, for any opcode.
int vrv_r_type(VrvEncoder& enc, uint32_t opcode, uint32_t rd, uint32_t funct3, uint32_t rs1, uint32_t rs2,
               uint32_t funct7);
int vrv_i_type(VrvEncoder& enc, uint32_t opcode, uint32_t rd, uint32_t funct3, uint32_t rs1, int32_t imm);
int vrv_s_type(VrvEncoder& enc, uint32_t opcode, uint32_t funct3, uint32_t rs1, uint32_t rs2, int32_t imm);
int vrv_b_type(VrvEncoder& enc, uint32_t opcode, uint32_t funct3, uint32_t rs1, uint32_t rs2, int32_t imm);
int vrv_u_type(VrvEncoder& enc, uint32_t opcode, uint32_t rd, uint32_t imm20);
int vrv_j_type(VrvEncoder& enc, uint32_t opcode, uint32_t rd, int32_t imm);

// One function an instruction: vrv_add, vrv_lw, vrv_ret and so on. A shift of the kind vrv_slli takes
// counts below 32; its vrv_slli64 takes up to 63 and gives 1 without an error beyond.
#define VRV_R(name, opcode, funct3, funct7) \
  int vrv_##name(VrvEncoder& enc, uint32_t rd, uint32_t rs1, uint32_t rs2);
#define VRV_I(name, opcode, funct3) int vrv_##name(VrvEncoder& enc, uint32_t rd, uint32_t rs1, int32_t imm);
#define VRV_SHIFT(name, funct3, funct7)                                       \
  int vrv_##name(VrvEncoder& enc, uint32_t rd, uint32_t rs1, uint32_t shamt); \
  int vrv_##name##64(VrvEncoder & enc, uint32_t rd, uint32_t rs1, uint32_t shamt);
#define VRV_LOAD(name, funct3) int vrv_##name(VrvEncoder& enc, uint32_t rd, uint32_t base, int32_t offset);
#define VRV_LOAD_64 VRV_LOAD
#define VRV_STORE(name, funct3) int vrv_##name(VrvEncoder& enc, uint32_t base, int32_t offset, uint32_t rs2);
#define VRV_STORE_64 VRV_STORE
#define VRV_FIXED(name, word) int vrv_##name(VrvEncoder& enc);
#include "retarget/rv_instructions.def"

int vrv_lui(VrvEncoder& enc, uint32_t rd, uint32_t imm20);
int vrv_auipc(VrvEncoder& enc, uint32_t rd, uint32_t imm20);
int vrv_jalr(VrvEncoder& enc, uint32_t rd, uint32_t rs1, int32_t imm);

int vrv_mv(VrvEncoder& enc, uint32_t rd, uint32_t rs);
int vrv_not(VrvEncoder& enc, uint32_t rd, uint32_t rs);
int vrv_neg(VrvEncoder& enc, uint32_t rd, uint32_t rs);

// To labels; the distance is filled in by vrv_resolve. `funct3` is one of RvBranch.
int vrv_branch(VrvEncoder& enc, uint32_t funct3, uint32_t rs1, uint32_t rs2, int32_t label);
int vrv_jal(VrvEncoder& enc, uint32_t rd, int32_t label);
int vrv_j(VrvEncoder& enc, int32_t label);
int vrv_call(VrvEncoder& enc, int32_t label);

/// Loads a number in one or two words. On RV64 two words leave 0x7FFFF800 and up with wrong upper bits.
int vrv_li(VrvEncoder& enc, uint32_t rd, int32_t value);
/// Loads a number on RV64, sign-extended, in one or two words.
int vrv_li64(VrvEncoder& enc, uint32_t rd, int32_t value);
/// Loads an address relative to here in two words. 1 without an error, and nothing written, if it is out
/// of reach.
int vrv_la_pcrel(VrvEncoder& enc, uint32_t rd, int64_t target);

// Signed comparisons that leave 0 or 1; `rd` may be an operand.
int vrv_cmp_lt(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b);
int vrv_cmp_gt(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b);
int vrv_cmp_le(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b);
int vrv_cmp_ge(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b);
int vrv_cmp_eq(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b);
int vrv_cmp_ne(VrvEncoder& enc, uint32_t rd, uint32_t a, uint32_t b);

}  // namespace vorc
