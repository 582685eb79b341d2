#include "base/format.h"
#include "base/trace.h"
#include "frontend/parser.h"
#include "program/constants.h"
#include "program/initializer_walk.h"

namespace vorc {

namespace {

struct InitializerForm {
  Tok token;
  InitializerKind kind;
};
constexpr InitializerForm kForms[] = {
    {Tok::IDENTIFIER, INITIALIZER_TYPE_SYMBOL_ADDRESS},
    {Tok::HEXNUMBER, INITIALIZER_TYPE_SYMBOL_ADDRESS},
    {Tok::NUMBER, INITIALIZER_TYPE_NUMBER},
    {Tok::PLUS, INITIALIZER_TYPE_PLUS},
    {Tok::MINUS, INITIALIZER_TYPE_MINUS},
    {Tok::LPAREN, INITIALIZER_TYPE_LPAREN},
    {Tok::STRING, INITIALIZER_TYPE_STRING},
    {Tok::BITAND, INITIALIZER_TYPE_BITAND},
    {Tok::sizeof_, INITIALIZER_TYPE_SIZEOF},
    {Tok::SINGLEQUOTE, INITIALIZER_TYPE_SINGLEQUOTE},
    {Tok::REAL_NUMBER, INITIALIZER_TYPE_REALNUMBER},
};

InitializerKind KindOf(Tok token) {
  for (const InitializerForm& form : kForms) {
    if (form.token == token) return form.kind;
  }
  return INITIALIZER_TYPE_NULL;
}

bool IsText(const SYM_REC* symbol) {
  return symbol->ValueType == Tok::char_ || symbol->ValueType == Tok::UCHAR;
}

}  // namespace

// Arrays and structs are filled from a list; everything else takes one value.
bool Parser::IsAggregate(const SYM_REC* symbol) const {
  const bool is_struct = symbol->Struct != nullptr && symbol->TotalDepth == 0 && !symbol->IsFunctionPointer;
  return symbol->Shape.DimensionCount > 0 || (is_struct && At(Tok::LSECONDBRACKET));
}

INITIALIZER* Parser::InsertNewInitializerElement(InitializerList* list, InitializerKind kind) {
  INITIALIZER* element = slot_.New(slot_.InitializerElements, "initial values");
  element->InitializerType = kind;
  element->Line = scan_.Place();
  list->Append(element);
  ++list->Count;
  return element;
}

bool Parser::InitializeBasicType(SYM_REC* symbol, const ExprContext& context) {
  VORC_TRACE("DIAG: InitializeBasicType enter name=%s funcproto=%p\n", symbol->name->c_str(),
             static_cast<void*>(context.proc));
  symbol->Initializer = {};
  const bool list = At(Tok::LSECONDBRACKET);
  if (symbol->Shape.DimensionCount > 0 && !list && !(IsText(symbol) && At(Tok::STRING))) {
    return Fail(0, "'{' required while initializating variables declared with [] array dimension.");
  }
  if (symbol->Struct != nullptr && symbol->TotalDepth == 0 && !symbol->IsFunctionPointer && !list) {
    return Fail(0, "'{' required while initializating struct, union or class variables");
  }
  if (list) {
    INITIALIZER* element =
        InsertNewInitializerElement(&symbol->Initializer, INITIALIZER_TYPE_ANOTHER_INTIALIZER_LIST);
    if (!ParseInitializerList(element, context)) return false;
  } else {
    if (!scan_.TokenIn(ValidInitializerList) && !At(Tok::dollar)) return Fail(81, "Invalid initializer.");
    if (!ParseExpressionInitializer(&symbol->Initializer, context)) return false;
  }
  return VerifyInitializers(symbol, context);
}

bool Parser::ParseExpressionInitializer(InitializerList* list, const ExprContext& context) {
  INITIALIZER* element = InsertNewInitializerElement(list, KindOf(Token()));
  return ParseFullExpression(context, &element->Expression);
}

// A `{`, elements, and the `}`, which is passed.
bool Parser::ParseInitializerList(INITIALIZER* element, const ExprContext& context) {
  const Nesting nesting(*this);
  if (!nesting) return false;
  InitializerList* list = &element->List;
  Next();
  bool value_due = true;
  while (!At(Tok::RSECONDBRACKET)) {
    if (At(Tok::COMMA)) {
      if (value_due) return Fail(81, "Invalid initializer.");
      value_due = true;
      Next();
    } else if (!value_due) {
      return FailBrace(element->Line, 79, "Missing '}' in the initializer list.");
    } else if (At(Tok::LSECONDBRACKET)) {
      INITIALIZER* inner = InsertNewInitializerElement(list, INITIALIZER_TYPE_ANOTHER_INTIALIZER_LIST);
      if (!ParseInitializerList(inner, context)) return false;
      value_due = false;
    } else if (scan_.TokenIn(ValidInitializerList) || At(Tok::dollar)) {
      if (!ParseExpressionInitializer(list, context)) return false;
      value_due = false;
    } else {
      return At(Tok::END_OF_FILE) ? FailBrace(element->Line, 79, "Missing '}' in the initializer list.")
                                  : Fail(81, "Invalid initializer.");
    }
  }
  Next();
  return true;
}

// Checks the values against the variable's shape and settles an open first dimension.
bool Parser::VerifyInitializers(SYM_REC* symbol, const ExprContext& context) {
  ArrayShape& shape = symbol->Shape;
  int open = 0;
  bool misplaced = false;
  for (int i = 0; i < shape.DimensionCount; ++i) {
    if (shape.Dimensions[i] != 0) continue;
    ++open;
    misplaced |= i > 0;
  }
  if (open > 1) return Fail(0, "Too many sizeless dimensions '[]'");
  if (misplaced) return Fail(0, "Wrongly placed sizeless dimensions '[]'");
  const bool listed = symbol->Initializer.First->InitializerType == INITIALIZER_TYPE_ANOTHER_INTIALIZER_LIST;
  if (shape.DimensionCount > 0 && symbol->TotalDepth > 0 && !listed)
    return Fail(0, "put initializing values inside {");
  bool constant = true;
  const bool keeps = (symbol->StorageType & CONSTANT_VAR) != 0 && symbol->TotalDepth == 0 &&
                     shape.DimensionCount == 0 && context.constant;
  const auto check = [&](const InitializerLeaf& leaf) {
    ConstantValue value;
    constant =
        constant && (!context.constant || EvalConstantExpression(slot_, leaf.element->Expression, &value));
    if (keeps && constant && leaf.symbol == symbol && value.IsNumber())
      symbol->Constant = slot_.Texts.New<ConstantValue>(value);
  };
  const auto complain = [&](const INITIALIZER* misfit, const char* format) {
    const char* name = symbol->name->c_str();
    slot_.ErrorAt(misfit->Line, 0, Format(format, name));  // NOLINT(clang-diagnostic-format-nonliteral)
  };
  InitializerWalk walk(slot_, check, complain);
  const int64_t rows = walk.Run(symbol);
  if (open == 1) {
    shape.Dimensions[0] = rows;
    shape.UnsizedFirstDimension = rows == 0;
    shape.CountedFirstDimension = rows > 0;
  }
  return walk.good() && constant;
}

}  // namespace vorc
