#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vorc::fuzz {

/// Writes well-formed programs out of arbitrary bytes: structs, pointers, arrays, calls of all kinds,
/// nested loops with all ways out of them, and now and then a value that leads nowhere. Every loop and
/// every call burns fuel, so that a program ends.
class ProgramWriter {
 public:
  ProgramWriter(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  std::string Write() {
    text_ =
        "int fuel = 400;\n"
        "struct Node { int n; char c; double d; int v[4]; struct Node *next; };\n"
        "int gi; int gj; char gc; double gd; int ga[8]; char gb[8]; double ge[6]; int gm[3][4];\n"
        "double gf[2][3]; struct Node gs; struct Node gn[3]; struct Node *gp; int *gq;\n"
        "long gl; unsigned int gu; short gh; float gr;\n"
        "class Box { public: int v; long w; unsigned char u; int b : 3; int z : 5;\n"
        "int get() { return v; }\n"
        "void put(int m) { v = m; w = w + v; b = m; }\n"
        "int sum(int m, int o) { fuel = fuel - 1; if (m > 3) return v + m; z = o; return this->v - z; } };\n"
        "Box ob; Box oa[2]; Box *op; int pad[64];\n";
    functions_ = 0;
    const int count = 1 + Pick(4);
    for (int i = 0; i < count; ++i) Function(i);
    Line("int main() {");
    Locals();
    gp_ready_ = true;
    Line("op = &oa[1]; gp = &gs; gq = ga; p = &gn[1]; gn[1].next = &gs; gs.next = p;");
    Body(3 + Pick(8), 3);
    Dump();
    Line("return 0; }");
    return text_;
  }

 private:
  enum Kind { kIntTwo, kShared, kDouble, kPointer, kVoid };

  int Pick(int below) {
    const uint8_t byte = at_ < size_ ? data_[at_++] : 0;
    return byte % below;
  }
  bool Rarely() { return Pick(40) == 39; }
  void Line(const std::string& line) { text_ += line + "\n"; }

  void Locals() {
    Line(
        "int i; int j; int k; char c; double d; int a[6]; double e[4]; struct Node s; struct Node *p; int "
        "*q;");
    Line(
        "$x = 1; $y = 2.5; $t = \"t\"; i = j = k = c = 0; d = 0.5; s.n = 1; s.c = 2; s.d = 0.25; p = &s; q = "
        "a;");
    Line("for (i = 0; i < 6; i++) a[i] = i; for (i = 0; i < 4; i++) { e[i] = i; s.v[i] = i; } s.next = &gs;");
  }

  void Function(int number) {
    const Kind kind = static_cast<Kind>(Pick(5));
    kinds_[number] = kind;
    const std::string name = "f" + std::to_string(number);
    switch (kind) {
      case kIntTwo: Line("int " + name + "(int m, char o) {"); break;
      case kShared: Line("int " + name + "() {"); break;
      case kDouble: Line("double " + name + "(double m, int o) {"); break;
      case kPointer: Line("int " + name + "(struct Node *m, int *o) {"); break;
      case kVoid: Line("void " + name + "(int m, int o) {"); break;
    }
    Locals();
    Line("fuel = fuel - 5; if (fuel < 0) return" + std::string(kind == kVoid ? ";" : " 3;"));
    inside_ = number;
    functions_ = number + 1;
    in_function_ = true;
    parameters_ = kind != kShared && kind != kPointer;
    Body(2 + Pick(5), 2);
    if (kind != kVoid && Pick(5) != 0) Line("return " + Int(2) + ";");
    Line("}");
    in_function_ = parameters_ = false;
  }

  void Dump() {
    Line("printf(\"%d %d %d %d %g %g\\n\", i, j, k, c, d, gd);");
    Line("printf(\"%d %d %d %d %d\\n\", gi, gj, gc, s.n, gs.n);");
    Line("for (i = 0; i < 6; i++) printf(\"%d %d %d %g\\n\", a[i], ga[i], gb[i], ge[i]);");
    Line("printf(\"%d %g %d %d %g\\n\", s.v[1], s.d, gn[1].n, gm[1][2], gf[1][1]);");
    Line("printf(\"%s %s %s\\n\", $x, $y, $t);");
    Line("printf(\"%d %d %d %d %d %d %d\\n\", gl, gu, gh, ob.v, ob.w, ob.b, oa[1].z);");
  }

  void Body(int statements, int depth) {
    for (int i = 0; i < statements; ++i) Statement(depth);
  }

  void Block(int depth) {
    Line("{");
    Body(1 + Pick(3), depth - 1);
    Line("}");
  }

  void Arm(int depth) { Pick(4) == 0 ? Statement(depth - 1) : Block(depth); }

  void Statement(int depth) {
    const int choice = Pick(depth > 0 ? 26 : 12);
    switch (choice) {
      default: Line(Place() + " = " + Int(2) + ";"); break;
      case 3: Line(Place() + Compound() + Int(2) + ";"); break;
      case 4: Line(Pick(2) == 0 ? Place() + "++;" : "--" + IntName() + ";"); break;
      case 5: Line(RealPlace() + " = " + Real(2) + ";"); break;
      case 6: Line(RealPlace() + (Pick(2) == 0 ? " += " : " *= ") + Real(1) + ";"); break;
      case 7: Line("printf(\"%d %d %g\\n\", " + Int(2) + ", " + Int(1) + ", " + Real(1) + ");"); break;
      case 8: Typeless(); break;
      case 9: Pointers(); break;
      case 10: Line((Pick(3) == 0 ? Place() + " = " : "") + Call() + ";"); break;
      case 11: Texts(); break;
      case 12:
      case 13:
        Line("if (" + Int(2) + ")");
        Arm(depth);
        if (Pick(2) == 0) {
          Line("else");
          Arm(depth);
        }
        break;
      case 14: Loop("while ((fuel = fuel - 1) > 0 && " + Condition() + ")", "", depth); break;
      case 15: Loop("do", "while ((fuel = fuel - 1) > 0 && " + Condition() + ");", depth); break;
      case 16:
      case 17:
      case 18: {
        const std::string name = IntName();
        Loop("for (" + name + " = " + std::to_string(Pick(3)) + "; " + name + " < " +
                 std::to_string(2 + Pick(6)) + " && (fuel = fuel - 1) > 0; " + name +
                 (Pick(3) == 0 ? " = " + name + " + 2" : "++") + ")",
             "", depth);
        break;
      }
      case 19: Switch(depth); break;
      case 20: Block(depth); break;
      case 21: loops_ > 0 || switches_ > 0 ? Line("if (" + Condition() + ") break;") : Block(depth); break;
      case 22: loops_ > 0 ? Line("if (" + Condition() + ") continue;") : Block(depth); break;
      case 23:
        if (in_function_)
          Line("if (" + Condition() + ") return" + (kinds_[inside_] == kVoid ? ";" : " " + Int(2) + ";"));
        else
          Block(depth);
        break;
      case 25: Objects(); break;
      case 24: Line(loops_ > 0 ? (Pick(2) == 0 ? "break;" : "continue;") : "gi = 1;"); break;
    }
  }

  void Loop(const std::string& head, const std::string& tail, int depth) {
    Line(head);
    ++loops_;
    Arm(depth);
    --loops_;
    if (!tail.empty()) Line(tail);
  }

  void Switch(int depth) {
    Line("switch (" + Int(2) + ") {");
    ++switches_;
    const int cases = 1 + Pick(4);
    for (int i = 0; i < cases; ++i) {
      Line("case " + std::to_string(i * (1 + Pick(2)) + i) + ":");
      if (Pick(4) != 0) Statement(depth - 1);
      if (Pick(2) == 0) Line("break;");
    }
    if (Pick(2) == 0) {
      Line("default:");
      Statement(depth - 1);
    }
    --switches_;
    Line("}");
  }

  void Typeless() {
    switch (Pick(7)) {
      case 0: Line("$x = " + Int(1) + ";"); break;
      case 1: Line("$y = " + Real(1) + ";"); break;
      case 2: Line("$x = $y;"); break;
      case 3: Line("$x += " + Int(1) + ";"); break;
      case 4: Line("$x++;"); break;
      case 5: Line("$y = \"t\" + \"u\";"); break;
      default: Line("$y = $x * 2 - $y;"); break;
    }
  }

  void Texts() {
    switch (Pick(8)) {
      case 0: Line("$t = \"ab\";"); break;
      case 1: Line("$t = $t + \"c\"; if (morv_strlen($t) > 40) $t = \"\";"); break;
      case 2: Line("$t += " + Int(1) + "; if (morv_strlen($t) > 40) $t = \"z\";"); break;
      case 3: Line("if ($t == \"ab\") " + Place() + " = 1;"); break;
      case 4: Line(Place() + " = morv_strlen($t);"); break;
      case 5: Line("$t = morv_upper($t);"); break;
      case 6: Line("$t = $x + \"-\" + $y;"); break;
      default: Line("$y = $t;"); break;
    }
  }

  void Objects() {
    switch (Pick(7)) {
      case 0: Line("ob.put(" + Int(1) + ");"); break;
      case 1: Line("op->put(" + Int(1) + ");"); break;
      case 2: Line("op = &oa[" + std::to_string(Pick(2)) + "];"); break;
      case 3: Line("op = &ob;"); break;
      case 4: Line("oa[" + Index(2) + "] = ob;"); break;
      case 5: Line("ob.w = " + Int(2) + ";"); break;
      default: Line(Rarely() ? "op = 0;" : "oa[1].put(" + Int(1) + ");"); break;
    }
  }

  void Pointers() {
    switch (Pick(9)) {
      case 0: Line("p = &s;"); break;
      case 1: Line("p = &gn[" + std::to_string(Pick(3)) + "];"); break;
      case 2: Line("p = p->next;"); break;
      case 3: Line("q = a;"); break;
      case 4: Line("q = ga;"); break;
      case 5: Line("p->next = &gs;"); break;
      case 6: Line("gs = s;"); break;
      case 7: Line("gn[1].next = p;"); break;
      default: Line(Rarely() ? "p = 0;" : "q = &ga[2];"); break;
    }
  }

  std::string IntName() {
    static const char* const kNames[] = {"i", "j", "k", "gi", "gj"};
    return kNames[Pick(5)];
  }

  std::string Index(int length) {
    if (Rarely()) return Pick(2) == 0 ? "9" : "-1";
    if (Pick(3) == 0) return std::to_string(Pick(length));
    return "(" + Int(1) + " & " + std::to_string(length > 3 ? 3 : 1) + ")";
  }

  std::string Place() {
    switch (Pick(24)) {
      case 16: return "ob.v";
      case 17: return Pick(2) == 0 ? "ob.b" : "op->z";
      case 18: return "op->v";
      case 19: return "gl";
      case 20: return Pick(2) == 0 ? "gu" : "gh";
      case 21: return "ob.u";
      case 0: return "a[" + Index(6) + "]";
      case 1: return "ga[" + Index(8) + "]";
      case 2: return "gm[" + Index(3) + "][" + Index(4) + "]";
      case 3: return "s.n";
      case 4: return "p->n";
      case 5: return "s.v[" + Index(4) + "]";
      case 6: return "p->v[" + Index(4) + "]";
      case 7: return "gn[" + Index(3) + "].n";
      case 8: return "q[" + Index(4) + "]";
      case 9: return "c";
      case 10: return "gb[" + Index(8) + "]";
      case 11: return Pick(2) == 0 ? "*q" : "p->next->n";
      default: return IntName();
    }
  }

  std::string RealPlace() {
    switch (Pick(8)) {
      case 0: return "e[" + Index(4) + "]";
      case 1: return "ge[" + Index(6) + "]";
      case 2: return "gf[" + Index(2) + "][" + Index(3) + "]";
      case 3: return "s.d";
      case 4: return "p->d";
      case 5: return Pick(3) == 0 ? "gr" : "gd";
      default: return "d";
    }
  }

  std::string Compound() {
    static const char* const kOperators[] = {
        " += ", " -= ", " *= ", " &= ", " |= ", " ^= ", " <<= ", " >>= "};
    return kOperators[Pick(8)];
  }

  std::string Condition() {
    static const char* const kOperators[] = {" < ", " > ", " == ", " != ", " <= ", " >= "};
    if (Pick(4) == 0) return Real(1) + kOperators[Pick(6)] + Real(1);
    return Int(1) + kOperators[Pick(6)] + Int(1);
  }

  std::string Int(int depth) {
    switch (Pick(depth > 0 ? 19 : 4)) {
      case 0: return std::to_string(Pick(9) - 2);
      case 1: return parameters_ ? (Pick(2) == 0 ? "m" : "o") : IntName();
      case 2: return Place();
      default: return IntName();
      case 4: return Int(depth - 1) + " + " + Int(depth - 1);
      case 5: return Int(depth - 1) + " - (" + Int(depth - 1) + ")";
      case 6: return "(" + Int(depth - 1) + ") * " + Int(depth - 1);
      case 7: return "(" + Int(depth - 1) + ") / " + (Rarely() ? IntName() : std::to_string(1 + Pick(5)));
      case 8: return "(" + Int(depth - 1) + ") & " + Int(depth - 1);
      case 9: return "(" + Condition() + ")";
      case 10:
        return "(" + Int(depth - 1) + " < " + Int(depth - 1) + (Pick(2) == 0 ? " && " : " || ") +
               Int(depth - 1) + ")";
      case 11: return Pick(2) == 0 ? "!" + IntName() : "-" + Place();
      case 12: return Call();
      case 13: return Pick(2) == 0 ? "$x" : IntName() + "++";
      case 14: return "(" + IntName() + " = " + Int(depth - 1) + ")";
      case 15: return "(" + Condition() + " ? " + Int(depth - 1) + " : " + Int(depth - 1) + ")";
      case 16: return Cast() + "(" + Int(depth - 1) + ")";
      case 17: return Pick(2) == 0 ? "ob.get()" : "op->sum(" + Int(0) + ", " + Int(1) + ")";
      case 18: return "(" + Int(depth - 1) + ") " + (Pick(2) == 0 ? "<< " : ">> ") + std::to_string(Pick(9));
    }
  }

  std::string Cast() {
    static const char* const kTypes[] = {"(char)", "(short)", "(long)", "(unsigned int)", "(int)"};
    return kTypes[Pick(5)];
  }

  std::string Real(int depth) {
    switch (Pick(depth > 0 ? 9 : 3)) {
      case 0: return std::to_string(Pick(20)) + ".5";
      case 1: return RealPlace();
      default: return "d";
      case 3: return Real(depth - 1) + " + " + Int(depth - 1);
      case 4: return Real(depth - 1) + " - " + Real(depth - 1);
      case 5: return Real(depth - 1) + " * " + Real(depth - 1);
      case 6: return "(" + Real(depth - 1) + ") / 4";
      case 7: return Pick(3) == 0 ? "$y" : "-" + RealPlace();
      case 8: return Call();
    }
  }

  std::string Call() {
    if (functions_ == 0) return "morv_strlen(\"abc\")";
    const int number = Pick(functions_);
    const std::string name = "f" + std::to_string(number);
    switch (kinds_[number]) {
      case kIntTwo: return name + "(" + Int(1) + ", " + Int(1) + ")";
      case kShared: return name + "()";
      case kDouble: return name + "(" + Real(1) + ", " + Int(1) + ")";
      case kPointer:
        return name + "(" + (Pick(2) == 0 ? "p" : "&gs") + ", " + (Pick(2) == 0 ? "q" : "ga") + ")";
      default: return name + "(" + Int(1) + ", " + Int(0) + ")";
    }
  }

  const uint8_t* data_;
  size_t size_;
  size_t at_ = 0;
  std::string text_;
  Kind kinds_[8] = {};
  int functions_ = 0;
  int inside_ = 0;
  int loops_ = 0;
  int switches_ = 0;
  bool in_function_ = false;
  bool parameters_ = false;
  bool gp_ready_ = false;
};

}  // namespace vorc::fuzz
