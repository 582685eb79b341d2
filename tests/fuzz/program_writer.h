#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vorc::fuzz {

// NAME: alternatives, parted by "~". What stands behind "~~" is taken at depths above 0 only. An alternative
// may begin with "N*", its weight, or with "X?": without the flag X the first one is taken in its place. In
// an alternative stand for themselves all characters but
//   <Name> <Name2>   a rule at the depth below, or at this depth
//   <Name*5>         one to five of it
//   <Name/LK>        with the flags L and K: L a loop, K what a break leaves, R V a function with a value or
//                    without, P parameters m and o, A to E the functions that there are
//   <#9>             a number below 9
// When the input is at its end, first alternatives are taken, so these lead nowhere deep.
inline constexpr std::string_view kProgramGrammar = R"(
Head: int fuel = 400;
 struct Node { int n; char c; double d; int v[4]; struct Node *next; };
 int gi; int gj; char gc; double gd; int ga[8]; char gb[8]; double ge[6]; int gm[3][4];
 double gf[2][3]; struct Node gs; struct Node gn[3]; struct Node *gp; int *gq;
 char *gw[2]; char **gv; int pad1[32]; struct Node *nn[2]; int *rows[2]; int **rr; int pad2[64];
 long gl; unsigned int gu; short gh; float gr;
 class Box { public: int v; long w; unsigned char u; int b : 3; int z : 5;
 int get() { return v; }
 void put(int m) { v = m; w = w + v; b = m; }
 int sum(int m, int o) { fuel = fuel - 1; if (m > 3) return v + m; z = o; return this->v - z; } };
 Box ob; Box oa[2]; Box *op; int pad[64];
Locals: int i; int j; int k; char c; double d; int a[6]; double e[4]; struct Node s; struct Node *p; int *q;
 $x = 1; $y = 2.5; $t = "t"; i = j = k = c = 0; d = 0.5; s.n = 1; s.c = 2; s.d = 0.25; p = &s; q = a;
 for (i = 0; i < 6; i++) a[i] = i; for (i = 0; i < 4; i++) { e[i] = i; s.v[i] = i; } s.next = &gs;
A: int f0(int m, char o) { <Locals> <Burn> 3; <Statement4*6/RP> <Last/P> }
B: int f1() { <Locals> <Burn> 3; <Statement4*6/R> <Last> }
C: double f2(double m, int o) { <Locals> <Burn> 3; <Statement4*6/RP> <Last/P> }
D: int f3(struct Node *m, int *o) { <Locals> <Burn> 3; <Statement4*6/R> <Last> }
E: void f4(int m, int o) { <Locals> <Burn>; <Statement4*6/VP> }
Burn: fuel = fuel - 5; if (fuel < 0) return
Last: 4*return <Int2>;~
Main: int main() { <Locals> op = &oa[1]; gp = &gs; gq = ga; p = &gn[1]; gn[1].next = &gs; gs.next = p;
 nn[0] = gn; nn[1] = &gs; rows[0] = ga; rows[1] = a; rr = rows; gw[0] = "ab"; gw[1] = "cd"; gv = gw;
 <Statement5*10>
 printf("%d %d %d %d %g %g\n", i, j, k, c, d, gd);
 printf("%d %d %d %d %d\n", gi, gj, gc, s.n, gs.n);
 for (i = 0; i < 6; i++) printf("%d %d %d %g\n", a[i], ga[i], gb[i], ge[i]);
 printf("%d %g %d %d %g\n", s.v[1], s.d, gn[1].n, gm[1][2], gf[1][1]);
 printf("%s %s %s\n", $x, $y, $t);
 printf("%d %d %d %d %d %d %d\n", gl, gu, gh, ob.v, ob.w, ob.b, oa[1].z);
 return 0; }

Statement: 3*<Place> = <Int2>;~<Place> <Compound> <Int2>;~(<Place>) = <Int2>;~(<Place>) <Compound> <Int1>;~<Place>++;~--<Name>;~<RealPlace> = <Real2>;
 ~<RealPlace> += <Real1>;~<RealPlace> *= <Real1>;~printf("%d %d %g\n", <Int2>, <Int1>, <Real1>);~<Typeless>~<Pointers>
 ~<Call>;~<Place> = <Call>;~<Texts>~~<Objects>~2*if (<Int2>) <Arm> <Else>~while (<Fuel> && <Condition>) <Arm/LK>
 ~do <Arm/LK> while (<Fuel> && <Condition>);~2*for (i = <#3>; i < <#8> && <Fuel>; i++) <Arm/LK>
 ~for (gj = <#3>; gj < <#8> && <Fuel>; gj = gj + 2) <Arm/LK>~switch (<Int2>) { case 0: <Case/K> case 1: <Case/K> }
 ~switch (<Int2>) { case 0: <Case/K> case <#3>3: <Case/K> case 2: <Case/K> default: <Case/K> }~{ <Statement*3> }
 ~2*K?if (<Condition>) break;~L?if (<Condition>) continue;~R?if (<Condition>) return <Int2>;
 ~V?if (<Condition>) return;~K?break;~L?continue;
Arm: <Statement>~3*{ <Statement*3> }
Else:~else <Arm>
Case: <Statement>~2*<Statement> break;~break;~
Fuel: (fuel = fuel - 1) > 0
Typeless: $x = <Int1>;~$y = <Real1>;~$x = $y;~$x += <Int1>;~$x++;~$y = "t" + "u";~$y = $x * 2 - $y;
Texts: $t = "ab";~$t = $t + "c"; if (morv_strlen($t) > 40) $t = "";~$t += <Int1>; if (morv_strlen($t) > 40) $t = "z";
 ~if ($t == "ab") <Place> = 1;~<Place> = morv_strlen($t);~$t = morv_upper($t);~$t = $x + "-" + $y;~$y = $t;
 ~$t = morv_concat(morv_substr($t, <Int1>, 3), <Int1>, morv_upper($x + "q"), <Real1>, morv_hex(<Place>, 2));
 ~<Place> = morv_strcmp(morv_upper($t), morv_substr("TX", <Int0>, <Int1>));
Objects: ob.put(<Int1>);~op->put(<Int1>);~op = &oa[<#2>];~op = &ob;~oa[<Index2>] = ob;~ob.w = <Int2>;~oa[1].put(<Int1>);
 ~<Lost>
Pointers: p = &s;~p = &gn[<#3>];~p = p->next;~q = a;~q = ga;~p->next = &gs;~gs = s;~gn[1].next = p;~q = &ga[2];~rr[<Index2>] = q;~nn[<Index2>] = p;~<Lost>
Lost: 6*op = &ob;~op = 0;~p = 0;

Name: i~j~k~gi~gj
Index2: 4*<#2>~8*(<Int1> & 1)~<Wild>
Index4: 4*<#4>~8*(<Int1> & 3)~<Wild>
Wild: 9~-1
Place: 6*<Name>~a[<Index4>]~ga[<Index4>]~gm[<Index2>][<Index4>]~s.n~p->n~s.v[<Index4>]~p->v[<Index4>]~gn[<Index2>].n
 ~q[<Index4>]~c~gb[<Index4>]~*q~p->next->n~p[<Index2>].v[<Index4>]~nn[<Index2>][<Index2>].n~nn[<Index2>]->v[<Index4>]~rr[<Index2>][<Index4>]
 ~rows[<Index2>][<Index4>]~gp[<Index2>].v[<Index4>]~ob.v~ob.b~op->z~op->v~gl~gu~gh~ob.u
RealPlace: 2*d~e[<Index4>]~ge[<Index4>]~gf[<Index2>][<Index2>]~s.d~p->d~gr~gd
Compound: +=~-=~*=~&=~|=~^=~<<=~>>=
Compare: <~>~==~!=~<=~>=
Condition: 3*<Int1> <Compare> <Int1>~<Real1> <Compare> <Real1>
Int: 2*<Name>~<#9>~-<#3>~P?m~P?o~<Place>~~<Int> + <Int>~<Int> - (<Int>)~(<Int>) * <Int>~(<Int>) / <Divisor>~(<Int>) & <Int>
 ~(<Condition>)~(<Int> < <Int> && <Int>)~(<Int> < <Int> || <Int>)~!<Name>~-<Place>~2*<Call>~$x~<Name>++~(<Name> = <Int>)
 ~(<Condition> ? <Int> : <Int>)~<Cast>(<Int>)~gv[<Index2>][<Int0> & 1]~gw[<Index2>][<#2>]~ob.get()~op->sum(<Int0>, <Int1>)~(<Int>) << <#9>~(<Int>) >> <#9>
Divisor: 2*2~2*3~2*5~2*7~<Name>
Cast: (char)~(short)~(long)~(unsigned int)~(int)
Real: 2*d~<#20>.5~<RealPlace>~~<Real> + <Int>~<Real> - <Real>~<Real> * <Real>~(<Real>) / 4~$y~2*-<RealPlace>~<Call>
Call: morv_strlen("abc")~3*A?f0(<Int1>, <Int1>)~3*B?f1()~3*C?f2(<Real1>, <Int1>)~D?f3(p, q)~2*D?f3(&gs, ga)
 ~3*E?f4(<Int1>, <Int0>)
)";

/// Writes well-formed programs out of arbitrary bytes: structs, pointers, arrays, calls of all kinds,
/// nested loops with all ways out of them, and now and then a value that leads nowhere. Every loop and
/// every call burns fuel, so that a program ends.
class ProgramWriter {
 public:
  ProgramWriter(const uint8_t* data, size_t size) : data_(data), size_(size) { ReadGrammar(); }

  std::string Write() {
    std::string functions;
    Expand("Head", 0, {});
    for (const char* name : {"A", "B", "C", "D", "E"}) {
      if (Pick(2) == 0) continue;
      functions += name;
      Expand(name, 0, functions);
    }
    Expand("Main", 0, functions);
    return text_;
  }

 private:
  struct Alternative {
    int weight = 1;
    char flag = 0;
    bool deep = false;
    std::string_view text;
  };

  void ReadGrammar() {
    const std::string_view all = kProgramGrammar;
    for (size_t at = 1; at < all.size();) {
      const size_t colon = all.find(':', at), end = std::min(all.find("\n", colon), all.size());
      size_t next = end;
      while (next < all.size() && all.substr(next, 2) == "\n ") next = all.find('\n', next + 1);
      auto& rule = rules_[all.substr(at, colon - at)];
      bool deep = false;
      for (size_t from = colon + 1; from <= next;) {
        const size_t to = std::min(all.find('~', from), next);
        if (to == from && to < next && !rule.empty())
          deep = true;
        else
          rule.push_back(Read(all.substr(from, to - from), deep));
        from = to + 1;
      }
      at = all.find_first_not_of('\n', next);
    }
  }

  static Alternative Read(std::string_view text, bool deep) {
    Alternative read{1, 0, deep, text.substr(std::min(text.find_first_not_of(' '), text.size()))};
    const size_t star = read.text.find_first_not_of("0123456789");
    if (star != 0 && star != std::string_view::npos && read.text[star] == '*') {
      read.weight = std::stoi(std::string(read.text.substr(0, star)));
      read.text.remove_prefix(star + 1);
    }
    if (read.text.size() > 1 && read.text[1] == '?') {
      read.flag = read.text[0];
      read.text.remove_prefix(2);
    }
    return read;
  }

  int Pick(int below) { return at_ < size_ ? data_[at_++] % below : 0; }

  const Alternative& Choose(const std::vector<Alternative>& rule, int depth, std::string_view flags) {
    int total = 0;
    for (const Alternative& one : rule) total += one.deep && depth <= 0 ? 0 : one.weight;
    int left = Pick(total);
    for (const Alternative& one : rule) {
      left -= one.deep && depth <= 0 ? 0 : one.weight;
      if (left < 0) return one.flag == 0 || flags.find(one.flag) != flags.npos ? one : rule[0];
    }
    return rule[0];
  }

  void Expand(std::string_view name, int depth, const std::string& flags) {
    std::string_view text = Choose(rules_.at(name), depth, flags).text;
    while (!text.empty()) {
      const size_t open = text.find('<');
      text_ += text.substr(0, open);
      if (open == text.npos) break;
      text.remove_prefix(open);
      const bool reference = text.size() > 1 && (text[1] == '#' || (text[1] >= 'A' && text[1] <= 'Z'));
      const size_t length = reference ? text.find('>') + 1 : 1;
      if (reference)
        Refer(text.substr(1, length - 2), depth, flags);
      else
        text_ += '<';
      text.remove_prefix(length);
    }
    if (name == "Statement" || flags.ends_with(name)) text_ += '\n';
  }

  void Refer(std::string_view reference, int depth, const std::string& flags) {
    const auto number = [&](char mark) {
      const size_t at = reference.find(mark);
      return at == reference.npos ? 0 : std::stoi(std::string(reference.substr(at + 1)));
    };
    if (reference[0] == '#') {
      text_ += std::to_string(Pick(number('#')));
      return;
    }
    const size_t slash = std::min(reference.find('/'), reference.size());
    const std::string inner = flags + std::string(reference.substr(slash));
    std::string_view name = reference.substr(0, std::min(slash, reference.find('*')));
    // Rules whose own names end with a digit stay at the depth at hand.
    if (!rules_.count(name)) {
      depth = name.back() - '0' + 1;
      name.remove_suffix(1);
    }
    const int count = number('*') > 0 ? 1 + Pick(number('*')) : 1;
    for (int i = 0; i < count; ++i) Expand(name, depth - 1, inner);
  }

  const uint8_t* data_;
  size_t size_;
  size_t at_ = 0;
  std::string text_;
  std::map<std::string_view, std::vector<Alternative>> rules_;
};

}  // namespace vorc::fuzz
