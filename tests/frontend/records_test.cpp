#include <string>

#include "parse_fixture.h"
#include "program/layout.h"

namespace vorc {
namespace {

TEST(Expressions, AreChainsInPostfixOrder) {
  const struct {
    const char* source;
    const char* chain;
  } cases[] = {
      {"x = y ? 1 : 2", "x y QUESTION_MARK ASSIGN"},
      {"(int)x", "x TYPE_CAST"},
      {"a += b -= 1", "a b 1 MINUS_EQ PLUS_EQ"},
      {"*p", "p STAR_REF"},
      {"&a", "a BITAND_ADDRESS"},
      {"*p++", "p POST_PLUS_PLUS STAR_REF"},
      {"!a && ~b || c", "a NOT b TILDA AND c OR"},
      {"(a + b) * c", "LPAREN c STAR"},
      {"s.m", "s m DOT"},
      {"f(1)", "f FUNCTION_ARGUMENT"},
      {"known(1)", "FUNCTION_CALL"},
      {"sizeof(int) + 'A'", "4 65 PLUS"},
  };
  for (const auto& c : cases) {
    ParsedSource parsed(std::string("struct S { int m; };\nint known(int k) { return k; }\n") +
                        "int test(void)\n{\nint a, b, c, x, y; int *p; struct S s;\n" + c.source + ";\n}\n");
    ASSERT_TRUE(parsed.good) << c.source << "\n" << parsed.messages;
    EXPECT_EQ(parsed.Chain("test"), c.chain) << c.source;
  }
}

TEST(Expressions, NumbersCarryTheirImmediateClass) {
  const struct {
    const char* number;
    int immediate_class;
    int size;
  } cases[] = {{"200", 4, 1},     {"300", 3, 4},        {"20000", 2, 4},
               {"2000000", 5, 4}, {"5000000000", 6, 8}, {"0xFF", 4, 1}};
  for (const auto& c : cases) {
    ParsedSource parsed(std::string("int x;\nint test(void)\n{\nx = ") + c.number + ";\n}\n");
    const EXPR_NODE* node = parsed.Function("test")->ProcBody->Statements.First->Expression->Next;
    EXPECT_EQ(node->ImmediateClass, c.immediate_class) << c.number;
    EXPECT_EQ(node->NumberSize, c.size) << c.number;
  }
}

TEST(Layout, WidthsFollowTheTarget) {
  ParsedSource wide("long l; char *p;\n");
  EXPECT_EQ(GetObjectSize(*wide.slot, wide.Variable("l")), 8);
  EXPECT_EQ(GetObjectSize(*wide.slot, wide.Variable("p")), 8);
  ParsedSource narrow("long l; char *p;\n", 32);
  EXPECT_EQ(GetObjectSize(*narrow.slot, narrow.Variable("l")), 4);
  EXPECT_EQ(GetObjectSize(*narrow.slot, narrow.Variable("p")), 4);
}

TEST(Functions, StaticsAndHardwareBlocksAreKeptInOrder) {
  ParsedSource parsed(
      "int f() { static int b; { static int a = 2; int local; } return 0; }\n"
      "rtlbegin\nwire w;\n  reg r; // rtl\nan rtlend here\nrtlbegin\nrtlend\n"
      "static int global; class C { int m() { static int c[2]; return 0; } };\n",
      64, true);
  ASSERT_TRUE(parsed.good) << parsed.messages;
  std::string statics;
  for (const SYM_REC* symbol : parsed.slot->ProcStatics) statics += std::string(symbol->name->Text) + " ";
  EXPECT_EQ(statics, "b a c ");
  const std::vector<std::string_view> lines = {"wire w;", "  reg r; // rtl", "", ""};
  EXPECT_EQ(parsed.slot->RtlLines, lines);
  EXPECT_EQ(parsed.slot->RtlBlocks, 2);
}

TEST(Functions, KeepOneRecordForEachSignature) {
  ParsedSource parsed(
      "void f(int);\nvoid f(int a) { }\nint g(void);\nint g();\nint h(int a);\nint h(int a, char b);\nint "
      "main() { return 0; }\n");
  EXPECT_TRUE(parsed.good) << parsed.messages;
  EXPECT_NE(parsed.Function("f")->ProcBody, nullptr);
  int live_g = 0;
  int live_h = 0;
  for (const FUNCPROTO_REC* proto : parsed.slot->Globals.Functions) {
    live_g += proto->name->Text == "g" && !proto->PrototypeOnly;
    live_h += proto->name->Text == "h" && !proto->PrototypeOnly;
  }
  EXPECT_EQ(live_g, 1);
  EXPECT_EQ(live_h, 2);
  EXPECT_EQ(FindProgramEntryLabel(*parsed.slot), parsed.Function("main"));
}

TEST(Lines, ADeclarationHasTheLineOfItsName) {
  ParsedSource parsed("int a, b\n = 5;\nint c[2]\n = {\n1 };\nint f\n(int x)\n{ int d\n; return x; }\n");
  ASSERT_TRUE(parsed.good) << parsed.messages;
  const PROC_TABLE* body = parsed.Function("f")->ProcBody;
  const struct {
    SourceLine line;
    int number;
    const char* text;
  } cases[] = {{parsed.Variable("b")->Line, 1, "int a, b"},
               {parsed.Variable("c")->Line, 3, "int c[2]"},
               {parsed.Variable("c")->Initializer.First->List.First->Line, 5, "1 };"},
               {parsed.Function("f")->Line, 6, "int f"},
               {parsed.Function("f")->ParametersHeader.Symbols.First->Line, 7, "(int x)"},
               {body->LocalsHeader.DeclSequence.First->Line, 8, "{ int d"},
               {body->EndLine, 9, "; return x; }"}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.line.Line, c.number) << c.text;
    EXPECT_EQ(parsed.slot->Sources.LineText(c.line), c.text);
    EXPECT_EQ(parsed.slot->Sources.FileName(c.line), "test");
  }
  EXPECT_EQ(parsed.slot->Sources.LineText({body->EndLine.File, 10}), "");
}

}  // namespace
}  // namespace vorc
