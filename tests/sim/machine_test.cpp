#include "sim/machine.h"

#include <gtest/gtest.h>

#include "sim_fixture.h"

namespace vorc::sim {
namespace {

constexpr const char* kReturn = "\nMOVE8 PC,LR";

struct Case {
  const char* code;  // gpr1 holds the first argument, gpr2 the second; gpr3 is the answer
  int64_t first;
  int64_t second;
  int64_t expected;
};

std::string RunCase(const Case& test, const std::string& header) {
  const std::string body = std::string("load8 gpr1,[STACKPTR,8]\nload8 gpr2,[STACKPTR]\n") + test.code +
                           "\nmove8 return_reg,gpr3" + kReturn;
  return Outcome(File(body, header),
                 {{static_cast<uint64_t>(test.first), 8}, {static_cast<uint64_t>(test.second), 8}});
}

TEST(Machine, Computes64Bits) {
  constexpr int64_t kLowest = INT64_MIN;
  const Case cases[] = {
      {"ADD8 gpr3,gpr1,gpr2", INT64_MAX, 1, kLowest},
      {"ADD4 gpr3,gpr1,gpr2", 0x7fffffff, 1, -0x80000000LL},
      {"ADDU4 gpr3,gpr1,gpr2", 0x7fffffff, 1, 0x80000000LL},
      {"SUBU4 gpr3,gpr1,gpr2", 0, 1, 0xffffffffLL},
      {"MUL2 gpr3,gpr1,gpr2", 300, 300, 24464},
      {"mulu2 gpr3,gpr1,gpr2", 255, 255, 65025},
      {"DIVU8 gpr3,gpr1,gpr2", -1, 2, INT64_MAX},
      {"DIV8 gpr3,gpr1,gpr2", kLowest, -1, kLowest},
      {"DIV4 gpr3,gpr1,gpr2", 0x80000000LL, -1, -0x80000000LL},
      {"MODU4 gpr3,gpr1,gpr2", -7, 10, 9},
      {"MOD8 gpr3,gpr1,gpr2", kLowest, -1, 0},
      {"SHR4 gpr3,gpr1,gpr2", 0x80000000LL, 31, -1},
      {"SHRU8 gpr3,gpr1,gpr2", -16, 60, 15},
      {"SHRU4 gpr3,gpr1,4", -16, 0, 0x0fffffff},
      {"SHL4 gpr3,gpr1,gpr2", 3, 33, 6},
      {"SHLU4 gpr3,gpr1,31", 1, 0, 0x80000000LL},
      {"ROTL1 gpr3,gpr1,gpr2", 0x81, 1, 3},
      {"ROTR4 gpr3,gpr1,gpr2", 1, 4, 0x10000000},
      {"XOR8 gpr3,gpr1,-1", 12, 0, -13},
      {"move8 gpr3,gpr1\nINV8 gpr3", 12, 0, -13},
      {"SETBIT8 gpr3,gpr1,63", 0, 0, kLowest},
      {"CLRBIT8 gpr3,gpr1,gpr2", 15, 1, 13},
      {"FLIPBYTE4 gpr3,gpr1", 0x01020304, 0, 0x04030201},
      {"FLIPBIT1 gpr3,gpr1", 2, 0, 64},
      {"CMPLU gpr3,gpr1,gpr2", -1, 1, 0},
      {"CMPGU4 gpr3,gpr1,gpr2", 0x100000005, 7, 0},
      {"CMPLEU gpr3,gpr1,gpr2", 5, -5, 1},
      {"CMPEQ2 gpr3,gpr1,gpr2", 0x10001, 1, 1},
      {"CMPNE gpr3,gpr1,gpr2", 0x10001, 1, 1},
      {"move2 gpr3,gpr1", 0x18000, 0, -0x8000},
      {"MOVEU2 gpr3,gpr1", 0x18000, 0, 0x8000},
      {"LOADIMM8 gpr3,0xFFFFFFFFFFFFFFFE", 0, 0, -2},
      {"loadimm4 gpr3,0xFFFFFFFE", 0, 0, -2},
      {"loadimm8 gpr3,1.5", 0, 0, 0x3ff8000000000000},
      {"clr8 gpr3\ndec gpr3", 0, 0, -1},
      {"move8 gpr3,gpr1\nADD8 gpr3,5\ninc1 gpr3", 122, 0, -128},
      {"push4 gpr1\npop2 gpr3\nadd8 STACKPTR,STACKPTR,2", 0x12345, 0, 0x2345},
      {"loadaddr gpr3,gpr1", 77, 0, 77},
  };
  for (const Case& test : cases) EXPECT_EQ(RunCase(test, ""), std::to_string(test.expected)) << test.code;
}

TEST(Machine, WideOperationsOnNarrowRegistersUseWhatTheyHold) {
  const Case cases[] = {
      {"ADD4 gpr3,gpr1,gpr2", 0x7fffffff, 1, -0x80000000LL},
      {"SUB8 gpr3,gpr1,gpr2", 0, 1, -1},
      {"mul8 gpr3,gpr1,gpr2", 0x10000, 0x10000, 0},
      {"push8 gpr1\npop8 gpr3", 0x180000000, 0, -0x80000000LL},
      {"CMPLU gpr3,gpr1,gpr2", -1, 1, 0},
      {"DIVU gpr3,gpr1,gpr2", -2, 2, 0x7fffffff},
      {"store8 gpr1,[STACKPTR]\nload4 gpr3,[STACKPTR,4]", -5, 0, -1},
  };
  for (const Case& test : cases)
    EXPECT_EQ(RunCase(test, "CPUSIZE 32\n"), std::to_string(test.expected)) << test.code;
}

TEST(Machine, JumpsFollowTheLastComparison) {
  struct Jump {
    const char* jump;
    const char* taken;  // for -1, 0 and 1 against 0
  };
  for (const Jump& test : {Jump{"JE", "010"},
                           {"JNE", "101"},
                           {"JL", "100"},
                           {"JLE", "110"},
                           {"JG", "001"},
                           {"RJGE", "011"},
                           {"JMP", "111"},
                           {"JELR", "010"},
                           {"jglr", "001"}}) {
    for (int value = -1; value <= 1; ++value) {
      const bool link = std::string(test.jump).size() > 3 && std::string_view(test.jump).substr(2, 2) != "GE";
      const std::string jump = std::string(test.jump) + (link ? "" : " taken");
      const std::string body =
          "move8 gpr9,LR\nload8 gpr1,[STACKPTR]\nloadaddr LR,taken\ncmp8 gpr1,0\n" + jump +
          "\nLOADIMM8 return_reg,0\nMOVE8 PC,gpr9\ntaken:\nLOADIMM8 return_reg,1\nJMP gpr9";
      EXPECT_EQ(Outcome(File(body), {{static_cast<uint64_t>(value), 8}}),
                std::string(1, test.taken[value + 1]))
          << test.jump << ' ' << value;
    }
  }
}

TEST(Machine, TellsFaultsInOneLine) {
  struct Fault {
    const char* body;
    const char* message;
  };
  const Fault faults[] = {
      {"/*000007:*/ DIV8 gpr1,gpr1,0", "line 5 (f, source line 7): division by zero"},
      {"MODU4 gpr1,gpr1,0", "line 5 (f): division by zero"},
      {"clr8 gpr1\nload4 gpr2,[gpr1,8]", "line 6 (f): reads 4 bytes at 0x8, through a null pointer"},
      {"store1 gpr1,[STACKPTR,-1]", "line 5 (f): writes 1 byte at 0x7effffe7, below STACKPTR"},
      {"loadaddr gpr1,f\nload8 gpr1,[gpr1]", "line 6 (f): reads 8 bytes at 0x10000, in the code"},
      {"loadaddr gpr1,v\nstore8 gpr1,[gpr1,4]",
       "line 6 (f): writes 8 bytes at 0x10000004, outside of memory"},
      {"again:\npush8 gpr1\nJMP again", "line 6 (f): stack overflow, 4096 bytes are not enough"},
      {"pop8 gpr1\npop8 gpr1\npop8 gpr1\npop8 gpr1", "line 8 (f): stack underflow"},
      {"again: JMP again", "line 5 (f): no end after 10000 instructions"},
      {"call  elsewhere ", "line 5 (f): 'elsewhere' is defined nowhere"},
      {"loadimm8 gpr1,3\nMOVE8 PC,gpr1", "line 6 (f): jumps to 0x3, where no instruction stands"},
      {"NOP", "line 6 (f): runs past the end of the procedure"},
      {"RFI", "line 5 (f): a system instruction, which the simulator doesn't have"},
      {"push8 gpr1\nMOVE8 PC,LR",
       "the procedure comes back with STACKPTR 8 bytes below where it was at the call"},
  };
  const std::string data = "SECTION BSS BEGIN GLOBAL BYTE8 v; END ";
  for (const Fault& fault : faults) {
    Limits limits;
    limits.stack_bytes = 4096;
    limits.steps = 10000;
    EXPECT_EQ(Outcome(File(fault.body, "", data), {}, limits), fault.message) << fault.body;
  }
}

TEST(Machine, MemoryLivesOnFromCallToCall) {
  const std::string text = File(
      "loadaddr rr61,total\nuload2 gpr1,[rr61]\nload4 gpr2,[STACKPTR]\nADD8 gpr1,gpr1,gpr2\nstore2 "
      "gpr1,[total]\n"
      "uload2 return_reg,[total]\nMOVE4 PC,LR",
      "ADDRSIZE 32\n", "SECTION DATA\nBEGIN\nGLOBAL BYTE2 total = 0xFFF0;\nEND\n");
  AssemblyError error;
  const auto program = Assemble(text, {}, &error);
  ASSERT_TRUE(program) << error.message;
  Machine machine(*program, {});
  std::string fault;
  const Argument ten{10, 0};
  EXPECT_EQ(machine.Call("f", {&ten, 1}, &fault), 0xfffa);
  EXPECT_EQ(machine.Call("f", {&ten, 1}, &fault), 4);
  EXPECT_EQ(machine.Bytes(program->symbols[0])[0], 4);
  EXPECT_EQ(machine.Steps(), 14u);
}

}  // namespace
}  // namespace vorc::sim
