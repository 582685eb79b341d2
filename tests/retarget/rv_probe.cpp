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
constexpr int32_t kShifts[] = {0, 1, 5, 31, 17};
constexpr int kRandomWords = 20000;

std::mt19937 g_random(1);
uint32_t g_printed = 0;

void Print(const std::string& text, uint32_t word) {
  std::string disassembly;
  vrv_disasm_one(word, kBase + 4 * g_printed++, disassembly);
  std::printf("%s|%08x|%s\n", text.c_str(), word, disassembly.c_str());
}

struct Operands {
  uint32_t x = g_random() % kRvRegisters, y = g_random() % kRvRegisters, z = g_random() % kRvRegisters;
  int32_t n = 0;
};

// Emits one instruction into an encoder of its own and prints it. In its form X, Y and Z stand for the
// registers of the operands, N for their number.
template <typename Emit>
void Try(std::string_view form, int32_t number, Emit emit, const char* spelling = "%d") {
  Operands o;
  o.n = number;
  std::string text;
  for (const char c : form) {
    if (c == 'N')
      text += Format(spelling, number);
    else if (c >= 'X' && c <= 'Z')
      text += vrv_register_name(c == 'X' ? o.x : c == 'Y' ? o.y : o.z);
    else
      text += c;
  }
  VrvEncoder enc;
  if (emit(enc, o) != 0 || enc.error || enc.code.size() != 4)
    Print("refused: " + text, 0);
  else
    Print(text, enc.code.Word(0));
}

using E = VrvEncoder&;
using O = const Operands&;

template <typename Emit>
void ForImmediates(std::string_view form, Emit emit) {
  for (const int32_t imm : kImmediates) Try(form, imm, emit);
  for (int i = 0; i < 8; ++i) Try(form, static_cast<int32_t>(g_random() % 4096) - 2048, emit);
}

void RegularFormats() {
#define VRV_R(name, opcode, funct3, funct7) \
  for (int i = 0; i < 8; ++i) Try(#name " X,Y,Z", 0, [](E e, O o) { return vrv_##name(e, o.x, o.y, o.z); });
#define VRV_I(name, opcode, funct3) \
  ForImmediates(#name " X,Y,N", [](E e, O o) { return vrv_##name(e, o.x, o.y, o.n); });
#define VRV_SHIFT(name, funct3, funct7)                                                         \
  for (const int32_t count : kShifts) {                                                         \
    Try(#name " X,Y,N", count, [](E e, O o) { return vrv_##name(e, o.x, o.y, o.n); });          \
    Try(#name " X,Y,N", count + 32, [](E e, O o) { return vrv_##name##64(e, o.x, o.y, o.n); }); \
  }
#define VRV_LOAD(name, funct3) \
  ForImmediates(#name " X,N(Y)", [](E e, O o) { return vrv_##name(e, o.x, o.y, o.n); });
#define VRV_LOAD_64 VRV_LOAD
#define VRV_STORE(name, funct3) \
  ForImmediates(#name " X,N(Y)", [](E e, O o) { return vrv_##name(e, o.y, o.n, o.x); });
#define VRV_STORE_64 VRV_STORE
#define VRV_FIXED(name, word) Try(#name, 0, [](E e, O) { return vrv_##name(e); });
#include "retarget/rv_instructions.def"
  ForImmediates("jalr X,N(Y)", [](E e, O o) { return vrv_jalr(e, o.x, o.y, o.n); });
  for (const int32_t imm : {0, 1, 0xFFFFF, 0x80000, 0x12345}) {
    Try("lui X,N", imm, [](E e, O o) { return vrv_lui(e, o.x, static_cast<uint32_t>(o.n)); });
    Try("auipc X,N", imm, [](E e, O o) { return vrv_auipc(e, o.x, static_cast<uint32_t>(o.n)); });
    Try("mv X,Y", 0, [](E e, O o) { return vrv_mv(e, o.x, o.y); });
    Try("not X,Y", 0, [](E e, O o) { return vrv_not(e, o.x, o.y); });
    Try("neg X,Y", 0, [](E e, O o) { return vrv_neg(e, o.x, o.y); });
  }
}

void Distances() {
  static constexpr const char* kNames[] = {"beq", "bne", "", "", "blt", "bge", "bltu", "bgeu"};
  for (const uint32_t funct3 : {0U, 1U, 4U, 5U, 6U, 7U}) {
    for (const int32_t distance : {4, -4, 4094, -4096, 2, 2048, -2050, 1366}) {
      Try(
          std::string(kNames[funct3]) + " X,Y,.N", distance,
          [&](E e, O o) { return vrv_b_type(e, kOpBranch, funct3, o.x, o.y, o.n); }, "%+d");
    }
  }
  for (const int32_t distance : {4, -4, 1048574, -1048576, 2, 2048, -2050, 4096, -349526, 699050})
    Try(
        "jal X,.N", distance, [](E e, O o) { return vrv_j_type(e, kOpJal, o.x, o.n); }, "%+d");
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
