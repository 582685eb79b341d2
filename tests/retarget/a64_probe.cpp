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

std::string Register(uint32_t number, const char* last) {
  return number == 31 ? last : "x" + std::to_string(number);
}

// One operand: its number and its texts.
struct Any {
  uint32_t number = g_random() % 32;
  std::string text = Register(number, "xzr");
  std::string w = number == 31 ? "wzr" : "w" + std::to_string(number);
  std::string base = Register(number, "sp");
};

template <typename Emit>
void Try(const std::string& text, Emit emit) {
  Va64Encoder enc;
  if (emit(enc) != 0 || va64_resolve(enc) != 0) {
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

std::string Number(uint32_t number) {
  return std::to_string(number);
}

std::string AccessText(const std::string& name, uint32_t bytes, const Any& a, const Any& b, int32_t offset) {
  const bool narrow = name == "str32" || name == "ldr32" || name == "strh" || name == "ldrh" ||
                      name == "strb" || name == "ldrb";
  return Format("%s %s,[%s,#%d]", Mnemonic(name).c_str(), (narrow && bytes < 8 ? a.w : a.text).c_str(),
                b.base.c_str(), offset);
}

void RegularForms() {
#define A64_MOVE(name, bits)                                                     \
  for (const uint32_t shift : {0U, 16U, 32U, 48U}) {                             \
    for (const uint32_t imm : {0U, 1U, 0xFFFFU, 0x1234U}) {                      \
      const Any a;                                                               \
      Try(Format(#name " %s,#%u,lsl #%u", a.text.c_str(), imm, shift),           \
          [&](Va64Encoder& e) { return va64_##name(e, a.number, imm, shift); }); \
    }                                                                            \
  }
#define A64_IMMEDIATE(name, bits)                                                                    \
  for (const int32_t imm : {0, 1, 4095, 1365}) {                                                     \
    for (const uint32_t shifted : {0U, 1U}) {                                                        \
      const Any a, b;                                                                                \
      const bool flags = Mnemonic(#name) == "subs";                                                  \
      Try(Format("%s %s,%s,#%d,lsl #%u", Mnemonic(#name).c_str(), (flags ? a.text : a.base).c_str(), \
                 b.base.c_str(), imm, shifted * 12),                                                 \
          [&](Va64Encoder& e) { return va64_##name(e, a.number, b.number, imm, shifted); });         \
    }                                                                                                \
  }
#define A64_REGISTERS(name, bits)                                                      \
  for (int i = 0; i < 12; ++i) {                                                       \
    const Any a, b, c;                                                                 \
    Try(#name " " + a.text + "," + b.text + "," + c.text,                              \
        [&](Va64Encoder& e) { return va64_##name(e, a.number, b.number, c.number); }); \
  }
#define A64_ACCESS(name, bits, bytes)                                                      \
  for (const int32_t step : {0, 1, 4095, 1365, 77}) {                                      \
    const Any a, b;                                                                        \
    Try(AccessText(#name, bytes, a, b, step* bytes),                                       \
        [&](Va64Encoder& e) { return va64_##name(e, a.number, b.number, step * bytes); }); \
  }
#define A64_CONVERT(name, bits, spelling)                                                              \
  for (int i = 0; i < 4; ++i) {                                                                        \
    const auto d = static_cast<uint32_t>(g_random() % 31), n = static_cast<uint32_t>(g_random() % 31); \
    std::string text = spelling;                                                                       \
    for (size_t at; (at = text.find('D')) != std::string::npos;) text.replace(at, 1, Number(d));       \
    for (size_t at; (at = text.find('N')) != std::string::npos;) text.replace(at, 1, Number(n));       \
    Try(text, [&](Va64Encoder& e) { return va64_##name(e, d, n); });                                   \
  }
#define A64_EXCEPTION(name, bits)                                                        \
  for (const uint32_t imm : {0U, 1U, 0xFFFFU}) {                                         \
    Try(Format(#name " #%u", imm), [&](Va64Encoder& e) { return va64_##name(e, imm); }); \
  }
#define A64_INDIRECT(name, bits)                                                       \
  for (int i = 0; i < 6; ++i) {                                                        \
    const Any a;                                                                       \
    Try(#name " " + a.text, [&](Va64Encoder& e) { return va64_##name(e, a.number); }); \
  }
#define A64_FIXED(name, bits) Try(#name, [](Va64Encoder& e) { return va64_##name(e); });
#include "retarget/a64_instructions.def"
  for (uint32_t cond = 0; cond < kAl; ++cond) {
    static constexpr const char* kNames[] = {"eq", "ne", "cs", "cc", "mi", "pl", "vs",
                                             "vc", "hi", "ls", "ge", "lt", "gt", "le"};
    const Any a, b, c, d;
    Try(Format("cset %s,%s", a.text.c_str(), kNames[cond]),
        [&](Va64Encoder& e) { return va64_cset(e, a.number, cond); });
    Try("mov " + a.text + "," + b.text, [&](Va64Encoder& e) { return va64_mov_reg(e, a.number, b.number); });
    Try("add " + a.base + "," + b.base + ",#0",
        [&](Va64Encoder& e) { return va64_mov_sp(e, a.number, b.number); });
    Try("msub " + a.text + "," + b.text + "," + c.text + "," + d.text,
        [&](Va64Encoder& e) { return va64_msub(e, a.number, b.number, c.number, d.number); });
    Try(Format("cmp %s,#%u", b.base.c_str(), cond * 300),
        [&](Va64Encoder& e) { return va64_cmp_imm(e, b.number, cond * 300); });
    Try("cmp " + a.text + "," + b.text, [&](Va64Encoder& e) { return va64_cmp(e, a.number, b.number); });
  }
}

// A branch with so many words between it and its label, which lies behind it or ahead.
void Branches(int32_t distance) {
  const auto text = [&](const std::string& head) {
    std::string all;
    for (int i = 0; i < -distance; ++i) all += "nop;";
    all += head + Format(".%+d", distance * 4);
    for (int i = 1; i < distance; ++i) all += ";nop";
    return all;
  };
  const auto around = [&](auto emit) {
    return [=](Va64Encoder& e) {
      const int32_t label = va64_new_label(e);
      if (distance <= 0) va64_place_label(e, label);
      for (int i = 0; i < -distance; ++i) va64_nop(e);
      const int failed = emit(e, label);
      for (int i = 1; i < distance; ++i) va64_nop(e);
      if (distance > 0) va64_place_label(e, label);
      return failed;
    };
  };
  const Any a;
  Try(text("b "), around([](Va64Encoder& e, int32_t label) { return va64_b(e, label); }));
  Try(text("bl "), around([](Va64Encoder& e, int32_t label) { return va64_bl(e, label); }));
  Try(text("b.gt "), around([](Va64Encoder& e, int32_t label) { return va64_bcond(e, kGt, label); }));
  Try(text("cbz " + a.text + ","),
      around([a](Va64Encoder& e, int32_t label) { return va64_cbz(e, a.number, label); }));
  Try(text("cbnz " + a.text + ","),
      around([a](Va64Encoder& e, int32_t label) { return va64_cbnz(e, a.number, label); }));
}

void Pages() {
  for (const int64_t pages : {0L, 1L, 2L, 3L, 0x12345L, 0xFFFFFL}) {
    const Any a;
    Try(Format("adrp %s,.+0x%llx", a.text.c_str(), static_cast<unsigned long long>(pages << 12)),
        [&](Va64Encoder& e) { return va64_adrp(e, a.number, static_cast<uint64_t>(pages << 12) + 0xFFF); });
  }
}

// Address pairs to places near and far, at an odd distance too.
void Addresses() {
  for (const uint32_t target : {0U, 4U, 4091U, 0xFFFFFU}) {
    Try(Format("adr x5,.+%u;nop", target), [&](Va64Encoder& e) {
      return va64_address(e, 5) != 0 || va64_poke_address(e, 0, target) != 0 ? 1 : 0;
    });
  }
  Try("adrp x7,.+0x345000;add x7,x7,#0x123", [](Va64Encoder& e) {
    return va64_address(e, 7) != 0 || va64_poke_address(e, 0, 0x345123) != 0 ? 1 : 0;
  });
}

}  // namespace

int main() {
  RegularForms();
  for (const int32_t distance : {0, 1, 2, 100, -1, -100}) Branches(distance);
  Pages();
  Addresses();
  return 0;
}
