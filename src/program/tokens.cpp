#include "program/tokens.h"

namespace vorc {

const std::array<std::string_view, kTokenCount> TokenString = {
#define TOKEN(name, text) text,
#include "program/tokens.def"
};

const TokenList SizeNamedTypeList = {Tok::INT16,  Tok::UINT16, Tok::INT32,   Tok::UINT32, Tok::INT64,
                                     Tok::UINT64, Tok::INT128, Tok::UINT128, Tok::INT8,   Tok::UINT8,
                                     Tok::INT4,   Tok::UINT4,  Tok::INT256,  Tok::UINT256};

const TokenList BasicTypeList = SizeNamedTypeList.With(
    {Tok::float_, Tok::double_, Tok::longdouble, Tok::char_, Tok::unsigned_, Tok::long_, Tok::int_,
     Tok::short_, Tok::BIT, Tok::UCHAR, Tok::bool_, Tok::wchar_t_});

const TokenList TagList = {Tok::struct_, Tok::class_, Tok::union_};

const TokenList StorageList = {Tok::const_,    Tok::volatile_, Tok::static_,
                               Tok::register_, Tok::auto_,     Tok::extern_};

namespace {

const TokenList kTypeStart = BasicTypeList.With(TagList).With({Tok::void_, Tok::enum_, Tok::IDENTIFIER});
const TokenList kUnsupported = {Tok::try_, Tok::throw_, Tok::template_, Tok::using_, Tok::namespace_};
const TokenList kExpressionStart = {Tok::LPAREN, Tok::STAR, Tok::PLUS_PLUS, Tok::MINUS_MINUS, Tok::this_};
const TokenList kControl = {Tok::for_, Tok::while_, Tok::switch_, Tok::do_, Tok::goto_, Tok::if_};

}  // namespace

const TokenList EofList = {Tok::END_OF_FILE};
const TokenList EofProcList = {Tok::RSECONDBRACKET};
const TokenList DollarListAndFunctionList = {Tok::dollar, Tok::function_, Tok::subroutine_};
const TokenList ValidVarList = {Tok::STAR, Tok::IDENTIFIER, Tok::LPAREN};
const TokenList ValidBitFieldType = {Tok::int_, Tok::long_, Tok::INT32};
const TokenList ValidInitializerList = {
    Tok::BITAND,  Tok::IDENTIFIER, Tok::SINGLEQUOTE, Tok::NUMBER, Tok::HEXNUMBER, Tok::REAL_NUMBER,
    Tok::sizeof_, Tok::LPAREN,     Tok::PLUS,        Tok::MINUS,  Tok::STRING,    Tok::LSECONDBRACKET,
    Tok::TILDA,   Tok::NOT,        Tok::STAR,        Tok::this_};
const TokenList ValidTypeDefList = kTypeStart.With({Tok::const_, Tok::volatile_});
const TokenList ArgumentTypesList =
    kTypeStart.With({Tok::dollar, Tok::const_, Tok::volatile_, Tok::register_, Tok::DOT});
const TokenList StructBodyList =
    kTypeStart.With({Tok::SEMICOLON, Tok::private_, Tok::public_, Tok::protected_, Tok::inline_, Tok::friend_,
                     Tok::virtual_, Tok::TILDA, Tok::const_, Tok::volatile_, Tok::static_});
const TokenList ProcBodyList =
    kTypeStart.With(StorageList)
        .With(kUnsupported)
        .With(kControl)
        .With(kExpressionStart)
        .With({Tok::typedef_, Tok::POUND, Tok::LSECONDBRACKET, Tok::SEMICOLON, Tok::return_, Tok::break_,
               Tok::continue_, Tok::delete_, Tok::dollar, Tok::IOBJECT, Tok::rtlbegin});
const TokenList BeginList =
    kTypeStart.With(StorageList)
        .With({Tok::typedef_, Tok::SEMICOLON, Tok::POUND, Tok::dollar, Tok::inline_, Tok::function_,
               Tok::subroutine_, Tok::template_, Tok::namespace_, Tok::using_});
const TokenList MorvBeginList =
    BeginList.With(kControl)
        .With(kExpressionStart)
        .With({Tok::LSECONDBRACKET, Tok::try_, Tok::throw_, Tok::IOBJECT, Tok::rtlbegin});
const TokenList OverloadableOperators = {
    Tok::PLUS,       Tok::PLUS_PLUS, Tok::MINUS, Tok::MINUS_MINUS, Tok::ASSIGN,   Tok::LEFTSHIFT,
    Tok::RIGHTSHIFT, Tok::STAR,      Tok::SLASH, Tok::DIV,         Tok::MOD,      Tok::BITAND,
    Tok::BITOR,      Tok::XOR,       Tok::TILDA, Tok::NOT,         Tok::EQ,       Tok::NE,
    Tok::LT,         Tok::GT,        Tok::LE,    Tok::GE,          Tok::AND,      Tok::OR,
    Tok::COMMA,      Tok::delete_,   Tok::new_,  Tok::LPAREN,      Tok::LBRACKET, Tok::POINTER};

namespace {

constexpr ReservedWord kReservedWords[] = {
#define RESERVED(name, text) {text, Tok::name},
#include "program/tokens.def"
};

constexpr ReservedWord kDirectives[] = {
    {"define", Tok::PREPROCESS_define},   {"undef", Tok::PREPROCESS_undef},
    {"ifndef", Tok::PREPROCESS_ifndef},   {"ifdef", Tok::PREPROCESS_ifdef},
    {"endif", Tok::PREPROCESS_endif},     {"else", Tok::PREPROCESS_else},
    {"elif", Tok::PREPROCESS_elif},       {"if", Tok::PREPROCESS_if},
    {"include", Tok::PREPROCESS_include}, {"line", Tok::PREPROCESS_line},
};

}  // namespace

std::span<const ReservedWord> ReservedWords() {
  return kReservedWords;
}

Tok PreProcessReserveWord(std::string_view word) {
  for (const ReservedWord& directive : kDirectives) {
    if (directive.text == word) return directive.token;
  }
  return Tok::NOTOKEN;
}

}  // namespace vorc
