#include "rtl/verilog.h"
#include "rtl/words.h"

namespace vorc {

namespace {

constexpr const char* kRule = "//--------------------------------------------------------------\n";

void WriteTitle(const RtlFunction& function, TextWriter& out) {
  out.Write(kRule, "// module ", function.name, " - generated from MORV source by 'vorc -rtl'\n");
  if (!function.typeless) return;
  out.Write("// Source was a TYPELESS MORV 'function' - every value's width was\n",
            "// inferred as 32-bit signed (see morvrtl's inference note).\n");
}

void WriteInputs(const RtlFunction& function, TextWriter& out) {
  for (const Name* name : function.parameters) out.Write("    input  signed [31:0] ", name->Text, ";\n");
}

void WritePorts(const RtlFunction& function, TextWriter& out) {
  for (const Name* name : function.parameters) out.Write(name->Text, ", ");
}

void WriteCombinational(const RtlFunction& function, TextWriter& out) {
  WriteTitle(function, out);
  out.Write("// Combinational: every value is a continuous assignment, so the\n",
            "// result settles in one delta cycle with no clock required.\n", kRule);
  out.Write("module ", function.name, "(");
  WritePorts(function, out);
  out.Write("result);\n");
  WriteInputs(function, out);
  out.Write("    output signed [31:0] result;\n\n");
  for (const RtlAssign& assign : function.assigns) out.Write("    wire signed [31:0] ", assign.target, ";\n");
  if (!function.assigns.empty()) out.Write("\n");
  for (const RtlAssign& assign : function.assigns)
    out.Write("    assign ", assign.target, " = ", assign.text, ";\n");
  out.Write("    assign result = ", function.result, ";\n", "\nendmodule\n\n");
}

void WriteSequentialHead(const RtlFunction& function, TextWriter& out) {
  WriteTitle(function, out);
  out.Write("// SEQUENTIAL: contains a ", function.loop->is_do ? "do-while" : "while",
            " loop, so it runs over multiple clocks\n",
            "// with a start/done handshake. Assert 'start' for one cycle; the\n",
            "// result is valid when 'done' goes high.\n",
            "// Two-process FSM: the combinational block computes *_next (blocking,\n",
            "// so the body statements keep C's own left-to-right sequencing within\n",
            "// a cycle), the clocked block registers them.\n", kRule);
  out.Write("module ", function.name, "(clk, rst_n, start, ");
  WritePorts(function, out);
  out.Write("result, done);\n", "    input  clk;\n    input  rst_n;\n    input  start;\n");
  WriteInputs(function, out);
  out.Write("    output signed [31:0] result;\n    reg    signed [31:0] result;\n",
            "    output done;\n    reg    done;\n\n", "    localparam [1:0] S_IDLE = 2'd0, S_TEST = 2'd1,\n",
            "                     S_BODY = 2'd2, S_DONE = 2'd3;\n", "    reg [1:0] state, state_next;\n");
  for (const std::string& name : function.registers)
    out.Write("    reg signed [31:0] ", name, ", ", name, "_next;\n");
  out.Write("    reg signed [31:0] result_next;\n    reg done_next;\n\n");
}

// One behind the other within a state: what an assignment set, those behind it read.
void WriteAssigns(const std::vector<RtlAssign>& assigns, WordSet known, TextWriter& out) {
  for (const RtlAssign& assign : assigns) {
    out.Write("                ", assign.target, "_next = ", morv_rtl_subst_next(assign.text, known), ";\n");
    known.insert(assign.target);
  }
}

void WriteIdle(const RtlFunction& function, TextWriter& out) {
  WordSet known;
  out.Write("            S_IDLE: if (start) begin\n");
  for (const std::string& name : function.loaded) {
    out.Write("                ", name, "_v_next = ", name, ";\n");
    known.insert(name + "_v");
  }
  WriteAssigns(function.assigns, std::move(known), out);
  out.Write("                done_next  = 1'b0;\n",
            "                state_next = ", function.loop->is_do ? "S_BODY" : "S_TEST", ";\n",
            "            end\n");
}

void WriteNextState(const RtlFunction& function, TextWriter& out) {
  out.Write("    always @(*) begin\n", "        state_next  = state;\n");
  for (const std::string& name : function.registers) out.Write("        ", name, "_next = ", name, ";\n");
  out.Write("        result_next = result;\n        done_next   = done;\n", "        case (state)\n");
  WriteIdle(function, out);
  out.Write("            S_TEST: state_next = (", function.loop->condition, ") ? S_BODY : S_DONE;\n",
            "            S_BODY: begin\n");
  WriteAssigns(function.loop->body, {}, out);
  out.Write("                state_next = S_TEST;\n", "            end\n", "            S_DONE: begin\n",
            "                result_next = ", function.result, ";\n", "                done_next   = 1'b1;\n",
            "                state_next  = S_IDLE;\n", "            end\n", "        endcase\n    end\n\n");
}

void WriteRegisters(const RtlFunction& function, TextWriter& out) {
  out.Write("    always @(posedge clk or negedge rst_n) begin\n", "        if (!rst_n) begin\n",
            "            state  <= S_IDLE;\n");
  for (const std::string& name : function.registers) out.Write("            ", name, " <= 32'sd0;\n");
  out.Write("            result <= 32'sd0;\n            done   <= 1'b0;\n", "        end else begin\n",
            "            state  <= state_next;\n");
  for (const std::string& name : function.registers)
    out.Write("            ", name, " <= ", name, "_next;\n");
  out.Write("            result <= result_next;\n            done   <= done_next;\n",
            "        end\n    end\n\nendmodule\n\n");
}

}  // namespace

void WriteModule(const RtlFunction& function, TextWriter& design) {
  if (!function.loop) return WriteCombinational(function, design);
  WriteSequentialHead(function, design);
  WriteNextState(function, design);
  WriteRegisters(function, design);
}

}  // namespace vorc
