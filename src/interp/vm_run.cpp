#include <bit>
#include <cstring>

#include "base/truncate.h"
#include "interp/interpreter.h"
#include "interp/vm_loop.h"

// The register machine's loop. With compilers that can jump to a label's address every instruction
// jumps to the next one by itself, which the host's branch prediction likes; with others there is a
// plain `switch`.

namespace vorc {

using namespace machine;

bool Interpreter::RunCode(const FunctionCode& first) {
#if VM_COMPUTED_GOTO
  static const void* const kLabels[] = {
#define X(name, meaning) &&label_##name,
#include "interp/vm_instructions.def"
#undef X
  };
#endif
  constexpr int kWordShift = std::countr_zero(ScriptMemory::kWordSize);
  const volatile long* errors = &slot_.Display.ErrorCount;
  char* const data = memory_.stack();
  char* fp = Word(frame_.base);
  char* sp = Word(frame_.stack_pointer);
  int32_t ret = frame_.return_reg;
  CallRecord* const bottom = record_top_;
  CallRecord* record = bottom;
  char* const saved = save_top_;
  const FunctionCode* code = &first;
  const Site* sites = code->sites.data();
  const Insn* pc = code->insns.data();
  int32_t result = 0;
#if VM_COMPUTED_GOTO
  DISPATCH;
#else
dispatch:
  switch (pc->op) {
#endif

  INT_OP(MoveInt, INT(pc->b))
  INT_OP(ConstInt, pc->c)
  INT_OP(AddInt, Wrap(Unsigned(INT(pc->b)) + Unsigned(INT(pc->c))))
  INT_OP(SubInt, Wrap(Unsigned(INT(pc->b)) - Unsigned(INT(pc->c))))
  INT_OP(MulInt, Wrap(Unsigned(INT(pc->b)) * Unsigned(INT(pc->c))))
  OP(DivInt) {
    const int32_t b = INT(pc->c);
    if (b == 0) goto zero_divisor;
    INT(pc->a) = Quotient(INT(pc->b), b);
    NEXT;
  }
  OP(ModInt) {
    const int32_t b = INT(pc->c);
    if (b == 0) goto zero_divisor;
    INT(pc->a) = Remainder(INT(pc->b), b);
    NEXT;
  }
  INT_OP(AndInt, INT(pc->b) & INT(pc->c))
  INT_OP(OrInt, INT(pc->b) | INT(pc->c))
  INT_OP(XorInt, INT(pc->b) ^ INT(pc->c))
  INT_OP(ShlInt, Wrap(Unsigned(INT(pc->b)) << (INT(pc->c) & 31)))
  INT_OP(ShrInt, INT(pc->b) >> (INT(pc->c) & 31))
  INT_OP(AddImm, Wrap(Unsigned(INT(pc->b)) + Unsigned(pc->c)))
  INT_OP(MulImm, Wrap(Unsigned(INT(pc->b)) * Unsigned(pc->c)))
  INT_OP(DivImm, Quotient(INT(pc->b), pc->c))
  INT_OP(ModImm, Remainder(INT(pc->b), pc->c))
  OP(ModMask) {
    const int32_t b = INT(pc->b);
    const int32_t low = (b >> 31) & pc->c;  // what takes a negative number to the rest with its own sign
    INT(pc->a) = (Wrap(Unsigned(b) + Unsigned(low)) & pc->c) - low;
    NEXT;
  }
  INT_OP(AndImm, INT(pc->b) & pc->c)
  INT_OP(OrImm, INT(pc->b) | pc->c)
  INT_OP(XorImm, INT(pc->b) ^ pc->c)
  INT_OP(ShlImm, Wrap(Unsigned(INT(pc->b)) << (pc->c & 31)))
  INT_OP(ShrImm, INT(pc->b) >> (pc->c & 31))
  INT_OP(NegInt, Wrap(0U - Unsigned(INT(pc->b))))
  INT_OP(NotInt, INT(pc->b) == 0)
  INT_OP(NotWord, WORD(pc->b) == 0)
  INT_OP(InvInt, ~INT(pc->b))
  INT_OP(LtInt, INT(pc->b) < INT(pc->c))
  INT_OP(LeInt, INT(pc->b) <= INT(pc->c))
  INT_OP(EqInt, INT(pc->b) == INT(pc->c))
  INT_OP(NeInt, INT(pc->b) != INT(pc->c))
  INT_OP(BothTrue, INT(pc->b) != 0 && INT(pc->c) != 0)
  INT_OP(OneTrue, INT(pc->b) != 0 || INT(pc->c) != 0)
  INT_OP(SignByte, static_cast<int8_t>(INT(pc->b)))
  INT_OP(SignHalf, static_cast<int16_t>(INT(pc->b)))

  REAL_OP(MoveReal, REAL(pc->b))
  REAL_OP(ConstReal, SITE.real)
  REAL_OP(AddReal, REAL(pc->b) + REAL(pc->c))
  REAL_OP(SubReal, REAL(pc->b) - REAL(pc->c))
  REAL_OP(MulReal, REAL(pc->b) * REAL(pc->c))
  OP(DivReal) {
    const double b = REAL(pc->c);
    if (b == 0.0) goto zero_divisor;
    REAL(pc->a) = REAL(pc->b) / b;
    NEXT;
  }
  REAL_OP(QuotReal, REAL(pc->b) / REAL(pc->c))
  REAL_OP(AddRealConst, REAL(pc->b) + SITE.real)
  REAL_OP(SubRealConst, REAL(pc->b) - SITE.real)
  REAL_OP(MulRealConst, REAL(pc->b) * SITE.real)
  REAL_OP(DivRealConst, REAL(pc->b) / SITE.real)
  REAL_OP(NegReal, -REAL(pc->b))
  INT_OP(LtReal, REAL(pc->b) < REAL(pc->c))
  INT_OP(LeReal, REAL(pc->b) <= REAL(pc->c))
  INT_OP(EqReal, REAL(pc->b) == REAL(pc->c))
  INT_OP(NeReal, REAL(pc->b) != REAL(pc->c))
  INT_OP(RealTruth, REAL(pc->b) != 0.0)
  REAL_OP(IntToReal, static_cast<double>(INT(pc->b)))
  INT_OP(RealToInt, static_cast<int32_t>(TruncatedToInteger(REAL(pc->b))))

  OP(Jump) TAKE;
  OP(JumpLt) JUMP_IF(INT(pc->a) < INT(pc->b));
  OP(JumpLe) JUMP_IF(INT(pc->a) <= INT(pc->b));
  OP(JumpEq) JUMP_IF(INT(pc->a) == INT(pc->b));
  OP(JumpNe) JUMP_IF(INT(pc->a) != INT(pc->b));
  OP(JumpLtImm) JUMP_IF(INT(pc->a) < pc->b);
  OP(JumpLeImm) JUMP_IF(INT(pc->a) <= pc->b);
  OP(JumpGtImm) JUMP_IF(INT(pc->a) > pc->b);
  OP(JumpGeImm) JUMP_IF(INT(pc->a) >= pc->b);
  OP(JumpEqImm) JUMP_IF(INT(pc->a) == pc->b);
  OP(JumpNeImm) JUMP_IF(INT(pc->a) != pc->b);
  OP(JumpLtReal) JUMP_IF(REAL(pc->a) < REAL(pc->b));
  OP(JumpLeReal) JUMP_IF(REAL(pc->a) <= REAL(pc->b));
  OP(JumpEqReal) JUMP_IF(REAL(pc->a) == REAL(pc->b));
  OP(JumpNeReal) JUMP_IF(REAL(pc->a) != REAL(pc->b));
  OP(JumpNotLtReal) JUMP_IF(!(REAL(pc->a) < REAL(pc->b)));
  OP(JumpNotLeReal) JUMP_IF(!(REAL(pc->a) <= REAL(pc->b)));
#define LOOP(name, condition)                                                                \
  OP(name) {                                                                                 \
    const int32_t next = Wrap(Unsigned(INT(pc->a)) + Unsigned(static_cast<int16_t>(pc->d))); \
    INT(pc->a) = next;                                                                       \
    JUMP_IF(condition);                                                                      \
  }
  LOOP(LoopLt, next < INT(pc->b))
  LOOP(LoopLe, next <= INT(pc->b))
  LOOP(LoopLtImm, next < pc->b)
  LOOP(LoopLeImm, next <= pc->b)
  OP(Switch) {
    pc = code->insns.data() + CaseOf(code->tables[static_cast<size_t>(pc->c)], INT(pc->a));
    DISPATCH;
  }

  INT_OP(LoadByte, AT(unsigned char, fp + pc->b))
  INT_OP(LoadHalf, AT(uint16_t, fp + pc->b))
  REAL_OP(LoadFloat, static_cast<double>(AT(float, fp + pc->b)))
  STORE_OP(MoveWord, WORD(pc->a) = WORD(pc->b))
  STORE_OP(StoreByte, AT(unsigned char, fp + pc->a) = static_cast<unsigned char>(INT(pc->b)))
  STORE_OP(StoreHalf, AT(uint16_t, fp + pc->a) = static_cast<uint16_t>(INT(pc->b)))
  STORE_OP(StoreFloat, AT(float, fp + pc->a) = static_cast<float>(REAL(pc->b)))
  INT_OP(LoadDataInt, AT(int32_t, data + pc->b))
  INT_OP(LoadDataByte, AT(unsigned char, data + pc->b))
  INT_OP(LoadDataHalf, AT(uint16_t, data + pc->b))
  REAL_OP(LoadDataReal, AT(double, data + pc->b))
  REAL_OP(LoadDataFloat, static_cast<double>(AT(float, data + pc->b)))
  STORE_OP(LoadDataWord, WORD(pc->a) = AT(int64_t, data + pc->b))
  STORE_OP(StoreDataInt, AT(int32_t, data + pc->a) = INT(pc->b))
  STORE_OP(StoreDataByte, AT(unsigned char, data + pc->a) = static_cast<unsigned char>(INT(pc->b)))
  STORE_OP(StoreDataHalf, AT(uint16_t, data + pc->a) = static_cast<uint16_t>(INT(pc->b)))
  STORE_OP(StoreDataReal, AT(double, data + pc->a) = REAL(pc->b))
  STORE_OP(StoreDataFloat, AT(float, data + pc->a) = static_cast<float>(REAL(pc->b)))
  STORE_OP(StoreDataWord, AT(int64_t, data + pc->a) = WORD(pc->b))

  OP(GuardInt) {
    const Tok holds = SITE.state->holds;
    if (holds == Tok::STRING || holds == Tok::double_) FAIL(SITE);
    NEXT;
  }
  OP(GuardReal) {
    if (SITE.state->holds != Tok::double_) FAIL(SITE);
    NEXT;
  }
  OP(StoreTypelessInt) {
    WORD(pc->a) = INT(pc->b);
    SITE.state->holds = static_cast<Tok>(pc->c);
    NEXT;
  }
  OP(AddTypeless) {
    WORD(pc->a) = Wrap(Unsigned(INT(pc->b)) + Unsigned(INT(pc->c)));
    SITE.state->holds = Tok::int_;
    NEXT;
  }
  OP(AddTypelessImm) {
    WORD(pc->a) = Wrap(Unsigned(INT(pc->b)) + Unsigned(pc->c));
    SITE.state->holds = Tok::int_;
    NEXT;
  }
  OP(StoreTypelessWord) {
    WORD(pc->a) = WORD(pc->b);
    SITE.state->holds = static_cast<Tok>(pc->c);
    NEXT;
  }
  OP(StoreTypelessText) {
    StoreText(SITE, fp + pc->a, reinterpret_cast<const char*>(WORD(pc->b)));
    if (*errors > 0) goto stop;
    NEXT;
  }
  STORE_OP(AddWord, WORD(pc->a) = static_cast<int64_t>(static_cast<uint64_t>(WORD(pc->a)) +
                                                       static_cast<uint64_t>(int64_t{pc->c})))

  ELEMENT(LoadElementInt, fp, INT(pc->a) = AT(int32_t, at))
  ELEMENT(LoadElementByte, fp, INT(pc->a) = AT(unsigned char, at))
  ELEMENT(LoadElementReal, fp, REAL(pc->a) = AT(double, at))
  ELEMENT(LoadDataElementInt, data, INT(pc->a) = AT(int32_t, at))
  ELEMENT(LoadDataElementByte, data, INT(pc->a) = AT(unsigned char, at))
  ELEMENT(LoadDataElementReal, data, REAL(pc->a) = AT(double, at))
  ELEMENT(StoreElementInt, fp, AT(int32_t, at) = INT(pc->a))
  ELEMENT(StoreElementByte, fp, AT(unsigned char, at) = static_cast<unsigned char>(INT(pc->a)))
  ELEMENT(StoreElementReal, fp, AT(double, at) = REAL(pc->a))
  ELEMENT(StoreDataElementInt, data, AT(int32_t, at) = INT(pc->a))
  ELEMENT(StoreDataElementByte, data, AT(unsigned char, at) = static_cast<unsigned char>(INT(pc->a)))
  ELEMENT(StoreDataElementReal, data, AT(double, at) = REAL(pc->a))
  ELEMENT2(LoadElement2Int, fp, INT(pc->a) = AT(int32_t, at))
  ELEMENT2(LoadElement2Real, fp, REAL(pc->a) = AT(double, at))
  ELEMENT2(LoadDataElement2Int, data, INT(pc->a) = AT(int32_t, at))
  ELEMENT2(LoadDataElement2Real, data, REAL(pc->a) = AT(double, at))
  ELEMENT2(StoreElement2Int, fp, AT(int32_t, at) = INT(pc->a))
  ELEMENT2(StoreElement2Real, fp, AT(double, at) = REAL(pc->a))
  ELEMENT2(StoreDataElement2Int, data, AT(int32_t, at) = INT(pc->a))
  ELEMENT2(StoreDataElement2Real, data, AT(double, at) = REAL(pc->a))
  POINTED(LoadPointedInt, INT(pc->a) = AT(int32_t, at))
  POINTED(LoadPointedByte, INT(pc->a) = AT(unsigned char, at))
  POINTED(LoadPointedReal, REAL(pc->a) = AT(double, at))
  POINTED(StorePointedInt, AT(int32_t, at) = INT(pc->a))
  POINTED(StorePointedByte, AT(unsigned char, at) = static_cast<unsigned char>(INT(pc->a)))
  POINTED(StorePointedReal, AT(double, at) = REAL(pc->a))
  MEMBER(LoadMemberInt, INT(pc->a) = AT(int32_t, at))
  MEMBER(LoadMemberReal, REAL(pc->a) = AT(double, at))
  MEMBER(LoadMemberWord, WORD(pc->a) = AT(int64_t, at))
  MEMBER(StoreMemberInt, AT(int32_t, at) = INT(pc->a))
  MEMBER(StoreMemberReal, AT(double, at) = REAL(pc->a))
  MEMBER(StoreMemberWord, AT(int64_t, at) = WORD(pc->a))

  STORE_OP(FrameAddress, WORD(pc->a) = reinterpret_cast<int64_t>(fp + pc->b))
  STORE_OP(DataAddress, WORD(pc->a) = reinterpret_cast<int64_t>(data + pc->b))
  OP(ElementAddress) {
    const Site& site = SITE;
    const int32_t index = INT(pc->b);
    char* at = Displaced(POINTER(pc->c), index * int64_t{site.stride} + site.offset);
    if (static_cast<uint64_t>(int64_t{index}) >= static_cast<uint64_t>(site.length) &&
        (site.fail >= 0 || !ReportElement(site, index, at)))
      FAIL(site);
    WORD(pc->a) = reinterpret_cast<int64_t>(at);
    NEXT;
  }
  OP(PointerAddress) {
    const Site& site = SITE;
    char* at = POINTER(pc->b);
    if (!memory_.Reach(at, static_cast<size_t>(site.size))) {
      if (site.fail < 0) ReportPointer(site, at);
      FAIL(site);
    }
    WORD(pc->a) = reinterpret_cast<int64_t>(at);
    NEXT;
  }
  OP(PointedAddress) {
    const Site& site = SITE;
    char* at = PointedBy(site, POINTER(pc->c), INT(pc->b));
    if (at == nullptr) {
      if (site.fail < 0) ReportPointed(site, POINTER(pc->c), INT(pc->b));
      FAIL(site);
    }
    WORD(pc->a) = reinterpret_cast<int64_t>(at);
    NEXT;
  }
  INT_OP(LoadIntAt, AT(int32_t, POINTER(pc->b) + pc->c))
  INT_OP(LoadByteAt, AT(unsigned char, POINTER(pc->b) + pc->c))
  INT_OP(LoadHalfAt, AT(uint16_t, POINTER(pc->b) + pc->c))
  REAL_OP(LoadRealAt, AT(double, POINTER(pc->b) + pc->c))
  REAL_OP(LoadFloatAt, static_cast<double>(AT(float, POINTER(pc->b) + pc->c)))
  STORE_OP(LoadWordAt, WORD(pc->a) = AT(int64_t, POINTER(pc->b) + pc->c))
  STORE_OP(StoreIntAt, AT(int32_t, POINTER(pc->b) + pc->c) = INT(pc->a))
  STORE_OP(StoreByteAt, AT(unsigned char, POINTER(pc->b) + pc->c) = static_cast<unsigned char>(INT(pc->a)))
  STORE_OP(StoreHalfAt, AT(uint16_t, POINTER(pc->b) + pc->c) = static_cast<uint16_t>(INT(pc->a)))
  STORE_OP(StoreRealAt, AT(double, POINTER(pc->b) + pc->c) = REAL(pc->a))
  STORE_OP(StoreFloatAt, AT(float, POINTER(pc->b) + pc->c) = static_cast<float>(REAL(pc->a)))
  STORE_OP(StoreWordAt, AT(int64_t, POINTER(pc->b) + pc->c) = WORD(pc->a))
  OP(AddIntAt) {
    char* at = POINTER(pc->b) + pc->c;
    AT(int32_t, at) = Wrap(Unsigned(AT(int32_t, at)) + Unsigned(INT(pc->a)));
    NEXT;
  }

  STORE_OP(ArgInt, WORD(pc->a) = Unsigned(INT(pc->b)))
  STORE_OP(ArgAddImm, WORD(pc->a) = Unsigned(INT(pc->b)) + Unsigned(pc->c))
  STORE_OP(ArgConst, WORD(pc->a) = pc->c)
  STORE_OP(ArgByte, WORD(pc->a) = static_cast<unsigned char>(INT(pc->b)))
  STORE_OP(ArgHalf, WORD(pc->a) = static_cast<uint16_t>(INT(pc->b)))
  STORE_OP(ArgWord, WORD(pc->a) = WORD(pc->b))
  OP(ArgFloat) {
    const auto value = static_cast<float>(REAL(pc->b));
    WORD(pc->a) = 0;
    AT(float, fp + pc->a) = value;
    NEXT;
  }
  STORE_OP(BelowStack, AT(int64_t, sp + pc->c) = WORD(pc->b)) {
    char* base;
    OP(CallShared) {
      base = fp;
      goto call;
    }
    OP(CallBelow) {
      base = sp + pc->c;
      goto call;
    }
    OP(Call) {
      base = fp + pc->c;
      goto call;
    }
  call:
    FunctionCode* callee = SITE.callee;
    if (!callee->compiled) Compile(callee);
    char* free_end = (base == fp && pc->op == VmOp::kCallShared ? sp + pc->c : base) - callee->local_bytes;
    if (free_end < data || record == record_end_) {
      ReportFullStack(SITE);
      goto stop;
    }
    *record++ = {pc, code, fp, sp, ret};
    fp = base;
    sp = free_end;
    if (callee->walked) {
      SYNC;
      WalkBody(callee->function);
      if (*errors > 0) goto stop;
      result = ret = frame_.return_reg;
      goto leave;
    }
    code = callee;
    sites = code->sites.data();
    pc = code->insns.data();
    DISPATCH;
  }
  REAL_OP(TakeReal, return_reg_double_)
  OP(DropText) {
    if (return_reg_is_string_) RetainReturnedString(return_reg_string_);
    NEXT;
  }
  OP(SaveTemps) {
    if (!KeepTemps(fp, pc->c)) {
      ReportFullStack(Site());
      goto stop;
    }
    NEXT;
  }
  OP(RestoreTemps) {
    BringTempsBack(fp, pc->c);
    NEXT;
  }
  OP(ReturnInt) {
    result = INT(pc->a);
    return_reg_is_string_ = return_reg_is_double_ = false;
    goto leave;
  }
  OP(ReturnImm) {
    result = pc->c;
    return_reg_is_string_ = return_reg_is_double_ = false;
    goto leave;
  }
  OP(ReturnReal) {
    return_reg_double_ = REAL(pc->a);
    return_reg_is_string_ = false;
    return_reg_is_double_ = true;
    result = ret;
    goto leave;
  }
  OP(ReturnNothing) {
    return_reg_is_string_ = return_reg_is_double_ = false;
    result = ret;
    goto leave;
  }
  OP(ResultInt) {
    ret = INT(pc->a);
    return_reg_is_string_ = return_reg_is_double_ = false;
    NEXT;
  }
  OP(ResultReal) {
    return_reg_double_ = REAL(pc->a);
    return_reg_is_string_ = false;
    return_reg_is_double_ = true;
    NEXT;
  }
  OP(ResultNothing) {
    return_reg_is_string_ = return_reg_is_double_ = false;
    NEXT;
  }
  OP(Leave) {
    result = ret;
    goto leave;
  }
leave:
  if (record == bottom) {
    frame_.return_reg = result;
    record_top_ = bottom;
    return true;
  }
  --record;
  pc = record->pc;
  code = record->code;
  sites = code->sites.data();
  fp = record->fp;
  sp = record->sp;
  ret = record->ret;
  INT(pc->a) = result;
  NEXT;

  OP(General) {
    SYNC;
    if (!RunGeneral(SITE)) goto stop;
    NEXT;
  }
  OP(GeneralLow) {
    SYNC;
    if (!RunGeneralLow(SITE, &result)) goto stop;
    INT(pc->a) = result;
    NEXT;
  }
  OP(GeneralReturn) {
    SYNC;
    if (!RunGeneralReturn(SITE)) goto stop;
    ret = frame_.return_reg;
    NEXT;
  }
  OP(Statement) {
    SYNC;
    if (!ExecStatement(SITE.statement)) goto stop;
    NEXT;
  }
  OP(Builtin) {
    BuiltinSite& site = *SITE.builtin;
    const Called called = RunBuiltinSite(site, fp, fp + pc->a);
    if (called == Called::kFailed) goto stop;
    if (called == Called::kNotYet) {
      SYNC;
      if (!RunBuiltinSlowly(site, fp, fp + pc->a)) goto stop;
    }
    NEXT;
  }
  OP(SetState) {
    exec_states_[pc->b] = static_cast<uint8_t>(pc->d);
    NEXT;
  }
  OP(JumpState) JUMP_IF((pc->d >> exec_states_[pc->b] & 1) != 0);
#if !VM_COMPUTED_GOTO
}
#endif

zero_divisor : if (SITE.fail < 0) Fail(SITE.op->node, "Division by zero");
FAIL(SITE);

stop : record_top_ = bottom;
save_top_ = saved;
return false;
}

}  // namespace vorc
