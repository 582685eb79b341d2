#include "morv/input.h"

#include <gtest/gtest.h>

namespace vorc {
namespace {

TEST(Input, GoesOnWhileSomethingIsOpen) {
  for (const char* text :
       {"int f(int a)\n", "f(1,\n", "if (a) {\n", "/* note\n", "while (i < 3)\n", "if (a) b(); else\n",
        "$x = 1 +\n", "#define A(x) \\\n", "#ifdef A\n", "do i++;\n", "do { i++; }\n", "struct P\n",
        "int a[] = {1,\n", "x = 1; for (i = 0; i < 3; i++)\n", "if (a) for (;;)\n"})
    EXPECT_TRUE(IsUnfinished(text)) << text;
  for (const char* text : {"$x = 5\n", "f(1)\n", "i++\n", "printf(\"(\")\n", "c = '{'\n", "a // {\n",
                           "int f(int a) { return a; }\n", "}\n", "x = \"open\n", "while (i < 3) i++;\n",
                           "do i++; while (i < 3);\n", "#define A (\n", "\n", "#ifdef A\nf();\n#endif\n",
                           "/* { */ 1\n", "struct P { int x; }\n", "int g(int a);\n", "g(1) * 2\n"})
    EXPECT_FALSE(IsUnfinished(text)) << text;
}

TEST(Input, ExpressionsAreToldFromStatements) {
  struct Case {
    const char* text;
    const char* expression;  ///< empty for none
    const char* called;
  };
  for (const Case& one : std::initializer_list<Case>{{"$x", "$x", ""},
                                                     {" f(g(1), \")\") ; // note", "f(g(1), \")\")", "f"},
                                                     {"f(1) + g(2)", "f(1) + g(2)", ""},
                                                     {"a == b", "a == b", ""},
                                                     {"a[i = 1]", "a[i = 1]", ""},
                                                     {"-1", "-1", ""},
                                                     {"$x = 1", "", ""},
                                                     {"i++", "", ""},
                                                     {"i <<= 2", "", ""},
                                                     {"int i", "", ""},
                                                     {"a; b", "", ""},
                                                     {"#define A 1\nA", "", ""},
                                                     {"{ f(); }", "", ""},
                                                     {";", "", ""}}) {
    const auto found = AsExpression(one.text);
    EXPECT_EQ(found ? found->text : "", one.expression) << one.text;
    EXPECT_EQ(found ? found->called : "", one.called) << one.text;
  }
}

}  // namespace
}  // namespace vorc
