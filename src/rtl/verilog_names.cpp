#include <algorithm>
#include <array>

#include "base/format.h"
#include "rtl/expression.h"

namespace vorc {

namespace {

constexpr size_t kLongestName = 127;

// Reserved words of IEEE 1364-2001, in the order of their characters.
constexpr auto kReserved = std::to_array<std::string_view>({"always",
                                                            "and",
                                                            "assign",
                                                            "automatic",
                                                            "begin",
                                                            "buf",
                                                            "bufif0",
                                                            "bufif1",
                                                            "case",
                                                            "casex",
                                                            "casez",
                                                            "cell",
                                                            "cmos",
                                                            "config",
                                                            "deassign",
                                                            "default",
                                                            "defparam",
                                                            "design",
                                                            "disable",
                                                            "edge",
                                                            "else",
                                                            "end",
                                                            "endcase",
                                                            "endconfig",
                                                            "endfunction",
                                                            "endgenerate",
                                                            "endmodule",
                                                            "endprimitive",
                                                            "endspecify",
                                                            "endtable",
                                                            "endtask",
                                                            "event",
                                                            "for",
                                                            "force",
                                                            "forever",
                                                            "fork",
                                                            "function",
                                                            "generate",
                                                            "genvar",
                                                            "highz0",
                                                            "highz1",
                                                            "if",
                                                            "ifnone",
                                                            "incdir",
                                                            "include",
                                                            "initial",
                                                            "inout",
                                                            "input",
                                                            "instance",
                                                            "integer",
                                                            "join",
                                                            "large",
                                                            "liblist",
                                                            "library",
                                                            "localparam",
                                                            "macromodule",
                                                            "medium",
                                                            "module",
                                                            "nand",
                                                            "negedge",
                                                            "nmos",
                                                            "nor",
                                                            "noshowcancelled",
                                                            "not",
                                                            "notif0",
                                                            "notif1",
                                                            "or",
                                                            "output",
                                                            "parameter",
                                                            "pmos",
                                                            "posedge",
                                                            "primitive",
                                                            "pull0",
                                                            "pull1",
                                                            "pulldown",
                                                            "pullup",
                                                            "pulsestyle_ondetect",
                                                            "pulsestyle_onevent",
                                                            "rcmos",
                                                            "real",
                                                            "realtime",
                                                            "reg",
                                                            "release",
                                                            "repeat",
                                                            "rnmos",
                                                            "rpmos",
                                                            "rtran",
                                                            "rtranif0",
                                                            "rtranif1",
                                                            "scalared",
                                                            "showcancelled",
                                                            "signed",
                                                            "small",
                                                            "specify",
                                                            "specparam",
                                                            "strong0",
                                                            "strong1",
                                                            "supply0",
                                                            "supply1",
                                                            "table",
                                                            "task",
                                                            "time",
                                                            "tran",
                                                            "tranif0",
                                                            "tranif1",
                                                            "tri",
                                                            "tri0",
                                                            "tri1",
                                                            "triand",
                                                            "trior",
                                                            "trireg",
                                                            "unsigned",
                                                            "use",
                                                            "vectored",
                                                            "wait",
                                                            "wand",
                                                            "weak0",
                                                            "weak1",
                                                            "while",
                                                            "wire",
                                                            "wor",
                                                            "xnor",
                                                            "xor"});
static_assert(std::is_sorted(kReserved.begin(), kReserved.end()));

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsWordCharacter(char c) {
  return IsLetter(c) || (c >= '0' && c <= '9');
}

}  // namespace

bool IsVerilogName(std::string_view name) {
  return !name.empty() && name.size() <= kLongestName && IsLetter(name[0]) &&
         std::all_of(name.begin(), name.end(), IsWordCharacter) &&
         !std::binary_search(kReserved.begin(), kReserved.end(), name);
}

std::string RefusedName(std::string_view name) {
  return Format("'%s' is not a name that Verilog allows", std::string(name.substr(0, kLongestName)).c_str());
}

}  // namespace vorc
