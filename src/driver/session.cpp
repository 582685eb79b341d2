#include "driver/session.h"

#include <cstdio>
#include <utility>

#include "builtins/table.h"
#include "frontend/parser.h"
#include "frontend/scanner.h"
#include "interp/interpreter.h"
#include "lib/sandbox.h"
#include "program/symtab.h"

namespace vorc {

struct Session::Parts {
  Parts() : scanner(slot), interpreter(slot) {}

  FoundName Find(std::string_view word) { return FindInScope(slot, &slot.Globals, slot.Names.Intern(word)); }

  C_SLOT slot;
  Scanner scanner;
  Interpreter interpreter;
};

Session::Session(const Options& options) : parts_(std::make_unique<Parts>()) {
  C_SLOT& slot = parts_->slot;
  slot.Target = options.target;
  slot.Target.script = slot.Target.quiet = slot.Target.typed = true;
  slot.Display.set_quiet(true);
  slot.Services = &parts_->interpreter;
  slot.OpenSource = [](const std::string& path) { return MorvSafeFopen(path, "rb"); };
  std::string defines;
  for (const std::string& define : options.defines) {
    const size_t equals = define.find('=');
    defines += "#define " + define.substr(0, equals);
    if (equals != std::string::npos) defines += " " + define.substr(equals + 1);
    defines += '\n';
  }
  if (!defines.empty()) Run("-D", std::move(defines));
}

Session::~Session() = default;

bool Session::ready() const {
  return parts_->interpreter.ready() && parts_->slot.Expressions.reserved();
}

bool Session::Run(const std::string& name, std::string text) {
  parts_->scanner.StartAnew();
  parts_->scanner.AddSource(name, std::move(text));
  if (!parts_->scanner.OpenSourceCodeFile(name)) return false;
  Parser(parts_->slot, parts_->scanner).ParseCsyntax();
  return parts_->slot.Display.ErrorCount == 0;
}

bool Session::BeginsNoExpression(std::string_view word) const {
  const Tok reserved = parts_->slot.Names.Intern(word)->Reserved;
  if (reserved == Tok::sizeof_ || reserved == Tok::true_ || reserved == Tok::false_) return false;
  return reserved != Tok::NOTOKEN || parts_->Find(word).IsType();
}

bool Session::AnswersNothing(std::string_view function) const {
  const FoundName found = parts_->Find(function);
  if (found.Kind == BindingKind::kFunction) {
    const auto* proto = static_cast<const FUNCPROTO_REC*>(found.Record);
    return proto->DefinedBy == Tok::subroutine_ ||
           (proto->ReturnType.BasicType == Tok::void_ && proto->ReturnType.PointerDepth == 0);
  }
  const SysFunc* builtin = FindSystemFunction(function);
  return builtin != nullptr && builtin->result == BuiltinResult::kVoid;
}

}  // namespace vorc
