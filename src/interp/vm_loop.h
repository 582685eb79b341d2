#pragma once

#include <cstdint>

// How the register machine's loop reads its operands and goes from one instruction to the next.

namespace vorc::machine {

/// A number wherever it lies, whatever else has been stored there.
template <typename T>
struct [[gnu::packed, gnu::may_alias]] Anywhere {
  T value;
};

inline int32_t Wrap(uint32_t value) {
  return static_cast<int32_t>(value);
}

inline uint32_t Unsigned(int32_t value) {
  return static_cast<uint32_t>(value);
}

inline int32_t Quotient(int32_t a, int32_t b) {
  return b == -1 ? Wrap(0U - Unsigned(a)) : a / b;
}

inline int32_t Remainder(int32_t a, int32_t b) {
  return b == -1 ? 0 : a % b;
}

}  // namespace vorc::machine

#if defined(__GNUC__) && !defined(VORC_PLAIN_SWITCH)
#define VM_COMPUTED_GOTO 1
#else
#define VM_COMPUTED_GOTO 0
#endif

#define AT(type, address) (reinterpret_cast<Anywhere<type>*>(address)->value)
#define INT(x) AT(int32_t, fp + (x))
#define REAL(x) AT(double, fp + (x))
#define WORD(x) AT(int64_t, fp + (x))
#define POINTER(x) reinterpret_cast<char*>(WORD(x))
#define SITE sites[pc->d]

#if VM_COMPUTED_GOTO
#define OP(name) label_##name:
#define DISPATCH goto* kLabels[static_cast<size_t>(pc->op)]
#else
#define OP(name) case VmOp::k##name:
#define DISPATCH goto dispatch
#endif
#define NEXT  \
  do {        \
    ++pc;     \
    DISPATCH; \
  } while (false)
// An endless loop still ends when something else ends the run.
#define TAKE                    \
  do {                          \
    pc += pc->c;                \
    if (*errors > 0) goto stop; \
    DISPATCH;                   \
  } while (false)
#define JUMP_IF(condition) \
  do {                     \
    if (condition) TAKE;   \
    NEXT;                  \
  } while (false)
#define FAIL(site)                         \
  do {                                     \
    if ((site).fail < 0) goto stop;        \
    pc = code->insns.data() + (site).fail; \
    DISPATCH;                              \
  } while (false)
// What the general road needs to know of this one.
#define SYNC                                          \
  do {                                                \
    frame_.base = (fp - data) >> kWordShift;          \
    frame_.stack_pointer = (sp - data) >> kWordShift; \
    frame_.return_reg = ret;                          \
    record_top_ = record;                             \
  } while (false)

#define INT_OP(name, value) \
  OP(name) {                \
    INT(pc->a) = (value);   \
    NEXT;                   \
  }
#define REAL_OP(name, value) \
  OP(name) {                 \
    REAL(pc->a) = (value);   \
    NEXT;                    \
  }
// An element of an array that lies at `base`.
#define ELEMENT(name, base, action)                                                     \
  OP(name) {                                                                            \
    const Site& site = SITE;                                                            \
    const int64_t index = INT(pc->b);                                                   \
    if (static_cast<uint64_t>(index) >= static_cast<uint64_t>(site.length)) FAIL(site); \
    char* at = (base) + site.place + index * site.stride + site.offset;                 \
    action;                                                                             \
    NEXT;                                                                               \
  }
#define ELEMENT2(name, base, action)                                                 \
  OP(name) {                                                                         \
    const Site& site = SITE;                                                         \
    const int64_t i = INT(pc->b);                                                    \
    const int64_t k = INT(pc->c);                                                    \
    if (static_cast<uint64_t>(i) >= static_cast<uint64_t>(site.length) ||            \
        static_cast<uint64_t>(k) >= static_cast<uint64_t>(site.row))                 \
      FAIL(site);                                                                    \
    char* at = (base) + site.place + (i * site.row + k) * site.stride + site.offset; \
    action;                                                                          \
    NEXT;                                                                            \
  }
#define POINTED(name, action)                               \
  OP(name) {                                                \
    const Site& site = SITE;                                \
    char* at = PointedBy(site, POINTER(pc->c), INT(pc->b)); \
    if (at == nullptr) FAIL(site);                          \
    at += site.offset;                                      \
    action;                                                 \
    NEXT;                                                   \
  }
#define MEMBER(name, action)                                            \
  OP(name) {                                                            \
    const Site& site = SITE;                                            \
    char* at = POINTER(pc->b);                                          \
    if (!memory_.Reach(at, static_cast<size_t>(site.size))) FAIL(site); \
    at += pc->c;                                                        \
    action;                                                             \
    NEXT;                                                               \
  }
#define STORE_OP(name, action) \
  OP(name) {                   \
    action;                    \
    NEXT;                      \
  }
