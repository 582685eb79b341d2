#include "program/members.h"

#include "program/layout.h"
#include "program/name_table.h"

namespace vorc {

MemberResult FindStructMember(const C_SLOT& slot, const STRUCT_REC* owner, const Name* name) {
  MemberResult result;
  for (const Binding* at = slot.Index.Find(&owner->MembersHeader, name); at != nullptr; at = at->Next) {
    if (at->Kind == BindingKind::kSymbol) result.Symbol = static_cast<SYM_REC*>(at->Record);
    if (at->Kind == BindingKind::kFunction && !static_cast<FUNCPROTO_REC*>(at->Record)->PrototypeOnly)
      result.Function = static_cast<FUNCPROTO_REC*>(at->Record);
    if (!result) continue;
    result.Owner = owner;
    return result;
  }
  int32_t offset = 0;
  for (const PARENT_NODE* base : owner->Parents) {
    result = FindStructMember(slot, base->Struct, name);
    if (result) {
      result.BaseOffset += offset;
      result.ParentsPrivate |= base->Access == INHERITANCE_TYPE_PRIVATE;
      return result;
    }
    offset += GetObjectStructSize(base->Struct);
  }
  return {};
}

int32_t MemberDataOffset(const MemberResult& member) {
  return member.BaseOffset + member.Owner->ParentSize + member.Symbol->MemberOffset;
}

Reach MemberReach(const MemberResult& member, const STRUCT_REC* record, const FUNCPROTO_REC* from) {
  const MemberKind access =
      member.Symbol != nullptr ? member.Symbol->MemberType : member.Function->MemberType;
  const STRUCT_REC* home = from == nullptr ? nullptr : from->OwnerClass;
  if (home == member.Owner || FriendOfClass(from, member.Owner) || FriendOfClass(home, member.Owner))
    return Reach::kAllowed;
  if (access == MEMBER_TYPE_PRIVATE || (member.ParentsPrivate && home != record)) return Reach::kPrivate;
  const bool derived = home != nullptr && InheritsFrom(home, member.Owner);
  return access == MEMBER_TYPE_PROTECTED && !derived ? Reach::kProtected : Reach::kAllowed;
}

bool FriendOfClass(const FUNCPROTO_REC* function, const STRUCT_REC* owner) {
  if (function == nullptr) return false;
  for (const FRIEND_NODE* node : function->FriendOf) {
    if (node->Struct == owner) return true;
  }
  return false;
}

bool FriendOfClass(const STRUCT_REC* home, const STRUCT_REC* owner) {
  if (home == nullptr) return false;
  for (const FRIEND_NODE* node : owner->FriendClasses) {
    if (node->Struct == home) return true;
  }
  return false;
}

bool InheritsFrom(const STRUCT_REC* derived, const STRUCT_REC* base) {
  if (derived == base) return true;
  for (const PARENT_NODE* parent : derived->Parents) {
    if (InheritsFrom(parent->Struct, base)) return true;
  }
  return false;
}

}  // namespace vorc
