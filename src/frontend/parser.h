#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/scanner.h"
#include "program/slot.h"
#include "program/symtab.h"

namespace vorc {

/// A chain of expression nodes under construction.
struct ExprChain {
  EXPR_NODE* First = nullptr;
  EXPR_NODE* Last = nullptr;
};

/// Flags a declaration carries besides its type.
struct FunctionTraits {
  bool is_inline = false;
  bool is_virtual = false;
  bool is_friend = false;
};

/// Recursive descent over a source file: declarations, statements and expressions become program
/// records as they are read. An error is reported and the parse goes on at the next place that
/// makes sense.
class Parser {
 public:
  Parser(C_SLOT& slot, Scanner& scanner) : slot_(slot), scan_(scanner) {}

  /// Reads the whole file. False if errors were counted.
  bool ParseCsyntax();

 private:
  static constexpr long kMostErrors = 20;

  /// Where a declaration or statement stands: what it inserts into, and what is visible from it.
  struct Scope {
    enum class Kind : uint8_t { kMain, kProc, kBlock, kForClause, kStruct };

    Kind kind = Kind::kMain;
    bool is_typedef = false;
    bool by_name = false;  ///< a declaration at file level that a type's name opened
    SYMBOLS_HEADER* header = nullptr;
    FUNCPROTO_REC* proc = nullptr;
    CODE_BLOCK* block = nullptr;
    StatementList* statements = nullptr;
    STRUCT_REC* owner = nullptr;
    SYMBOLS_HEADER* tags = nullptr;  ///< where tags go that a struct's body declares

    SYMBOLS_HEADER* TagHeader() const { return tags != nullptr ? tags : header; }
    bool InFunction() const { return proc != nullptr && kind != Kind::kStruct; }
  };

  /// What the names of an expression are looked up from.
  struct ExprContext {
    FUNCPROTO_REC* proc = nullptr;
    STATEMENT_BLOCK* statement = nullptr;
    CODE_BLOCK* block = nullptr;
    bool constant = false;  ///< an initial value or a dimension: evaluated while parsing
  };

  /// One declarator while it is read.
  struct Declarator {
    TypeSpec type;
    Name* name = nullptr;
    SourceLine line;  ///< of the name
    std::vector<int64_t> dimensions;
    bool function_body = false;  ///< it was a function with its body: no `;` follows
    bool function_pointer = false;
    int64_t room = 0;  ///< bytes that its storage may take
  };

  /// Stops the compilation when constructs nest too deep for the host's stack.
  class Nesting {
   public:
    explicit Nesting(Parser& parser);
    ~Nesting() { --parser_.depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    explicit operator bool() const { return !parser_.slot_.Stopped; }

   private:
    Parser& parser_;
  };

  // --- parser.cpp: the file level and error recovery
  void ParseTopLevelItem();
  void ParseTopLevelIdentifier();
  bool AtMisspeltType(const Scope& scope);
  static constexpr const char* kUndeclaredVariable = "Undeclared variable '%s'";
  bool SkipMisspeltType(long code, const char* format);
  void ParseTopLevelOther();
  void ParseTopLevelDollar();
  void SkipUnsupported();
  /// What can begin something at file level.
  const TokenList& Begin() const { return slot_.IsScript() ? MorvBeginList : BeginList; }
  bool Synchronize(const TokenList& first, const TokenList& second);
  bool Synchronize(const TokenList& first, const TokenList& second, const TokenList& third);
  void SkipToMatchingBrace();
  void SkipToSemicolon();
  /// The next token. Directives in front of it are worked off, wherever they stand.
  void Next() {
    Peek();
    PassDirectives();
  }
  /// At file level only as long as the errors aren't too many.
  void PassDirectives() {
    while (At(Tok::POUND) && !(depth_ == 0 && TooManyErrors())) scan_.ParsePound();
  }
  bool TooManyErrors() const { return slot_.Display.ErrorCount > kMostErrors; }
  /// Reads ahead without consuming anything: `look` may call `Peek` and answers a question.
  template <typename Question>
  bool LookAhead(Question look) {
    const auto saved = scan_.SaveToken();
    ++slot_.Muted;
    const bool answer = look();
    if (slot_.Muted > 0) --slot_.Muted;
    scan_.RestoreToken(saved);
    return answer;
  }
  void Peek() { scan_.GetComboTokenSkipEol(); }
  Tok Token() const { return scan_.Token(); }
  bool At(Tok token) const { return scan_.Token() == token; }
  bool Accept(Tok token);
  /// The current token must be `token`: passes it, or reports `text` and answers false.
  bool Expect(Tok token, long code, const char* text);
  bool Fail(long code, const std::string& text);
  /// As `Expect` of a `}`; at the end of the file an additional line says where its `{` stands.
  bool ExpectBrace(SourceLine opened, long code, const char* text);
  /// Reports a `}` that is missing.
  bool FailBrace(SourceLine opened, long code, const char* text);
  bool AtName() const { return scan_.WordName() != nullptr && Token() == Tok::IDENTIFIER; }
  /// A name behind a type: also a word that is a type only as long as nobody takes it.
  bool AtDeclaredName() const;
  /// True at a token that can begin an expression.
  bool AtOperand() const;
  Scope MainScope();
  Scope ProcScope(FUNCPROTO_REC* proc);

  // --- declarations.cpp
  bool AtTypeStart(const Scope& scope) const;
  bool ParseSpecifiers(const Scope& scope, TypeSpec* type);
  void ParseStorageWord(const Scope& scope, TypeSpec* type);
  bool ParseBasicTypeWord(TypeSpec* type);
  void ParseUnsignedWord(TypeSpec* type);
  bool ParseUserTypeName(const Scope& scope, TypeSpec* type);
  bool UseNamedType(const FoundName& found, TypeSpec* type);
  std::string TypeText(const TypeSpec& type) const;
  /// A whole declaration from its first word to its `;` or to the end of a function's body.
  bool ParseDeclaration(const Scope& scope, const FunctionTraits& traits = {});
  bool ParseDeclarators(const Scope& scope, const TypeSpec& type, const FunctionTraits& traits);
  bool FailMissingName(const Scope& scope, const TypeSpec& type, bool first);
  bool FailMissingSemicolon(const Scope& scope, const TypeSpec& type);
  bool ParseBasicTypeDecl(const Scope& scope, const TypeSpec& type, const FunctionTraits& traits,
                          bool* function_body);
  bool ParseNamedDeclarator(const Scope& scope, Declarator* declarator, const FunctionTraits& traits);
  bool ParseVariable(const Scope& scope, Declarator* declarator, FUNCPROTO_REC* function_pointer);
  bool ParseArrayDimension(const Scope& scope, std::vector<int64_t>* dimensions);
  int64_t EvalArrayDimensionExpression(const Scope& scope);
  bool CheckVariableConflict(const Scope& scope, const Declarator& declarator, SYM_REC** existing);
  void ShowConflict(const FoundName& conflict, const Name* name, bool warning);
  bool DeclareTypedef(const Scope& scope, const Declarator& declarator, FUNCPROTO_REC* function);
  void FinishVariable(const Scope& scope, SYM_REC* symbol);
  bool CheckRoom(const Declarator& declarator, const SYM_REC* symbol);
  bool ParseInitialValue(const Scope& scope, const Declarator& declarator, SYM_REC* symbol);
  bool ParseLocalValue(const Scope& scope, SYM_REC* symbol);
  bool ParseScriptValue(const Declarator& declarator, SYM_REC* symbol);
  bool ParseTypeDef(const Scope& scope);
  bool ParseFunctionPointer(const Scope& scope, Declarator* declarator);
  bool ParseEnum(const Scope& scope, TypeSpec* type);
  bool ParseEnumBody(const Scope& scope, ENUM_REC* record, SourceLine opened);
  void ParseStars(int16_t* depth);
  bool ShapeSymbol(SYM_REC* symbol, const std::vector<int64_t>& dimensions);
  bool CheckTypeSize(SYM_REC* symbol);
  bool FailTypeSize(const Name* name);
  bool ParseBitField(const Declarator& declarator, SYM_REC* symbol);

  // --- functions.cpp
  bool ParseBasicProcedure(const Scope& scope, FUNCPROTO_REC* proto, bool* function_body);
  bool ParseFunctionDeclarator(const Scope& scope, const Declarator& declarator, const FunctionTraits& traits,
                               bool* function_body);
  bool ParseProcedureArgs(FUNCPROTO_REC* proto, const Scope& scope);
  bool InsertArgument(FUNCPROTO_REC* proto, const Scope& scope);
  bool ParseArgumentType(const Scope& scope, TypeSpec* type);
  FUNCPROTO_REC* ParseFuncPtrArgument(const Scope& scope, Declarator* declarator);
  /// Takes the current word as the declarator's name and passes it.
  void TakeName(Declarator* declarator) {
    declarator->name = scan_.WordName();
    declarator->line = scan_.Place();
    Next();
  }
  void DeclareArgument(FUNCPROTO_REC* proto, const Declarator& declarator, FUNCPROTO_REC* function_pointer);
  bool ParseVarArgs(FUNCPROTO_REC* proto);
  void InsertVoidArgument(FUNCPROTO_REC* proto, bool counted);
  FUNCPROTO_REC* SettleOverload(SYMBOLS_HEADER* header, FUNCPROTO_REC* proto, bool defining);
  bool ParseProcedureBody(FUNCPROTO_REC* proto);
  bool ParseFunctionSubroutineNamed(SYMBOLS_HEADER* header);

  // --- structs.cpp, members.cpp
  bool ParseStructDecl(const Scope& scope, TypeSpec* type);
  STRUCT_REC* StructForDefinition(const Scope& scope, Name* tag, Tok kind);
  bool ParseBases(const Scope& scope, STRUCT_REC* record);
  void Inherit(STRUCT_REC* base, STRUCT_REC* derived, InheritanceKind access);
  bool ParseStructMembers(const Scope& scope, STRUCT_REC* record);
  bool ParseMember(const Scope& members, STRUCT_REC* record);
  void ParseMemberPrefix(FunctionTraits* traits);
  bool ParseFriendClass(const Scope& members, STRUCT_REC* record);
  bool ParseConstructorOrDestructor(const Scope& members, STRUCT_REC* record, bool destructor,
                                    const FunctionTraits& traits);
  bool ParseOperatorName(Declarator* declarator, const FunctionTraits& traits);
  bool ParsePureOrBody(const Scope& scope, FUNCPROTO_REC* proto, bool* function_body);
  bool ParseMemberFunctionDefinitions(const Scope& scope, Declarator* declarator, bool* function_body);
  bool DefineMemberFunction(STRUCT_REC* record, const Declarator& declarator, bool destructor,
                            bool* function_body);
  bool ParseFriend(FUNCPROTO_REC* proto, STRUCT_REC* record, bool* function_body);
  bool ParseAccessWord(STRUCT_REC* record, bool* seen);
  void ResolveVirtualReference(STRUCT_REC* record);
  bool DisplayPureVirtualVarError(const TypeSpec& type);
  const FUNCPROTO_REC* FindPureVirtual(STRUCT_REC* record);
  void InsertFriendOf(FUNCPROTO_REC* proto, STRUCT_REC* record);
  bool CompleteStruct(STRUCT_REC* record);

  // --- initializers.cpp
  bool InitializeBasicType(SYM_REC* symbol, const ExprContext& context);
  bool ParseInitializerList(INITIALIZER* element, const ExprContext& context);
  bool ParseExpressionInitializer(InitializerList* list, const ExprContext& context);
  INITIALIZER* InsertNewInitializerElement(InitializerList* list, InitializerKind kind);
  bool VerifyInitializers(SYM_REC* symbol, const ExprContext& context);
  bool IsAggregate(const SYM_REC* symbol) const;

  // --- statements.cpp, control.cpp
  bool ParseProcBody(FUNCPROTO_REC* proto);
  bool ParseCodeBlock(FUNCPROTO_REC* proto, CODE_BLOCK* block);
  bool ParseBodyItem(const Scope& scope);
  bool ParseBodyIdentifier(const Scope& scope);
  bool ParseLabel(const Scope& scope);
  bool ParsePlainStatement(const Scope& scope);
  bool ParseExpressionStatement(STATEMENT_BLOCK* statement);
  bool ParseStatementOfType(STATEMENT_BLOCK* statement);
  bool ParseNested(const Scope& scope, StatementKind kind);
  bool ParseArm(STATEMENT_BLOCK* arm, const char* misuse, long code);
  bool ParseArmBlock(STATEMENT_BLOCK* arm);
  bool ParseCondition(STATEMENT_BLOCK* statement, const char* word);
  bool ParseIF(STATEMENT_BLOCK* statement);
  bool ParseWHILE(STATEMENT_BLOCK* statement);
  bool ParseDO(STATEMENT_BLOCK* statement);
  bool ParseFOR(STATEMENT_BLOCK* statement);
  bool ParseFirstForClause(STATEMENT_BLOCK* clause);
  bool ParseForClauses(STATEMENT_BLOCK* group, STATEMENT_BLOCK* scope, const char* name, Tok end);
  bool ParseSWITCH(STATEMENT_BLOCK* statement);
  bool ParseCase(const Scope& scope);
  bool ParseDefaultType(const Scope& scope);
  bool ParseGotoType(STATEMENT_BLOCK* statement);
  bool ParseBreakType(STATEMENT_BLOCK* statement);
  bool ParseContinueType(STATEMENT_BLOCK* statement);
  bool ParseReturnType(STATEMENT_BLOCK* statement);
  bool ParseDeleteStatement(STATEMENT_BLOCK* statement);
  bool SkipTryBlock();
  bool SkipRtlBlock();
  ExprContext ContextOf(STATEMENT_BLOCK* statement) const;

  // --- script_dialect.cpp
  void CreateMorvMain();
  bool ParseMorvScript();
  bool MorvPROC_ParseIdentifier();
  bool MorvPROC_ParseStatement(StatementKind kind);
  bool RunMorvStatement(STATEMENT_BLOCK* statement);
  Scope MorvScope();
  bool ParseDollarVar(const Scope& scope);
  SYM_REC* FindOrCreateDollar(const ExprContext& context, Name* word);
  Name* MorvSplitDollarVarName(const ExprContext& context, Name* word);
  FoundName FindDollarFactorIdentifier(const ExprContext& context, const Name* name) const;
  bool PROC_ParseIObjectDecl(const Scope& scope);
  bool ParseIObjectMembers(STRUCT_REC* record);
  bool ParseIObjectVariables(STRUCT_REC* record);

  // --- expressions.cpp
  bool AssignmentExpression(const ExprContext& context, ExprChain* chain);
  bool ParseQuestionMark(const ExprContext& context, ExprChain* chain);
  bool BinaryExpression(const ExprContext& context, ExprChain* chain, int level);
  bool CTerm(const ExprContext& context, ExprChain* chain);
  bool BitAnd_Star(const ExprContext& context, ExprChain* chain);
  bool CFactor(const ExprContext& context, ExprChain* chain);
  bool ParseGroupOrCast(const ExprContext& context, ExprChain* chain);
  bool ParseGroup(const ExprContext& context, ExprChain* chain);
  bool ParseUnary(const ExprContext& context, ExprChain* chain, Tok op);
  bool ParseComplexIdentifier(const ExprContext& context, ExprChain* chain);
  bool ParseDollarFactor(const ExprContext& context, ExprChain* chain);
  bool ParseIdentifierTail(const ExprContext& context, ExprChain* chain, EXPR_NODE* node);
  bool ParseIndices(const ExprContext& context, EXPR_NODE* node);
  bool ParseMemberChain(const ExprContext& context, ExprChain* chain, EXPR_NODE* owner);
  bool ParseFunctionCall(const ExprContext& context, EXPR_NODE* call);
  bool ParseCallBehindName(const ExprContext& context, ExprChain* chain, Name* name, const FoundName& found);
  bool ParseCppNewCall(const ExprContext& context, ExprChain* chain);
  bool ParseFullExpression(const ExprContext& context, EXPR_NODE** head);
  SYM_REC* InsertUndeclared(Name* name);
  EXPR_NODE* CreateNewExprNode(const ExprContext& context, Tok token);
  EXPR_NODE* Append(const ExprContext& context, ExprChain* chain, Tok token);
  void SetLiteral(EXPR_NODE* node, std::string_view text);
  EXPR_NODE* AddNumber(const ExprContext& context, ExprChain* chain, Tok token, std::string_view text);
  EXPR_NODE* AddNumberValue(const ExprContext& context, ExprChain* chain, int64_t value);
  EXPR_NODE* AddRealNumber(const ExprContext& context, ExprChain* chain);
  EXPR_NODE* AddString(const ExprContext& context, ExprChain* chain);
  EXPR_NODE* AddIdentifier(const ExprContext& context, ExprChain* chain, Name* name, SYM_REC* symbol);

  // --- casts.cpp
  bool AtCastType(const ExprContext& context) const;
  bool ParseTypeCastNew(const ExprContext& context, ExprChain* chain);
  bool ParseCastType(const ExprContext& context, CAST* cast);
  bool ParseSizeof(const ExprContext& context, int64_t* size);
  bool SizeofExpression(const ExprContext& context, int64_t* size);

  C_SLOT& slot_;
  Scanner& scan_;
  int depth_ = 0;
  bool struct_defined_ = false;  ///< the last struct that was named had its body behind it
};

}  // namespace vorc
