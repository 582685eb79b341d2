// Prints A64 instructions for a script to hold against an assembler, each as "text|word". A text of
// several instructions, parted by ";", has as many words.

#include <cstdio>
#include <random>
#include <string>

#include "base/format.h"
#include "retarget/a64_encode.h"

namespace {

using namespace vorc;

std::mt19937 g_random(1);

struct Operands {
  uint32_t x = g_random() % 32, y = g_random() % 32, z = g_random() % 32, v = g_random() % 32;
  uint32_t d = x % 31, n = y % 31;
  int32_t i = 0;
};

using E = Va64Encoder&;
using O = const Operands&;

// What a letter of a form stands for: X, Y, Z and V for registers, W for the narrow one of X, S and T for X
// and Y as bases, D and N for bare numbers of registers, I for the number.
std::string Spelled(char letter, O o) {
  const auto name = [](const char* kind, uint32_t number, const char* last) {
    return number == 31 ? last : kind + std::to_string(number);
  };
  switch (letter) {
    case 'X': return name("x", o.x, "xzr");
    case 'Y': return name("x", o.y, "xzr");
    case 'Z': return name("x", o.z, "xzr");
    case 'V': return name("x", o.v, "xzr");
    case 'W': return name("w", o.x, "wzr");
    case 'S': return name("x", o.x, "sp");
    case 'T': return name("x", o.y, "sp");
    case 'D': return std::to_string(o.d);
    case 'N': return std::to_string(o.n);
    case 'I': return std::to_string(o.i);
    default: return std::string(1, letter);
  }
}

template <typename Emit>
void Try(std::string_view form, int32_t number, Emit emit) {
  Operands o;
  o.i = number;
  std::string text;
  for (const char letter : form) text += Spelled(letter, o);
  Va64Encoder enc;
  if (emit(enc, o) != 0 || va64_resolve(enc) != 0) {
    std::printf("%s|refused: %s\n", text.c_str(), va64_error(&enc));
    return;
  }
  std::printf("%s|", text.c_str());
  for (uint32_t at = 0; at < enc.code.size(); at += 4) std::printf("%08x ", enc.code.Word(at));
  std::printf("\n");
}

// The assembler's word for a function's name: "add" of "add_imm", "ldr" of "ldr32".
std::string Mnemonic(const std::string& name) {
  return name.substr(0, name.find_first_of("_3"));
}

std::string AccessForm(const std::string& name) {
  const bool narrow = name == "str32" || name == "ldr32" || name == "strh" || name == "ldrh" ||
                      name == "strb" || name == "ldrb";
  return Mnemonic(name) + (narrow ? " W" : " X") + ",[T,#I]";
}

void RegularForms() {
#define A64_MOVE(name, bits)                                \
  for (const uint32_t shift : {0U, 16U, 32U, 48U})          \
    for (const int32_t imm : {0, 1, 0xFFFF, 0x1234})        \
      Try(#name " X,#I,lsl #" + std::to_string(shift), imm, \
          [&](E e, O o) { return va64_##name(e, o.x, static_cast<uint32_t>(imm), shift); });
#define A64_IMMEDIATE(name, bits)                                                       \
  for (const int32_t imm : {0, 1, 4095, 1365})                                          \
    for (const uint32_t shifted : {0U, 1U})                                             \
      Try(Mnemonic(#name) + (Mnemonic(#name) == "subs" ? " X" : " S") + ",T,#I,lsl #" + \
              std::to_string(shifted * 12),                                             \
          imm, [&](E e, O o) { return va64_##name(e, o.x, o.y, imm, shifted); });
#define A64_REGISTERS(name, bits) \
  for (int i = 0; i < 12; ++i) Try(#name " X,Y,Z", 0, [](E e, O o) { return va64_##name(e, o.x, o.y, o.z); });
#define A64_ACCESS(name, bits, bytes)               \
  for (const int32_t step : {0, 1, 4095, 1365, 77}) \
    Try(AccessForm(#name), step* bytes, [](E e, O o) { return va64_##name(e, o.x, o.y, o.i); });
#define A64_CONVERT(name, bits, spelling) \
  for (int i = 0; i < 4; ++i) Try(spelling, 0, [](E e, O o) { return va64_##name(e, o.d, o.n); });
#define A64_EXCEPTION(name, bits)          \
  for (const int32_t imm : {0, 1, 0xFFFF}) \
    Try(#name " #I", imm, [](E e, O o) { return va64_##name(e, static_cast<uint32_t>(o.i)); });
#define A64_INDIRECT(name, bits) \
  for (int i = 0; i < 6; ++i) Try(#name " X", 0, [](E e, O o) { return va64_##name(e, o.x); });
#define A64_FIXED(name, bits) Try(#name, 0, [](E e, O) { return va64_##name(e); });
#include "retarget/a64_instructions.def"
  static constexpr const char* kConditions[] = {"eq", "ne", "cs", "cc", "mi", "pl", "vs",
                                                "vc", "hi", "ls", "ge", "lt", "gt", "le"};
  for (uint32_t cond = 0; cond < kAl; ++cond) {
    Try(std::string("cset X,") + kConditions[cond], 0, [&](E e, O o) { return va64_cset(e, o.x, cond); });
    Try("mov X,Y", 0, [](E e, O o) { return va64_mov_reg(e, o.x, o.y); });
    Try("add S,T,#0", 0, [](E e, O o) { return va64_mov_sp(e, o.x, o.y); });
    Try("msub X,Y,Z,V", 0, [](E e, O o) { return va64_msub(e, o.x, o.y, o.z, o.v); });
    Try("cmp T,#I", static_cast<int32_t>(cond) * 300, [](E e, O o) { return va64_cmp_imm(e, o.y, o.i); });
    Try("cmp X,Y", 0, [](E e, O o) { return va64_cmp(e, o.x, o.y); });
  }
}

// A branch with so many words between it and its label, which lies behind it or ahead.
void Branches(int32_t distance) {
  const auto text = [&](std::string_view head) {
    std::string all;
    for (int i = 0; i < -distance; ++i) all += "nop;";
    all += std::string(head) + Format(".%+d", distance * 4);
    for (int i = 1; i < distance; ++i) all += ";nop";
    return all;
  };
  const auto around = [&](std::string_view head, auto emit) {
    Try(text(head), 0, [&](E e, O o) {
      const int32_t label = va64_new_label(e);
      if (distance <= 0) va64_place_label(e, label);
      for (int i = 0; i < -distance; ++i) va64_nop(e);
      const int failed = emit(e, o, label);
      for (int i = 1; i < distance; ++i) va64_nop(e);
      if (distance > 0) va64_place_label(e, label);
      return failed;
    });
  };
  around("b ", [](E e, O, int32_t label) { return va64_b(e, label); });
  around("bl ", [](E e, O, int32_t label) { return va64_bl(e, label); });
  around("b.gt ", [](E e, O, int32_t label) { return va64_bcond(e, kGt, label); });
  around("cbz X,", [](E e, O o, int32_t label) { return va64_cbz(e, o.x, label); });
  around("cbnz X,", [](E e, O o, int32_t label) { return va64_cbnz(e, o.x, label); });
}

// Pages, and address pairs to places near and far, at an odd distance too.
void Addresses() {
  for (const int32_t pages : {0, 1, 2, 3, 0x12345, 0xFFFFF}) {
    Try(Format("adrp X,.+0x%llx", static_cast<unsigned long long>(pages) << 12), pages,
        [](E e, O o) { return va64_adrp(e, o.x, (static_cast<uint64_t>(o.i) << 12) + 0xFFF); });
  }
  const auto pair = [](E e, O o) {
    return va64_address(e, 5) != 0 || va64_poke_address(e, 0, static_cast<uint32_t>(o.i)) != 0;
  };
  for (const int32_t target : {0, 4, 4091, 0xFFFFF}) Try("adr x5,.+I;nop", target, pair);
  Try("adrp x5,.+0x345000;add x5,x5,#0x123", 0x345123, pair);
}

}  // namespace

int main() {
  RegularForms();
  for (const int32_t distance : {0, 1, 2, 100, -1, -100}) Branches(distance);
  Addresses();
  return 0;
}
