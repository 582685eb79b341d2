#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "base/handle_table.h"
#include "builtins/bindings.h"
#include "builtins/list_handles.h"
#include "builtins/text_argument.h"
#include "lib/containers.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

// Each kind of object has its own numbering.
template <typename T>
HandleTable<T>& Objects(const BuiltinCall& call) {
  return call.runtime().State<HandleTable<T>>();
}

/// The object whose handle is the first argument, or null.
template <typename T>
T* Object(const BuiltinCall& call) {
  const std::optional<int32_t> handle = call.Int(0);
  return handle ? Objects<T>(call).Find(*handle) : nullptr;
}

template <typename T>
void ReturnNew(BuiltinCall& call) {
  call.ReturnInt(Objects<T>(call).Create());
}

template <typename T>
void ReturnCount(BuiltinCall& call) {
  const T* object = Object<T>(call);
  call.ReturnInt(object == nullptr ? -1 : static_cast<int32_t>(object->Count()));
}

/// The element of a list or tuple at the second argument's place, or empty text.
template <typename T>
void ReturnElement(BuiltinCall& call) {
  T* object = Object<T>(call);
  const std::optional<int32_t> index = call.Int(1);
  call.ReturnStoredText(object != nullptr && index ? object->Get(*index).value_or("") : "");
}

template <typename T>
bool FreeObject(const BuiltinCall& call) {
  const std::optional<int32_t> handle = call.Int(0);
  return handle && Objects<T>(call).Free(*handle);
}

void ReturnNewList(BuiltinCall& call, std::vector<std::string> items) {
  call.ReturnInt(NewListHandle(call, std::move(items)));
}

void MorvListNewBuiltin(BuiltinCall& call) {
  ReturnNew<TextList>(call);
}

void MorvListAddBuiltin(BuiltinCall& call) {
  TextList* list = Object<TextList>(call);
  const auto text = TextOrUnset(call, 1);
  call.ReturnInt(list != nullptr && text ? static_cast<int32_t>(list->Add(*text)) : -1);
}

void MorvListGetBuiltin(BuiltinCall& call) {
  ReturnElement<TextList>(call);
}

void MorvListCountBuiltin(BuiltinCall& call) {
  ReturnCount<TextList>(call);
}

void MorvListSortBuiltin(BuiltinCall& call) {
  if (TextList* list = Object<TextList>(call)) list->Sort();
  ReturnCount<TextList>(call);
}

void MorvListFreeBuiltin(BuiltinCall& call) {
  FreeObject<TextList>(call);
}

void MorvSplitBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto separator = TextOrUnset(call, 1);
  if (!text || !separator) return call.ReturnInt(0);
  ReturnNewList(call, SplitText(*text, *separator));
}

void MorvJoinBuiltin(BuiltinCall& call) {
  const TextList* list = Object<TextList>(call);
  const auto separator = TextOrUnset(call, 1);
  if (list == nullptr || !separator) return call.ReturnText("");
  call.ReturnText(list->Join(*separator, BuiltinCall::kTextLimit));
}

void MorvMapNewBuiltin(BuiltinCall& call) {
  ReturnNew<TextMap>(call);
}

void MorvMapSetBuiltin(BuiltinCall& call) {
  TextMap* map = Object<TextMap>(call);
  const auto key = call.Text(1);
  const auto value = TextOrUnset(call, 2);
  if (map == nullptr || !key || !value) return call.ReturnInt(0);
  map->Set(*key, *value);
  call.ReturnInt(1);
}

void MorvMapGetBuiltin(BuiltinCall& call) {
  const TextMap* map = Object<TextMap>(call);
  const auto key = call.Text(1);
  const std::string* value = map != nullptr && key ? map->Get(*key) : nullptr;
  call.ReturnText(value == nullptr ? std::string_view() : *value);
}

void MorvMapHasBuiltin(BuiltinCall& call) {
  const TextMap* map = Object<TextMap>(call);
  const auto key = call.Text(1);
  call.ReturnInt(map != nullptr && key && map->Has(*key) ? 1 : 0);
}

void MorvMapCountBuiltin(BuiltinCall& call) {
  ReturnCount<TextMap>(call);
}

void MorvMapKeysBuiltin(BuiltinCall& call) {
  const TextMap* map = Object<TextMap>(call);
  if (map == nullptr) return call.ReturnInt(0);
  ReturnNewList(call, map->Keys());
}

void MorvMapFreeBuiltin(BuiltinCall& call) {
  FreeObject<TextMap>(call);
}

void MorvMapDeleteBuiltin(BuiltinCall& call) {
  TextMap* map = Object<TextMap>(call);
  if (map == nullptr) return call.ReturnInt(-1);
  const auto key = call.Text(1);
  call.ReturnInt(key && map->Delete(*key) ? 1 : 0);
}

void MorvSetNewBuiltin(BuiltinCall& call) {
  ReturnNew<TextSet>(call);
}

void MorvSetAddBuiltin(BuiltinCall& call) {
  TextSet* set = Object<TextSet>(call);
  const auto text = call.Text(1);
  call.ReturnInt(set != nullptr && text ? static_cast<int32_t>(set->Add(*text)) : -1);
}

void MorvSetHasBuiltin(BuiltinCall& call) {
  const TextSet* set = Object<TextSet>(call);
  const auto text = call.Text(1);
  call.ReturnInt(set != nullptr && text && set->Has(*text) ? 1 : 0);
}

void MorvSetCountBuiltin(BuiltinCall& call) {
  ReturnCount<TextSet>(call);
}

void MorvSetRemoveBuiltin(BuiltinCall& call) {
  TextSet* set = Object<TextSet>(call);
  if (set == nullptr) return call.ReturnInt(-1);
  const auto text = call.Text(1);
  call.ReturnInt(text && set->Remove(*text) ? 1 : 0);
}

void MorvSetItemsBuiltin(BuiltinCall& call) {
  const TextSet* set = Object<TextSet>(call);
  if (set == nullptr) return call.ReturnInt(0);
  ReturnNewList(call, set->Items());
}

void MorvSetFreeBuiltin(BuiltinCall& call) {
  FreeObject<TextSet>(call);
}

void MorvTupleNewBuiltin(BuiltinCall& call) {
  ReturnNew<TextTuple>(call);
}

void MorvTupleAddBuiltin(BuiltinCall& call) {
  TextTuple* tuple = Object<TextTuple>(call);
  const auto text = call.Text(1);
  const std::optional<size_t> count = tuple != nullptr && text ? tuple->Add(*text) : std::nullopt;
  call.ReturnInt(count ? static_cast<int32_t>(*count) : -1);
}

void MorvTupleGetBuiltin(BuiltinCall& call) {
  ReturnElement<TextTuple>(call);
}

void MorvTupleCountBuiltin(BuiltinCall& call) {
  ReturnCount<TextTuple>(call);
}

void MorvTupleFreeBuiltin(BuiltinCall& call) {
  FreeObject<TextTuple>(call);
}

void MorvBinReadBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  std::optional<std::string> bytes = path ? MorvReadWholeFile(std::string(*path)) : std::nullopt;
  call.ReturnInt(bytes ? Objects<Blob>(call).Create(std::move(*bytes)) : 0);
}

void MorvBinSizeBuiltin(BuiltinCall& call) {
  const Blob* blob = Object<Blob>(call);
  call.ReturnInt(blob == nullptr ? -1 : static_cast<int32_t>(blob->Size()));
}

void MorvBinGetBuiltin(BuiltinCall& call) {
  const Blob* blob = Object<Blob>(call);
  const std::optional<int32_t> index = call.Int(1);
  call.ReturnInt(blob != nullptr && index ? blob->Byte(*index) : -1);
}

void MorvBinInt32Builtin(BuiltinCall& call) {
  const Blob* blob = Object<Blob>(call);
  const std::optional<int32_t> offset = call.Int(1);
  call.ReturnInt(blob != nullptr && offset ? blob->Int32(*offset) : 0);
}

void MorvBinFloatBuiltin(BuiltinCall& call) {
  const Blob* blob = Object<Blob>(call);
  const std::optional<int32_t> offset = call.Int(1);
  call.ReturnDouble(blob != nullptr && offset ? blob->Float(*offset) : 0.0);
}

void MorvBinFindBuiltin(BuiltinCall& call) {
  const Blob* blob = Object<Blob>(call);
  const auto text = call.Text(1);
  call.ReturnInt(blob != nullptr && text ? static_cast<int32_t>(blob->Find(*text)) : -1);
}

void MorvBinFreeBuiltin(BuiltinCall& call) {
  call.ReturnInt(FreeObject<Blob>(call) ? 1 : 0);
}

constexpr BuiltinBinding kBindings[] = {
    {"morv_list_new", MorvListNewBuiltin},
    {"morv_list_add", MorvListAddBuiltin},
    {"morv_list_get", MorvListGetBuiltin},
    {"morv_list_count", MorvListCountBuiltin},
    {"morv_list_sort", MorvListSortBuiltin},
    {"morv_list_free", MorvListFreeBuiltin},
    {"morv_split", MorvSplitBuiltin},
    {"morv_join", MorvJoinBuiltin},
    {"morv_map_new", MorvMapNewBuiltin},
    {"morv_map_set", MorvMapSetBuiltin},
    {"morv_map_get", MorvMapGetBuiltin},
    {"morv_map_has", MorvMapHasBuiltin},
    {"morv_map_count", MorvMapCountBuiltin},
    {"morv_map_keys", MorvMapKeysBuiltin},
    {"morv_map_free", MorvMapFreeBuiltin},
    {"morv_map_delete", MorvMapDeleteBuiltin},
    {"morv_dict_new", MorvMapNewBuiltin},
    {"morv_dict_set", MorvMapSetBuiltin},
    {"morv_dict_get", MorvMapGetBuiltin},
    {"morv_dict_has", MorvMapHasBuiltin},
    {"morv_dict_count", MorvMapCountBuiltin},
    {"morv_dict_keys", MorvMapKeysBuiltin},
    {"morv_dict_free", MorvMapFreeBuiltin},
    {"morv_dict_delete", MorvMapDeleteBuiltin},
    {"morv_set_new", MorvSetNewBuiltin},
    {"morv_set_add", MorvSetAddBuiltin},
    {"morv_set_has", MorvSetHasBuiltin},
    {"morv_set_count", MorvSetCountBuiltin},
    {"morv_set_remove", MorvSetRemoveBuiltin},
    {"morv_set_items", MorvSetItemsBuiltin},
    {"morv_set_free", MorvSetFreeBuiltin},
    {"morv_tuple_new", MorvTupleNewBuiltin},
    {"morv_tuple_add", MorvTupleAddBuiltin},
    {"morv_tuple_get", MorvTupleGetBuiltin},
    {"morv_tuple_count", MorvTupleCountBuiltin},
    {"morv_tuple_free", MorvTupleFreeBuiltin},
    {"morv_bin_read", MorvBinReadBuiltin},
    {"morv_bin_size", MorvBinSizeBuiltin},
    {"morv_bin_get", MorvBinGetBuiltin},
    {"morv_bin_int32", MorvBinInt32Builtin},
    {"morv_bin_float", MorvBinFloatBuiltin},
    {"morv_bin_find", MorvBinFindBuiltin},
    {"morv_bin_free", MorvBinFreeBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> ContainerBuiltins() {
  return kBindings;
}

}  // namespace vorc
