#include "rtl/function.h"

#include <algorithm>
#include <utility>

#include "base/format.h"
#include "program/statement_tree.h"
#include "rtl/words.h"

namespace vorc {

namespace {

// Blocks in blocks of a loop's body; deeper ones are refused.
constexpr int kDeepestBlock = 256;
constexpr size_t kRenamedTextLimit = 1016;

bool IsPlainOrTypeless(const TypeSpec& type) {
  if (type.Typedef != nullptr || type.Struct != nullptr || type.Enum != nullptr) return false;
  const bool is_unsigned = (type.StorageType & UNSIGNED_VAR) != 0;
  return type.BasicType == Tok::dollar || (type.BasicType == Tok::int_ && !is_unsigned);
}

const SYM_REC* InitializedLocal(const SYMBOLS_HEADER& header) {
  for (const SYM_REC* symbol : header.Symbols) {
    if (symbol->HasInitializer) return symbol;
  }
  return nullptr;
}

std::string InitializedMessage(const SYM_REC* symbol) {
  return Format("declaration of '%s' with a value is outside the v1 subset (assign it in a statement)",
                symbol->name->c_str());
}

bool CollectBlock(const STATEMENT_BLOCK* first, std::vector<RtlAssign>* list, std::string* error, int depth) {
  for (const STATEMENT_BLOCK* at = first; at != nullptr; at = at->Next) {
    if (at->StatementType == STATEMENT_TYPE_PLAIN) {
      if (!morv_rtl_take_assign(at, list, error)) return false;
    } else if (at->StatementType == STATEMENT_TYPE_NEWBLOCK && at->Block != nullptr &&
               depth < kDeepestBlock) {
      if (const SYM_REC* symbol = InitializedLocal(at->Block->LocalsHeader)) {
        *error = InitializedMessage(symbol);
        return false;
      }
      if (!CollectBlock(at->Block->Statements.First, list, error, depth + 1)) return false;
    } else {
      *error = Format(
          "statement type %d inside a loop body is outside the v1 subset (nested loops / if / break / "
          "continue "
          "are a later step)",
          static_cast<int>(at->StatementType));
      return false;
    }
  }
  return true;
}

/// The walk over one function. Each step answers false and leaves the line to print.
class Collector {
 public:
  Collector(const PROC_TABLE& body, RtlFunction* function, std::string* skip)
      : body_(body), function_(*function), skip_(*skip) {}

  bool Run() {
    return TakeHead() && TakeParameters() && TakeStatements() && TakeRegisters() && RenameLoaded();
  }

 private:
  enum class Next { kGoOn, kDone, kFailed };

  bool Skip(const std::string& reason) {
    skip_ = "  skip '" + function_.name + "': " + reason + "\n";
    return false;
  }
  bool SkipAt(const char* what, const STATEMENT_BLOCK* at, const std::string& error) {
    return Skip(Format("%sline %ld: %s", what, static_cast<long>(at->Line.Line), error.c_str()));
  }

  bool TakeHead() {
    function_.name = body_.name->Text;
    const TypeSpec& type = body_.Owner->ReturnType;
    function_.typeless = type.BasicType == Tok::dollar;
    if (type.PointerDepth != 0 || !IsPlainOrTypeless(type)) {
      return Skip(
          "v1 requires an 'int' return type, or a typeless 'function' whose\n"
          "        values are all integers (Part 21 subset)");
    }
    return IsVerilogName(function_.name) || Skip(RefusedName(function_.name));
  }

  bool TakeParameters() {
    for (const SYM_REC* parameter : body_.Owner->ParametersHeader.Symbols) {
      if (!TakeParameter(*parameter)) return false;
    }
    return true;
  }

  bool TakeParameter(const SYM_REC& parameter) {
    const std::string name(parameter.name == nullptr ? "" : parameter.name->Text);
    if (parameter.PointerDepth > 0 || parameter.TotalDepth > 0 || parameter.IsFunctionPointer ||
        parameter.Shape.DimensionCount > 0)
      return Skip(Format("parameter '%s' is a pointer (not synthesizable in v1)", name.c_str()));
    if (parameter.BasicType == Tok::void_) return true;
    if (!IsPlainOrTypeless(parameter))
      return Skip(Format("parameter '%s' is not a plain int or a typeless parameter", name.c_str()));
    if (function_.parameters.size() >= kRtlParameters)
      return Skip(Format("too many parameters (max %zu)", kRtlParameters));
    if (!IsVerilogName(name)) return Skip(RefusedName(name));
    function_.parameters.push_back(parameter.name);
    return true;
  }

  bool TakeStatements() {
    if (const SYM_REC* symbol = InitializedLocal(body_.LocalsHeader))
      return Skip(
          Format("line %ld: %s", static_cast<long>(symbol->Line.Line), InitializedMessage(symbol).c_str()));
    for (const STATEMENT_BLOCK* at = body_.Statements.First; at != nullptr; at = at->Next) {
      const Next next = TakeStatement(at);
      if (next != Next::kGoOn) return next == Next::kDone;
    }
    return Skip("no 'return expr;' found");
  }

  Next TakeStatement(const STATEMENT_BLOCK* at) {
    switch (at->StatementType) {
      case STATEMENT_TYPE_PLAIN: return TakeAssign(at) ? Next::kGoOn : Next::kFailed;
      case STATEMENT_TYPE_WHILE:
      case STATEMENT_TYPE_DO: return TakeLoop(at) ? Next::kGoOn : Next::kFailed;
      case STATEMENT_TYPE_RETURN: return TakeReturn(at) ? Next::kDone : Next::kFailed;
      default:
        Skip(Format("statement type %d at line %ld is outside the v1 subset (loops/if/switch are phase 3)",
                    static_cast<int>(at->StatementType), static_cast<long>(at->Line.Line)));
        return Next::kFailed;
    }
  }

  bool TakeAssign(const STATEMENT_BLOCK* at) {
    std::string error;
    return morv_rtl_take_assign(at, &function_.assigns, &error) || SkipAt("", at, error);
  }

  bool TakeLoop(const STATEMENT_BLOCK* at) {
    if (function_.loop) return Skip("more than one loop per function is a later step");
    if (at->Expression == nullptr)
      return Skip(Format("loop at line %ld has no condition", static_cast<long>(at->Line.Line)));
    RtlLoop& loop = function_.loop.emplace();
    loop.is_do = at->StatementType == STATEMENT_TYPE_DO;
    loop.position = function_.assigns.size();
    loop.condition_value = {at->Expression, nullptr};
    std::string error;
    const std::optional<std::string> condition = morv_rtl_expr_to_verilog(loop.condition_value, &error);
    if (!condition) return SkipAt("loop condition at ", at, error);
    loop.condition = *condition;
    return morv_rtl_collect_block(BodyOfLoop(at), &loop.body, &error) || SkipAt("loop body at ", at, error);
  }

  bool TakeReturn(const STATEMENT_BLOCK* at) {
    if (at->Expression == nullptr) return Skip("bare 'return;' has no value to drive the output");
    function_.result_value = {at->Expression, nullptr};
    std::string error;
    const std::optional<std::string> text = morv_rtl_expr_to_verilog(function_.result_value, &error);
    if (!text) return SkipAt("return at ", at, error);
    function_.result = *text;
    return true;
  }

  bool TakeRegisters() {
    const auto add = [this](const RtlAssign& assign) {
      return morv_rtl_reg_add(&function_.registers, assign.target);
    };
    const bool fits =
        std::all_of(function_.assigns.begin(), function_.assigns.end(), add) &&
        (!function_.loop || std::all_of(function_.loop->body.begin(), function_.loop->body.end(), add));
    return fits || Skip(Format("too many registers (max %zu)", kRtlRegisters));
  }

  std::vector<std::string*> AllTexts() {
    std::vector<std::string*> texts{&function_.loop->condition, &function_.result};
    for (std::vector<RtlAssign>* list : {&function_.assigns, &function_.loop->body}) {
      for (RtlAssign& assign : *list) texts.insert(texts.end(), {&assign.target, &assign.text});
    }
    return texts;
  }

  // Two things of one name would be one in the module, and not always one that a tool refuses.
  bool NothingIsCalled(const std::string& made, const std::string& of) {
    const auto is_there = [&](const std::string& text) { return morv_rtl_rename_word(text, {made}) != text; };
    const bool clash =
        std::ranges::any_of(AllTexts(), [&](const std::string* text) { return is_there(*text); }) ||
        std::ranges::any_of(function_.parameters, [&](const Name* name) { return name->Text == made; });
    return !clash || Skip(Format("'%s' is a name that the module needs for '%s'", made.c_str(), of.c_str()));
  }

  // A parameter can't be both a port and a register.
  bool RenameLoaded() {
    if (!function_.loop) return true;
    WordSet words;
    for (const Name* parameter : function_.parameters) {
      const std::string name(parameter->Text);
      if (std::ranges::find(function_.registers, name) == function_.registers.end()) continue;
      if (!NothingIsCalled(name + "_v", name)) return false;
      function_.loaded.push_back(name);
      words.insert(name);
    }
    for (std::string& name : function_.registers) {
      const std::string before = std::exchange(name, morv_rtl_rename_word(name, words));
      if (!NothingIsCalled(name + "_next", before)) return false;
    }
    bool fits = true;
    for (std::string* text : AllTexts()) {
      *text = morv_rtl_rename_word(*text, words);
      fits = fits && text->size() <= kRenamedTextLimit;
    }
    return words.empty() || fits ||
           Skip(Format("expression text too long (max %zu characters)", kRenamedTextLimit));
  }

  const PROC_TABLE& body_;
  RtlFunction& function_;
  std::string& skip_;
};

}  // namespace

bool morv_rtl_split_assign(const EXPR_NODE* expression, const EXPR_NODE** name_out, RtlExpression* rest_out) {
  const EXPR_NODE* last = expression;
  while (last->Next != nullptr) last = last->Next;
  const bool is_name = expression->Token == Tok::IDENTIFIER || expression->Token == Tok::DOLLAR_IDENTIFIER;
  if (!is_name || expression->IndexExpression != nullptr || NameOfNode(expression) == nullptr ||
      last->Token != Tok::ASSIGN)
    return false;
  *name_out = expression;
  *rest_out = {expression->Next, last};
  return true;
}

bool morv_rtl_take_assign(const STATEMENT_BLOCK* statement, std::vector<RtlAssign>* list,
                          std::string* error) {
  if (statement->Expression == nullptr) return true;
  const EXPR_NODE* target = nullptr;
  RtlExpression value;
  if (!morv_rtl_split_assign(statement->Expression, &target, &value)) {
    *error = "not a simple 'name = expr;'";
    return false;
  }
  if (list->size() >= kRtlAssignments) {
    *error = Format("too many assignments (max %zu)", kRtlAssignments);
    return false;
  }
  const Name* name = NameOfNode(target);
  if (!IsVerilogName(name->Text)) {
    *error = RefusedName(name->Text);
    return false;
  }
  std::optional<std::string> text = morv_rtl_expr_to_verilog(value, error);
  if (!text) return false;
  list->push_back({name, std::string(name->Text), std::move(*text), value});
  return true;
}

bool morv_rtl_collect_block(const STATEMENT_BLOCK* first, std::vector<RtlAssign>* list, std::string* error) {
  return CollectBlock(first, list, error, 0);
}

bool morv_rtl_reg_add(std::vector<std::string>* registers, const std::string& name) {
  if (std::find(registers->begin(), registers->end(), name) != registers->end()) return true;
  if (registers->size() >= kRtlRegisters) return false;
  registers->push_back(name);
  return true;
}

std::optional<RtlFunction> CollectFunction(const PROC_TABLE& body, std::string* skip) {
  RtlFunction function;
  if (!Collector(body, &function, skip).Run()) return std::nullopt;
  return function;
}

}  // namespace vorc
