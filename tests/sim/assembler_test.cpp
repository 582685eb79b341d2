#include "sim/assembler.h"

#include <gtest/gtest.h>

#include "sim_fixture.h"

namespace vorc::sim {
namespace {

Program MustAssemble(const std::string& text, const AssemblyOptions& options = {}) {
  AssemblyError error;
  auto program = Assemble(text, options, &error);
  EXPECT_TRUE(program) << error.line << ": " << error.message;
  return program ? std::move(*program) : Program{};
}

std::string Data(const std::string& statement) {
  const Program program = MustAssemble("SECTION   DATA\nBEGIN\n" + statement + "\n\nEND   //SECTION DATA\n");
  std::string digits;
  for (const uint8_t byte : program.data)
    digits += "0123456789abcdef"[byte >> 4], digits += "0123456789abcdef"[byte & 15];
  return digits;
}

TEST(Assembler, ReadsDataInEveryForm) {
  EXPECT_EQ(Data("/*000001:*/ GLOBAL BYTE4 x = 0x0000002A;"), "2a000000");
  EXPECT_EQ(Data("/*000001:*///int x; /* no end\nBYTE4 x = -2;"), "feffffff");
  EXPECT_EQ(Data("GLOBAL BYTE8 x = 00000000000000FF;"), "ff00000000000000") << "16 digits are hexadecimal";
  EXPECT_EQ(Data("BYTE8 x = 0;"), "0000000000000000");
  EXPECT_EQ(Data("BYTE2 a[4] = {\n0x0001,{0x0002},\n0x0003,};"), "0100020003000000");
  EXPECT_EQ(Data("BYTE2 a[1] = {1,2};"), "01000200") << "the list may be longer than the brackets say";
  EXPECT_EQ(Data("BYTE1 s[]=\"a\\\"\\n\\\\//x\";"), "61220a5c2f2f7800");
  EXPECT_EQ(Data("BYTE1 s[6] = \"ab\";"), "616200000000");
  EXPECT_EQ(Data("BYTE1 o \n[3] \nBYTE8 p \n[1] \n"),
            "0000000000000000"
            "0000000000000000")
      << "no semicolons";
  EXPECT_EQ(Data("BYTE16 w = 0x0102;"), "02010000000000000000000000000000");
  EXPECT_EQ(Data("BYTE4 x; BYTE8 p = x+4;"),
            "0000000000000000"
            "0400001000000000");
  EXPECT_EQ(Data("BYTE1 s = {0x01,s,};"), "010000001000000000") << "an address among bytes";
  EXPECT_EQ(Data("EXTERN far;"), "");
}

TEST(Assembler, NamesWhatIsWrong) {
  struct Fault {
    const char* text;
    const char* message;
  };
  const std::string code = "SECTION CODE\nBEGIN\nPROCEDURE f\nBEGIN\n";
  const Fault in_code[] = {
      {"ADD3 gpr1,gpr2,gpr3", "unknown instruction 'ADD3'"},
      {"JMP8 x", "unknown instruction 'JMP8'"},
      {"ADD8 gpr1,gpr27,gpr3", "no register 'gpr27'"},
      {"ADD8 gpr1", "'ADD8' wants d,a,b or d,b"},
      {"ADD8 gpr1,gpr2,x", "neither register nor number: 'x'"},
      {"load8 gpr1,gpr2", "'load8' wants d,[a] or d,[a,b] or d,[name]"},
      {"load8 gpr1,[gpr2", "'[' wants a ']'"},
      {"move8 gpr1 gpr2", "operands want a ',' between them"},
      {"JE nowhere\nEND\nEND", "undefined label 'nowhere'"},
      {"x: x:", "label 'x' stands twice"},
      {"move8 gpr1,PC", "PC can be written, not read"},
      {"LOADIMM8 gpr1,gpr2", "'LOADIMM8' wants d,constant"},
      {"PROCEDURE g", "PROCEDURE g stands inside another one"},
      {"END\nEND\nFOO", "unknown directive 'FOO'"},
      {"END\nPROCEDURE f", "'f' is defined twice"},
      {"END\nNOP", "an instruction outside of a procedure"},
      {"NOP", "the section has no END"},
      {"END END SECTION DATA BEGIN BYTE1 x = 256; END", "'256' doesn't fit 1 bytes"},
      {"END END SECTION DATA BEGIN BYTE1 x = 0x1FF; END", "'0x1FF' doesn't fit 1 bytes"},
      {"END END SECTION DATA BEGIN BYTE8 x = y; END", "undefined symbol 'y'"},
      {"END END SECTION DATA BEGIN BYTE3 x; END", "unknown directive 'BYTE3'"},
      {"END END SECTION DATA BEGIN BYTE8 x[99999999]; END", "the variables take more than 67108864 bytes"},
      {"END END SECTION DATA BEGIN BYTE8 x = {1; END", "a value is missing for 'x'"},
      {"END END CPUSIZE 16", "CPUSIZE wants 32 or 64"},
  };
  for (const Fault& fault : in_code) {
    AssemblyError error;
    EXPECT_FALSE(Assemble(code + fault.text + "\n", {}, &error)) << fault.text;
    EXPECT_EQ(error.message, fault.message) << fault.text;
    EXPECT_GE(error.line, 5u) << fault.text;
  }
}

TEST(Assembler, LabelsBelongToTheirProcedure) {
  const std::string text =
      "SECTION CODE\nBEGIN\nPROCEDURE g\nBEGIN\nJMP done\nRESET\ndone:\nLOADIMM8 return_reg , 5 \nMOVE8 "
      "PC,LR\nEND //g\n"
      "PROCEDURE f\nBEGIN\nmove8 gpr9,LR\nJMP done\nRESET\ndone: call  g \nADD8 GPR26,GPR26,1\nMOVE8 "
      "PC,gpr9\nEND\nEND\n";
  EXPECT_EQ(Outcome(text), "6");
}

TEST(Assembler, NamesOfTheProgramWinOverRegisters) {
  const std::string data = "SECTION DATA BEGIN BYTE8 status = 9; END ";
  EXPECT_EQ(Outcome(File("loadaddr rr61, status\nload8 return_reg,[rr61]\nMOVE8 PC,LR", "", data)), "9");
}

TEST(Assembler, PositionIndependentTextRunsAnywhereAndOnlyIfItIsRebased) {
  const std::string data = "SECTION DATA BEGIN BYTE8 v = 4; BYTE8 p = v; END ";
  const auto code = [](const std::string& rebase) {
    return "move8 gpr9,LR\nloadaddr rr63, g\n" + rebase +
           "loadaddr LR, vorc_picret_0\nadd8 LR,LR,CODEBASE\nmove8 PC,rr63\nvorc_picret_0:\nmove8 "
           "PC,gpr9\nEND\n"
           "PROCEDURE g\nBEGIN\nloadaddr gpr1,p\nadd8 gpr1,gpr1,CODEBASE\nload8 gpr1,[gpr1]\nload8 "
           "return_reg,[gpr1]\n"
           "move8 PC,LR";
  };
  const std::string right = File(code("add8 rr63,rr63,CODEBASE\n"), "PIC\n", data);
  EXPECT_EQ(Outcome(right), "4");
  EXPECT_EQ(Outcome(right, {}, {}, {0x5000, 0}), "4");
  EXPECT_NE(Outcome(File(code(""), "PIC\n", data)).find("where no instruction stands"), std::string::npos);
  EXPECT_NE(Outcome(File("call f", "PIC\n")).find("link address"), std::string::npos);
}

}  // namespace
}  // namespace vorc::sim
