#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "retarget/code_bytes.h"

namespace vorc {

inline constexpr size_t kVa64MaxLabels = 4096;
inline constexpr size_t kVa64MaxFixups = 65536;

enum A64Condition : uint32_t {
  kEq,
  kNe,
  kCs,
  kCc,
  kMi,
  kPl,
  kVs,
  kVc,
  kHi,
  kLs,
  kGe,
  kLt,
  kGt,
  kLe,
  kAl,
  kNv,
};

/// A word whose distance to a label is still to be filled in.
struct Va64Fixup {
  enum Kind : uint32_t { kBranch26, kBranch19 };

  uint32_t offset = 0;
  int32_t label = 0;
  Kind kind = kBranch26;
};

/// A64 machine code as it grows. Registers are numbers 0 to 31, where 31 is the stack pointer as a base and
/// in the immediate forms of add and sub, elsewhere zero. Offsets count bytes of `code`.
struct Va64Encoder {
  CodeBytes code;
  /// The address of the first byte.
  uint32_t base = 0;
  std::vector<CodeLabel> labels;
  std::vector<int32_t> free_labels;  ///< numbers that may be given again
  std::vector<Va64Fixup> fixups;
  /// Set by the first fault and never cleared: nothing is written any more.
  bool error = false;
  /// The first fault in words.
  std::string message;
};

// All that emit give 0, or 1 if they could not; then the error is set.

/// Starts anew, with no code and no fault.
void va64_init(Va64Encoder& enc, uint32_t base);
/// The first fault in words, or "ok".
const char* va64_error(const Va64Encoder* enc);
/// The offset and the address of the next byte.
uint32_t va64_here(const Va64Encoder& enc);
uint32_t va64_addr(const Va64Encoder& enc);

int va64_word(Va64Encoder& enc, uint32_t word);
int va64_bytes(Va64Encoder& enc, std::span<const uint8_t> bytes);
/// A text and its final zero.
int va64_string(Va64Encoder& enc, std::string_view text);
/// Zero bytes up to a multiple of `n`; none for 0.
int va64_align(Va64Encoder& enc, uint32_t n);
/// Overwrites a word that lies within the code.
int va64_poke_word(Va64Encoder& enc, uint32_t offset, uint32_t word);

/// The number of a fresh label, -1 if there is none left.
int32_t va64_new_label(Va64Encoder& enc);
/// Puts a label where the next byte goes. A label is placed once.
int va64_place_label(Va64Encoder& enc, int32_t label);
/// Fills in the branches to these labels that are recorded from `first_fixup` on, and gives the labels, all
/// of them placed, back for new ones.
int va64_release_labels(Va64Encoder& enc, size_t first_fixup, std::span<const int32_t> labels);
/// Fills in the distances of all other branches. To be called once, when all code is there.
int va64_resolve(Va64Encoder& enc);

// One function an instruction: va64_add, va64_ldr, va64_ret and so on.
#define A64_MOVE(name, bits) int va64_##name(Va64Encoder& enc, uint32_t rd, uint32_t imm16, uint32_t shift);
#define A64_IMMEDIATE(name, bits) \
  int va64_##name(Va64Encoder& enc, uint32_t rd, uint32_t rn, int32_t imm12, uint32_t lsl12);
#define A64_REGISTERS(name, bits) int va64_##name(Va64Encoder& enc, uint32_t rd, uint32_t rn, uint32_t rm);
#define A64_ACCESS(name, bits, bytes) \
  int va64_##name(Va64Encoder& enc, uint32_t rt, uint32_t base, int32_t offset);
#define A64_CONVERT(name, bits, text) int va64_##name(Va64Encoder& enc, uint32_t rd, uint32_t rn);
#define A64_EXCEPTION(name, bits) int va64_##name(Va64Encoder& enc, uint32_t imm);
#define A64_INDIRECT(name, bits) int va64_##name(Va64Encoder& enc, uint32_t rn);
#define A64_FIXED(name, bits) int va64_##name(Va64Encoder& enc);
#include "retarget/a64_instructions.def"

/// Loads a number in one to four words.
int va64_mov_imm64(Va64Encoder& enc, uint32_t rd, uint64_t value);
int va64_mov_reg(Va64Encoder& enc, uint32_t rd, uint32_t rm);
/// To or from the stack pointer.
int va64_mov_sp(Va64Encoder& enc, uint32_t rd, uint32_t rn);
/// ra - rn * rm.
int va64_msub(Va64Encoder& enc, uint32_t rd, uint32_t rn, uint32_t rm, uint32_t ra);
int va64_cmp_imm(Va64Encoder& enc, uint32_t rn, int32_t imm12);
int va64_cmp(Va64Encoder& enc, uint32_t rn, uint32_t rm);
/// 1 if the condition holds, else 0.
int va64_cset(Va64Encoder& enc, uint32_t rd, uint32_t cond);
/// The address of the 4 KiB page of `target`, relative to that of here.
int va64_adrp(Va64Encoder& enc, uint32_t rd, uint64_t target);
/// Two words that va64_poke_address turns into the address of a place in the code.
int va64_address(Va64Encoder& enc, uint32_t rd);
/// Completes the pair at `offset`. A place within 1 MiB is reached wherever the code lies, one farther away
/// where the code begins on a multiple of 4096.
int va64_poke_address(Va64Encoder& enc, uint32_t offset, uint32_t target);

// To labels; the distance is filled in by va64_resolve. `cond` is one of A64Condition.
int va64_b(Va64Encoder& enc, int32_t label);
int va64_bl(Va64Encoder& enc, int32_t label);
int va64_bcond(Va64Encoder& enc, uint32_t cond, int32_t label);
int va64_cbz(Va64Encoder& enc, uint32_t rt, int32_t label);
int va64_cbnz(Va64Encoder& enc, uint32_t rt, int32_t label);

}  // namespace vorc
