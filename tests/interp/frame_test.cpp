#include "interp/frame.h"

#include <gtest/gtest.h>

#include <memory>

#include "program/symtab.h"

namespace vorc {
namespace {

TEST(Frame, FirstParameterLiesHighestAndLocalsGoDown) {
  const auto slot = std::make_unique<C_SLOT>();
  TypeSpec type;
  type.BasicType = Tok::int_;
  FUNCPROTO_REC* f = InsertFuncName(*slot, &slot->Globals, slot->Names.Intern("f"), type);
  const auto declare = [&](SYMBOLS_HEADER* header, const char* name, Tok basic, int16_t depth) {
    TypeSpec own;
    own.BasicType = basic;
    own.PointerDepth = depth;
    return InsertVarName(*slot, header, slot->Names.Intern(name), own, header == &f->ParametersHeader);
  };
  const SYM_REC* a = declare(&f->ParametersHeader, "a", Tok::int_, 0);
  const SYM_REC* b = declare(&f->ParametersHeader, "b", Tok::char_, 0);
  const SYM_REC* c = declare(&f->ParametersHeader, "c", Tok::char_, 1);
  PROC_TABLE* body = AttachProcBody(*slot, f);
  declare(&body->LocalsHeader, "x", Tok::int_, 0);
  SYM_REC* y = declare(&body->LocalsHeader, "y", Tok::char_, 0);
  const int64_t three = 3;
  SetShape(*slot, y, &three, 1);
  const SYM_REC* z = declare(&NewCodeBlock(*slot, f, nullptr)->LocalsHeader, "z", Tok::int_, 0);
  PlaceParameters(*slot, f);
  EXPECT_EQ(a->FrameOffset, 9);
  EXPECT_EQ(b->FrameOffset, 8);
  EXPECT_EQ(c->FrameOffset, 0);
  EXPECT_EQ(body->ArgSize, 13);
  EXPECT_EQ(PlaceLocals(*slot, f), 11);
  EXPECT_EQ(y->FrameOffset, 7);
  EXPECT_EQ(z->FrameOffset, 11);
}

}  // namespace
}  // namespace vorc
