#pragma once

#include <cstdint>

#include "program/slot.h"

// Members of classes, through their bases, and who may reach them.

namespace vorc {

/// A member of a class or of one of its bases, with the offset of that base in the object.
struct MemberResult {
  SYM_REC* Symbol = nullptr;
  FUNCPROTO_REC* Function = nullptr;
  const STRUCT_REC* Owner = nullptr;
  int32_t BaseOffset = 0;
  bool ParentsPrivate = false;  ///< hidden by a private base

  explicit operator bool() const { return Symbol != nullptr || Function != nullptr; }
};

/// Own members first, then each base in order, depth first.
MemberResult FindStructMember(const C_SLOT& slot, const STRUCT_REC* owner, const Name* name);
/// Bytes from the start of the object in which a data member was found to the member.
int32_t MemberDataOffset(const MemberResult& member);

/// Why a member can't be reached.
enum class Reach : uint8_t { kAllowed, kPrivate, kProtected };
/// Whether code of function `from` (null at file level) may use a member that was found in `record`.
Reach MemberReach(const MemberResult& member, const STRUCT_REC* record, const FUNCPROTO_REC* from);

/// True if `function` (null at file level) is itself a friend of `owner`.
bool FriendOfClass(const FUNCPROTO_REC* function, const STRUCT_REC* owner);
/// True if all member functions of `home` are friends of `owner`.
bool FriendOfClass(const STRUCT_REC* home, const STRUCT_REC* owner);
/// True if `derived` is `base` or inherits from it by any road.
bool InheritsFrom(const STRUCT_REC* derived, const STRUCT_REC* base);

}  // namespace vorc
