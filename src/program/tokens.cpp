#include "program/tokens.h"

namespace vorc {

const std::array<std::string_view, kTokenCount> TokenString = {
#define TOKEN(name, text) text,
#include "program/tokens.def"
#undef TOKEN
};

const TokenList SizeNamedTypeList = {Tok::INT16,  Tok::UINT16, Tok::INT32,   Tok::UINT32, Tok::INT64,
                                     Tok::UINT64, Tok::INT128, Tok::UINT128, Tok::INT8,   Tok::UINT8,
                                     Tok::INT4,   Tok::UINT4,  Tok::INT256,  Tok::UINT256};

const TokenList BasicTypeList = SizeNamedTypeList.With(
    {Tok::float_, Tok::double_, Tok::longdouble, Tok::char_, Tok::unsigned_, Tok::long_, Tok::int_,
     Tok::short_, Tok::BIT, Tok::UCHAR, Tok::bool_, Tok::wchar_t_});

const TokenList StorageList = {Tok::const_,    Tok::volatile_, Tok::static_,
                               Tok::register_, Tok::auto_,     Tok::extern_};

namespace {

const TokenList kTagList = {Tok::struct_, Tok::class_, Tok::union_};
const TokenList kTypeStart = BasicTypeList.With(kTagList).With({Tok::void_, Tok::enum_, Tok::IDENTIFIER});
const TokenList kUnsupported = {Tok::try_, Tok::throw_, Tok::template_, Tok::using_, Tok::namespace_};
const TokenList kExpressionStart = {Tok::LPAREN, Tok::STAR, Tok::PLUS_PLUS, Tok::MINUS_MINUS, Tok::this_};
const TokenList kControl = {Tok::for_, Tok::while_, Tok::switch_, Tok::do_, Tok::goto_, Tok::if_};

}  // namespace

const TokenList EofList = {Tok::END_OF_FILE};
const TokenList EndOfStatement = {Tok::SEMICOLON};
const TokenList EofProcList = {Tok::RSECONDBRACKET};
const TokenList EofStructList = {Tok::RSECONDBRACKET};
const TokenList DollarListAndFunctionList = {Tok::dollar, Tok::function_, Tok::subroutine_};
const TokenList FuncArgDelemeterList = {Tok::COMMA, Tok::RPAREN};
const TokenList ValidVarList = {Tok::STAR, Tok::IDENTIFIER, Tok::LPAREN};
const TokenList ValidBitFieldType = {Tok::int_, Tok::long_, Tok::INT32};
const TokenList ValidInitlializerList = {
    Tok::BITAND,  Tok::IDENTIFIER, Tok::SINGLEQUOTE, Tok::NUMBER, Tok::HEXNUMBER, Tok::REAL_NUMBER,
    Tok::sizeof_, Tok::LPAREN,     Tok::PLUS,        Tok::MINUS,  Tok::STRING,    Tok::LSECONDBRACKET,
    Tok::TILDA,   Tok::NOT,        Tok::STAR,        Tok::this_};
const TokenList SizeofList = BasicTypeList.With({Tok::IDENTIFIER});
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
    {"for", Tok::for_},
    {"do", Tok::do_},
    {"while", Tok::while_},
    {"if", Tok::if_},
    {"else", Tok::else_},
    {"typedef", Tok::typedef_},
    {"union", Tok::union_},
    {"struct", Tok::struct_},
    {"class", Tok::class_},
    {"enum", Tok::enum_},
    {"INT16", Tok::INT16},
    {"UINT16", Tok::UINT16},
    {"INT32", Tok::INT32},
    {"UINT32", Tok::UINT32},
    {"INT64", Tok::INT64},
    {"UINT64", Tok::UINT64},
    {"float", Tok::float_},
    {"double", Tok::double_},
    {"longdouble", Tok::longdouble},
    {"char", Tok::char_},
    {"static", Tok::static_},
    {"sizeof", Tok::sizeof_},
    {"unsigned", Tok::unsigned_},
    {"long", Tok::long_},
    {"int", Tok::int_},
    {"short", Tok::short_},
    {"void", Tok::void_},
    {"const", Tok::const_},
    {"register", Tok::register_},
    {"volatile", Tok::volatile_},
    {"switch", Tok::switch_},
    {"case", Tok::case_},
    {"INT128", Tok::INT128},
    {"UINT128", Tok::UINT128},
    {"goto", Tok::goto_},
    {"continue", Tok::continue_},
    {"default", Tok::default_},
    {"break", Tok::break_},
    {"public", Tok::public_},
    {"private", Tok::private_},
    {"protected", Tok::protected_},
    {"friend", Tok::friend_},
    {"operator", Tok::operator_},
    {"new", Tok::new_},
    {"delete", Tok::delete_},
    {"virtual", Tok::virtual_},
    {"INT8", Tok::INT8},
    {"UINT8", Tok::UINT8},
    {"INT4", Tok::INT4},
    {"UINT4", Tok::UINT4},
    {"INT256", Tok::INT256},
    {"UINT256", Tok::UINT256},
    {"BIT", Tok::BIT},
    {"UCHAR", Tok::UCHAR},
    {"auto", Tok::auto_},
    {"extern", Tok::extern_},
    {"return", Tok::return_},
    {"function", Tok::function_},
    {"subroutine", Tok::subroutine_},
    {"this", Tok::this_},
    {"inline", Tok::inline_},
    {"bool", Tok::bool_},
    {"true", Tok::true_},
    {"false", Tok::false_},
    {"try", Tok::try_},
    {"catch", Tok::catch_},
    {"throw", Tok::throw_},
    {"namespace", Tok::namespace_},
    {"using", Tok::using_},
    {"template", Tok::template_},
    {"wchar_t", Tok::wchar_t_},
    {"cin", Tok::cin_},
    {"cout", Tok::cout_},
    {"IOBJECT", Tok::IOBJECT},
    {"rtlbegin", Tok::rtlbegin},
    {"rtlend", Tok::rtlend},
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
