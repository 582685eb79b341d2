#include "rtl/verilog.h"

namespace vorc {

namespace {

constexpr RtlVector vectors[] = {
    {3, 4, 5, 6},   {0, 0, 0, 0},  {1, 1, 1, 1},   {100, 7, 3, 9}, {-5, 12, 2, 1},
    {-7, -3, 1, 2}, {16, 2, 4, 8}, {255, 8, 3, 5}, {-1, 1, 1, 1},  {31, 5, 2, 3},
};

void WriteInstance(const RtlFunction& function, TextWriter& out) {
  const std::string& name = function.name;
  out.Write("    // ---- ", name, " ----\n");
  for (const Name* parameter : function.parameters)
    out.Write("    reg  signed [31:0] ", name, "_", parameter->Text, ";\n");
  out.Write("    wire signed [31:0] ", name, "_result;\n");
  if (function.loop)
    out.Write("    reg  ", name, "_start;\n    wire ", name, "_done;\n", "    ", name, " ", name,
              "_dut(clk, rst_n, ", name, "_start, ");
  else
    out.Write("    ", name, " ", name, "_dut(");
  for (const Name* parameter : function.parameters) out.Write(name, "_", parameter->Text, ", ");
  out.Write(name, "_result");
  if (function.loop) out.Write(", ", name, "_done");
  out.Write(");\n\n", "    initial begin\n");
  if (function.loop) out.Write("        ", name, "_start = 1'b0;\n        wait (rst_n == 1'b1);\n");
}

void WriteCall(const RtlFunction& function, const RtlVector& arguments, TextWriter& out) {
  const std::string& name = function.name;
  for (size_t i = 0; i < function.parameters.size(); ++i)
    out.Write("        ", name, "_", function.parameters[i]->Text, " = ", arguments[i], ";\n");
  if (!function.loop) {
    out.Write("        #1;\n");
    return;
  }
  out.Write("        @(negedge clk); ", name, "_start = 1'b1;\n", "        @(negedge clk); ", name,
            "_start = 1'b0;\n", "        wait (", name, "_done == 1'b1);\n", "        @(negedge clk);\n");
}

void WriteCheck(const std::string& name, int64_t expected, TextWriter& out) {
  out.Write("        if (", name, "_result !== ", expected, ") begin\n");
  out.Write("            $display(\"FAIL ", name, ": got %0d expected ", expected, "\", ", name,
            "_result);\n");
  out.Write("            errors = errors + 1;\n", "        end else\n");
  out.Write("            $display(\"PASS ", name, " = %0d\", ", name, "_result);\n");
}

}  // namespace

void WriteModuleTest(const RtlFunction& function, TextWriter& testbench) {
  WriteInstance(function, testbench);
  int number = 0;
  for (const RtlVector& arguments : vectors) {
    if (const std::optional<int64_t> expected = ExpectedResult(function, arguments)) {
      WriteCall(function, arguments, testbench);
      WriteCheck(function.name, *expected, testbench);
    } else {
      testbench.Write("        // vector ", number,
                      " skipped: expected value not computable (division by zero or unbound name)\n");
    }
    ++number;
  }
  testbench.Write("    end\n\n");
}

}  // namespace vorc
