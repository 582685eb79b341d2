// Prints instructions for a script to hold against an assembler and a disassembler, each as
// "text for the assembler|word|our own disassembly"; then random words, with an empty first field.
// Word number N stands at kBase + 4 N.

#include <cstdio>
#include <random>
#include <string>

#include "base/format.h"
#include "retarget/rv_disassemble.h"
#include "retarget/rv_encode.h"

namespace {

using namespace vorc;

constexpr uint32_t kBase = 0x40000000;
constexpr int32_t kImmediates[] = {0, 1, -1, 5, 2047, -2048, -2047, 1365};
constexpr uint32_t kShifts[] = {0, 1, 5, 31, 17};
constexpr int kRandomWords = 20000;

std::mt19937 g_random(1);
uint32_t g_printed = 0;

void Print(const std::string& text, uint32_t word) {
  std::string disassembly;
  vrv_disasm_one(word, kBase + 4 * g_printed++, disassembly);
  std::printf("%s|%08x|%s\n", text.c_str(), word, disassembly.c_str());
}

std::string Any(uint32_t& number) {
  number = g_random() % kRvRegisters;
  return std::string(vrv_register_name(number));
}

// Emits one instruction into an encoder of its own and prints it.
template <typename Emit>
void Try(const std::string& text, Emit emit) {
  VrvEncoder enc;
  if (emit(enc) != 0 || enc.error || enc.code.size() != 4) {
    Print("refused: " + text, 0);
    return;
  }
  Print(text, enc.code.Word(0));
}

template <typename Work>
void ForImmediates(Work work) {
  for (const int32_t imm : kImmediates) work(imm);
  for (int i = 0; i < 8; ++i) work(static_cast<int32_t>(g_random() % 4096) - 2048);
}

void RegularFormats() {
  uint32_t a, b, c;
  std::string x, y, z;
  const auto fresh = [&] { x = Any(a), y = Any(b), z = Any(c); };
#define VRV_R(name, opcode, funct3, funct7)                                                        \
  for (int i = 0; i < 8; ++i) {                                                                    \
    fresh();                                                                                       \
    Try(#name " " + x + "," + y + "," + z, [&](VrvEncoder& e) { return vrv_##name(e, a, b, c); }); \
  }
#define VRV_I(name, opcode, funct3)                               \
  ForImmediates([&](int32_t imm) {                                \
    fresh();                                                      \
    Try(Format(#name " %s,%s,%d", x.c_str(), y.c_str(), imm),     \
        [&](VrvEncoder& e) { return vrv_##name(e, a, b, imm); }); \
  });
#define VRV_SHIFT(name, funct3, funct7)                                      \
  for (const uint32_t count : kShifts) {                                     \
    fresh();                                                                 \
    Try(Format(#name " %s,%s,%u", x.c_str(), y.c_str(), count),              \
        [&](VrvEncoder& e) { return vrv_##name(e, a, b, count); });          \
    Try(Format(#name " %s,%s,%u", x.c_str(), y.c_str(), count + 32),         \
        [&](VrvEncoder& e) { return vrv_##name##64(e, a, b, count + 32); }); \
  }
#define VRV_LOAD(name, funct3)                                    \
  ForImmediates([&](int32_t imm) {                                \
    fresh();                                                      \
    Try(Format(#name " %s,%d(%s)", x.c_str(), imm, y.c_str()),    \
        [&](VrvEncoder& e) { return vrv_##name(e, a, b, imm); }); \
  });
#define VRV_LOAD_64 VRV_LOAD
#define VRV_STORE(name, funct3)                                   \
  ForImmediates([&](int32_t imm) {                                \
    fresh();                                                      \
    Try(Format(#name " %s,%d(%s)", x.c_str(), imm, y.c_str()),    \
        [&](VrvEncoder& e) { return vrv_##name(e, b, imm, a); }); \
  });
#define VRV_STORE_64 VRV_STORE
#define VRV_FIXED(name, word) Try(#name, [](VrvEncoder& e) { return vrv_##name(e); });
#include "retarget/rv_instructions.def"
  ForImmediates([&](int32_t imm) {
    fresh();
    Try(Format("jalr %s,%d(%s)", x.c_str(), imm, y.c_str()),
        [&](VrvEncoder& e) { return vrv_jalr(e, a, b, imm); });
  });
  for (const uint32_t imm : {0U, 1U, 0xFFFFFU, 0x80000U, 0x12345U}) {
    fresh();
    Try(Format("lui %s,0x%x", x.c_str(), imm), [&](VrvEncoder& e) { return vrv_lui(e, a, imm); });
    Try(Format("auipc %s,0x%x", x.c_str(), imm), [&](VrvEncoder& e) { return vrv_auipc(e, a, imm); });
    Try("mv " + x + "," + y, [&](VrvEncoder& e) { return vrv_mv(e, a, b); });
    Try("not " + x + "," + y, [&](VrvEncoder& e) { return vrv_not(e, a, b); });
    Try("neg " + x + "," + y, [&](VrvEncoder& e) { return vrv_neg(e, a, b); });
  }
}

void Distances() {
  static constexpr const char* kNames[] = {"beq", "bne", "", "", "blt", "bge", "bltu", "bgeu"};
  uint32_t a, b;
  for (const uint32_t funct3 : {0U, 1U, 4U, 5U, 6U, 7U}) {
    for (const int32_t distance : {4, -4, 4094, -4096, 2, 2048, -2050, 1366}) {
      const std::string x = Any(a), y = Any(b);
      Try(Format("%s %s,%s,.%+d", kNames[funct3], x.c_str(), y.c_str(), distance),
          [&](VrvEncoder& e) { return vrv_b_type(e, kOpBranch, funct3, a, b, distance); });
    }
  }
  for (const int32_t distance : {4, -4, 1048574, -1048576, 2, 2048, -2050, 4096, -349526, 699050}) {
    const std::string x = Any(a);
    Try(Format("jal %s,.%+d", x.c_str(), distance),
        [&](VrvEncoder& e) { return vrv_j_type(e, kOpJal, a, distance); });
  }
}

}  // namespace

int main() {
  RegularFormats();
  Distances();
  constexpr uint32_t kOpcodes[] = {kOpLoad, kOpImm,   kOpAuipc,  kOpImm32, kOpStore, kOpReg,
                                   kOpLui,  kOpReg32, kOpBranch, kOpJalr,  kOpJal,   kOpReg};
  for (int i = 0; i < kRandomWords; ++i) {
    // Half of them with what funct7 mostly is, since few of its values are instructions.
    const uint32_t mask = i % 2 == 0 ? 0xFFFFFF80 : 0x43FFFF80;
    Print("", (static_cast<uint32_t>(g_random()) & mask) | kOpcodes[g_random() % std::size(kOpcodes)]);
  }
  return 0;
}
