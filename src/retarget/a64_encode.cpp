#include "retarget/a64_encode.h"

#include <algorithm>
#include <unordered_set>

#include "base/format.h"

namespace vorc {
namespace {

constexpr uint32_t kRegisters = 32;
constexpr uint32_t kZero = 31;
constexpr uint32_t kMaxImm12 = 0xFFF;
constexpr uint32_t kMaxImm16 = 0xFFFF;
constexpr size_t kMaxMessage = 255;

constexpr int32_t kMinBranch26 = -0x2000000;
constexpr int32_t kMaxBranch26 = 0x1FFFFFF;
constexpr uint32_t kBranch26Kept = 0xFC000000;
constexpr int32_t kMinBranch19 = -0x40000;
constexpr int32_t kMaxBranch19 = 0x3FFFF;
constexpr uint32_t kBranch19Kept = 0xFF00001F;
constexpr int64_t kAdrpPages = 1 << 20;
constexpr int64_t kAdrBytes = 1 << 20;
constexpr uint32_t kAdr = 0x10000000;
constexpr uint32_t kAdrp = 0x90000000;
constexpr uint32_t kAddImmediate = 0x91000000;

// A distance of 21 bits where ADR and ADRP have it.
uint32_t PageBits(int64_t distance) {
  const auto bits = static_cast<uint32_t>(distance);
  return (bits & 3) << 29 | (bits >> 2 & 0x7FFFF) << 5;
}

/// Keeps the first fault. Always gives 1.
int fail(Va64Encoder& enc, const std::string& message) {
  if (!enc.error) enc.message = message.substr(0, kMaxMessage);
  enc.error = true;
  return 1;
}

int Written(Va64Encoder& enc, bool done) {
  return done ? 0 : fail(enc, Format("out of memory at %d bytes", static_cast<int>(enc.code.size())));
}

int Emit(Va64Encoder& enc, uint32_t word, std::initializer_list<uint32_t> registers) {
  for (const uint32_t number : registers) {
    if (number >= kRegisters) return fail(enc, Format("no register %u", number));
  }
  return va64_word(enc, word);
}

int Move(Va64Encoder& enc, const char* name, uint32_t bits, uint32_t rd, uint32_t imm16, uint32_t shift) {
  if (shift % 16 != 0 || shift > 48) {
    return fail(enc, Format("MOV shift must be 0/16/32/48, got %d", static_cast<int>(shift)));
  }
  if (imm16 > kMaxImm16)
    return fail(enc, Format("%s immediate %d exceeds 16 bits", name, static_cast<int>(imm16)));
  return Emit(enc, bits | shift / 16 << 21 | imm16 << 5 | rd, {rd});
}

int Immediate(Va64Encoder& enc, uint32_t bits, uint32_t rd, uint32_t rn, int32_t imm12, uint32_t lsl12) {
  if (static_cast<uint32_t>(imm12) > kMaxImm12) {
    return fail(enc, Format("immediate %d exceeds 12 bits - load it into a register first", imm12));
  }
  if (lsl12 > 1) return fail(enc, Format("lsl12 must be 0 or 1, got %d", static_cast<int>(lsl12)));
  return Emit(enc, bits | lsl12 << 22 | static_cast<uint32_t>(imm12) << 10 | rn << 5 | rd, {rd, rn});
}

int Access(Va64Encoder& enc, const char* name, uint32_t bits, int32_t bytes, uint32_t rt, uint32_t base,
           int32_t offset) {
  if (offset % bytes != 0) {
    return fail(enc, Format("%s: %u-byte access at offset %u is not naturally aligned", name,
                            static_cast<uint32_t>(bytes), static_cast<uint32_t>(offset)));
  }
  const auto scaled = static_cast<uint32_t>(offset / bytes);
  if (scaled > kMaxImm12) return fail(enc, Format("offset %d does not fit the scaled 12-bit field", offset));
  return Emit(enc, bits | scaled << 10 | base << 5 | rt, {rt, base});
}

int Exception(Va64Encoder& enc, const char* name, uint32_t bits, uint32_t imm) {
  if (imm > kMaxImm16)
    return fail(enc, Format("%s immediate %d exceeds 16 bits", name, static_cast<int>(imm)));
  return Emit(enc, bits | imm << 5, {});
}

int EmitWithFixup(Va64Encoder& enc, Va64Fixup::Kind kind, int32_t label, uint32_t word) {
  if (enc.error) return 1;
  if (enc.fixups.size() == kVa64MaxFixups) return fail(enc, "out of fixups");
  enc.fixups.push_back({enc.code.size(), label, kind});
  return va64_word(enc, word);
}

int CompareAndBranch(Va64Encoder& enc, uint32_t bits, uint32_t rt, int32_t label) {
  if (rt >= kRegisters) return fail(enc, Format("no register %u", rt));
  return EmitWithFixup(enc, Va64Fixup::kBranch19, label, bits | rt);
}

int Resolve(Va64Encoder& enc, const Va64Fixup& fixup) {
  const int32_t number = fixup.label;
  if (number < 0 || static_cast<size_t>(number) >= enc.labels.size()) {
    return fail(enc, Format("fixup names bad label %d", number));
  }
  const CodeLabel& label = enc.labels[static_cast<size_t>(number)];
  if (!label.placed) return fail(enc, Format("label %d never placed", number));
  const int32_t bytes = static_cast<int32_t>(label.offset) - static_cast<int32_t>(fixup.offset);
  if (bytes % 4 != 0) {
    return fail(enc, Format("branch target at %d is not 4-aligned", static_cast<int>(label.offset)));
  }
  const int32_t words = bytes / 4;
  const auto bits = static_cast<uint32_t>(words);
  const uint32_t word = enc.code.Word(fixup.offset);
  if (fixup.kind == Va64Fixup::kBranch26) {
    if (words < kMinBranch26 || words > kMaxBranch26) {
      return fail(enc, Format("branch out of +-128MB range (%d instructions)", words));
    }
    enc.code.SetWord(fixup.offset, (word & kBranch26Kept) | (bits & ~kBranch26Kept));
  } else {
    if (words < kMinBranch19 || words > kMaxBranch19) {
      return fail(enc, Format("conditional branch out of +-1MB range (%d)", words));
    }
    enc.code.SetWord(fixup.offset, (word & kBranch19Kept) | (bits << 5 & ~kBranch19Kept));
  }
  return 0;
}

}  // namespace

void va64_init(Va64Encoder& enc, uint32_t base) {
  enc = {};
  enc.base = base;
}

const char* va64_error(const Va64Encoder* enc) {
  if (enc == nullptr) return "no emitter";
  return enc->error ? enc->message.c_str() : "ok";
}

uint32_t va64_here(const Va64Encoder& enc) {
  return enc.code.size();
}
uint32_t va64_addr(const Va64Encoder& enc) {
  return enc.base + enc.code.size();
}

int va64_word(Va64Encoder& enc, uint32_t word) {
  return enc.error ? 1 : Written(enc, enc.code.AppendWord(word));
}

int va64_bytes(Va64Encoder& enc, std::span<const uint8_t> bytes) {
  return enc.error ? 1 : Written(enc, enc.code.Append(bytes));
}

int va64_string(Va64Encoder& enc, std::string_view text) {
  return enc.error ? 1 : Written(enc, enc.code.AppendText(text));
}

int va64_align(Va64Encoder& enc, uint32_t n) {
  return enc.error ? 1 : Written(enc, enc.code.Align(n));
}

int va64_poke_word(Va64Encoder& enc, uint32_t offset, uint32_t word) {
  if (!enc.code.HoldsWord(offset)) return fail(enc, Format("no word at %u", offset));
  enc.code.SetWord(offset, word);
  return 0;
}

int32_t va64_new_label(Va64Encoder& enc) {
  if (!enc.free_labels.empty()) {
    const int32_t label = enc.free_labels.back();
    enc.free_labels.pop_back();
    enc.labels[static_cast<size_t>(label)] = {};
    return label;
  }
  if (enc.labels.size() == kVa64MaxLabels) {
    fail(enc, "out of labels");
    return -1;
  }
  enc.labels.emplace_back();
  return static_cast<int32_t>(enc.labels.size() - 1);
}

int va64_place_label(Va64Encoder& enc, int32_t label) {
  if (label < 0 || static_cast<size_t>(label) >= enc.labels.size())
    return fail(enc, Format("bad label %d", label));
  CodeLabel& place = enc.labels[static_cast<size_t>(label)];
  if (place.placed) return fail(enc, Format("label %d placed twice", label));
  place = {true, enc.code.size()};
  return 0;
}

int va64_release_labels(Va64Encoder& enc, size_t first_fixup, std::span<const int32_t> labels) {
  if (enc.error) return 1;
  const std::unordered_set<int32_t> released(labels.begin(), labels.end());
  const auto first =
      enc.fixups.begin() + static_cast<std::ptrdiff_t>(std::min(first_fixup, enc.fixups.size()));
  const auto kept = std::stable_partition(
      first, enc.fixups.end(), [&](const Va64Fixup& fixup) { return !released.contains(fixup.label); });
  for (auto at = kept; at != enc.fixups.end(); ++at) {
    if (Resolve(enc, *at) != 0) return 1;
  }
  enc.fixups.erase(kept, enc.fixups.end());
  enc.free_labels.insert(enc.free_labels.end(), labels.begin(), labels.end());
  return 0;
}

int va64_resolve(Va64Encoder& enc) {
  if (enc.error) return 1;
  for (const Va64Fixup& fixup : enc.fixups) {
    if (Resolve(enc, fixup) != 0) return 1;
  }
  return 0;
}

#define A64_MOVE(name, bits)                                                       \
  int va64_##name(Va64Encoder& enc, uint32_t rd, uint32_t imm16, uint32_t shift) { \
    return Move(enc, #name, bits, rd, imm16, shift);                               \
  }
#define A64_IMMEDIATE(name, bits)                                                              \
  int va64_##name(Va64Encoder& enc, uint32_t rd, uint32_t rn, int32_t imm12, uint32_t lsl12) { \
    return Immediate(enc, bits, rd, rn, imm12, lsl12);                                         \
  }
#define A64_REGISTERS(name, bits)                                            \
  int va64_##name(Va64Encoder& enc, uint32_t rd, uint32_t rn, uint32_t rm) { \
    return Emit(enc, bits | rm << 16 | rn << 5 | rd, {rd, rn, rm});          \
  }
#define A64_ACCESS(name, bits, bytes)                                             \
  int va64_##name(Va64Encoder& enc, uint32_t rt, uint32_t base, int32_t offset) { \
    return Access(enc, #name, bits, bytes, rt, base, offset);                     \
  }
#define A64_CONVERT(name, bits, text)                           \
  int va64_##name(Va64Encoder& enc, uint32_t rd, uint32_t rn) { \
    return Emit(enc, bits | rn << 5 | rd, {rd, rn});            \
  }
#define A64_EXCEPTION(name, bits)                   \
  int va64_##name(Va64Encoder& enc, uint32_t imm) { \
    return Exception(enc, #name, bits, imm);        \
  }
#define A64_INDIRECT(name, bits)                   \
  int va64_##name(Va64Encoder& enc, uint32_t rn) { \
    return Emit(enc, bits | rn << 5, {rn});        \
  }
#define A64_FIXED(name, bits)         \
  int va64_##name(Va64Encoder& enc) { \
    return Emit(enc, bits, {});       \
  }
#include "retarget/a64_instructions.def"

int va64_mov_imm64(Va64Encoder& enc, uint32_t rd, uint64_t value) {
  if (~value <= kMaxImm16) return va64_movn(enc, rd, static_cast<uint32_t>(~value), 0);
  bool first = true;
  for (uint32_t shift = 0; shift < 64; shift += 16) {
    const auto group = static_cast<uint32_t>(value >> shift & kMaxImm16);
    if (group == 0 && !(value == 0 && shift == 0)) continue;
    const int failed = first ? va64_movz(enc, rd, group, shift) : va64_movk(enc, rd, group, shift);
    if (failed != 0) return failed;
    first = false;
  }
  return 0;
}

int va64_mov_reg(Va64Encoder& enc, uint32_t rd, uint32_t rm) {
  return va64_orr(enc, rd, kZero, rm);
}
int va64_mov_sp(Va64Encoder& enc, uint32_t rd, uint32_t rn) {
  return va64_add_imm(enc, rd, rn, 0, 0);
}

int va64_msub(Va64Encoder& enc, uint32_t rd, uint32_t rn, uint32_t rm, uint32_t ra) {
  return Emit(enc, 0x9B008000 | rm << 16 | ra << 10 | rn << 5 | rd, {rd, rn, rm, ra});
}

int va64_cmp_imm(Va64Encoder& enc, uint32_t rn, int32_t imm12) {
  return va64_subs_imm(enc, kZero, rn, imm12, 0);
}

int va64_cmp(Va64Encoder& enc, uint32_t rn, uint32_t rm) {
  return va64_subs(enc, kZero, rn, rm);
}

int va64_cset(Va64Encoder& enc, uint32_t rd, uint32_t cond) {
  if (cond >= kAl) {
    return fail(enc,
                Format("cset with an always/never condition (%d) is meaningless", static_cast<int>(cond)));
  }
  return Emit(enc, 0x9A9F07E0 | (cond ^ 1) << 12 | rd, {rd});
}

int va64_adrp(Va64Encoder& enc, uint32_t rd, uint64_t target) {
  const int64_t pages = static_cast<int64_t>(target >> 12) - static_cast<int64_t>(va64_addr(enc) >> 12);
  if (pages < -kAdrpPages || pages >= kAdrpPages) {
    return fail(enc, "adrp target is more than +-4GB away");
  }
  return Emit(enc, kAdrp | PageBits(pages) | rd, {rd});
}

int va64_address(Va64Encoder& enc, uint32_t rd) {
  return Emit(enc, kAdr | rd, {rd}) != 0 || va64_nop(enc) != 0 ? 1 : 0;
}

int va64_poke_address(Va64Encoder& enc, uint32_t offset, uint32_t target) {
  if (!enc.code.HoldsWord(offset) || !enc.code.HoldsWord(offset + 4)) {
    return fail(enc, Format("no address at %u", offset));
  }
  const uint32_t rd = enc.code.Word(offset) & (kRegisters - 1);
  const int64_t bytes = int64_t{target} - int64_t{offset};
  if (bytes >= -kAdrBytes && bytes < kAdrBytes) {
    enc.code.SetWord(offset, kAdr | PageBits(bytes) | rd);
    return 0;
  }
  const int64_t pages = int64_t{target >> 12} - int64_t{offset >> 12};
  enc.code.SetWord(offset, kAdrp | PageBits(pages) | rd);
  enc.code.SetWord(offset + 4, kAddImmediate | (target & kMaxImm12) << 10 | rd << 5 | rd);
  return 0;
}

int va64_b(Va64Encoder& enc, int32_t label) {
  return EmitWithFixup(enc, Va64Fixup::kBranch26, label, 0x14000000);
}

int va64_bl(Va64Encoder& enc, int32_t label) {
  return EmitWithFixup(enc, Va64Fixup::kBranch26, label, 0x94000000);
}

int va64_bcond(Va64Encoder& enc, uint32_t cond, int32_t label) {
  if (cond > kNv) return fail(enc, Format("no condition %u", cond));
  return EmitWithFixup(enc, Va64Fixup::kBranch19, label, 0x54000000 | cond);
}

int va64_cbz(Va64Encoder& enc, uint32_t rt, int32_t label) {
  return CompareAndBranch(enc, 0xB4000000, rt, label);
}

int va64_cbnz(Va64Encoder& enc, uint32_t rt, int32_t label) {
  return CompareAndBranch(enc, 0xB5000000, rt, label);
}

}  // namespace vorc
