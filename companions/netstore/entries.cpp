// The entries of the library. Objects go by numbers that are never used again; a number that stands for
// nothing, or for something else, gives the empty answer.
#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <unordered_map>

#include "netstore/store.h"

#define NSTORE_ENTRY __attribute__((visibility("default")))

namespace {

using vorc::Query;
using vorc::Store;

struct Instance {
  std::string root;
  bool local = false;
};

struct Object {
  int64_t store;
  std::unique_ptr<Query> query;
};

template <typename T>
using Table = std::unordered_map<int64_t, T>;

Table<Instance> instances;
Table<std::unique_ptr<Store>> stores;
Table<Object> objects;
int64_t last_number = 0;

template <typename T>
T* Find(Table<T>& table, int64_t number) {
  const auto found = table.find(number);
  return found == table.end() ? nullptr : &found->second;
}

template <typename T>
int64_t Add(Table<T>& table, T value) {
  table.emplace(++last_number, std::move(value));
  return last_number;
}

Query* QueryOf(int64_t number) {
  const Object* object = Find(objects, number);
  return object == nullptr ? nullptr : object->query.get();
}

// Nothing that is thrown, for want of memory, passes the library's border.
template <typename T, typename Work>
T Guarded(T failure, Work work) {
  try {
    return work();
  } catch (const std::exception&) {
    return failure;
  }
}

int64_t Close(int64_t number) {
  if (Find(stores, number) == nullptr) return 0;
  std::erase_if(objects, [=](const auto& each) { return each.second.store == number; });
  return static_cast<int64_t>(stores.erase(number));
}

}  // namespace

extern "C" {

NSTORE_ENTRY int64_t NSTORE_CreateNetStoreInstance() {
  return Guarded(int64_t{0}, [] { return Add(instances, Instance{}); });
}

/// Keeps all files of an instance below a folder: an absolute path without links.
NSTORE_ENTRY int64_t NSTORE_SetFileRoot(int64_t i, const char* root) {
  return Guarded(int64_t{0}, [=]() -> int64_t {
    Instance* instance = Find(instances, i);
    if (instance == nullptr || root == nullptr) return 0;
    instance->root = root;
    return 1;
  });
}

NSTORE_ENTRY int64_t NSTORE_NoNetworkMode(int64_t i) {
  Instance* instance = Find(instances, i);
  if (instance == nullptr) return 0;
  instance->local = true;
  return 1;
}

// The library never writes messages.
NSTORE_ENTRY int64_t NSTORE_DisableMessage(int64_t i) {
  return Find(instances, i) == nullptr ? 0 : 1;
}

NSTORE_ENTRY int64_t NSTORE_StartNetStore(int64_t i, const char* home, const char* address,
                                          const char* port) {
  return Guarded(int64_t{0}, [=]() -> int64_t {
    const auto entry = instances.extract(i);
    if (entry.empty()) return 0;
    const Instance& instance = entry.mapped();
    if (home == nullptr && (instance.local || address == nullptr || port == nullptr)) return 0;
    auto store = home != nullptr ? Store::Local(home, instance.root) : Store::Remote(address, port);
    if (store == nullptr) return 0;
    return Add(stores, std::move(store));
  });
}

NSTORE_ENTRY int64_t NSTORE_StopNetStore(int64_t s) {
  return Close(s);
}

NSTORE_ENTRY int64_t NSTORE_DeleteInstance(int64_t s) {
  return Close(s);
}

NSTORE_ENTRY int64_t NSTORE_NewObject(int64_t s) {
  return Guarded(int64_t{0}, [=]() -> int64_t {
    const auto* store = Find(stores, s);
    if (store == nullptr) return 0;
    return Add(objects, Object{s, std::make_unique<Query>(**store)});
  });
}

NSTORE_ENTRY int64_t NSTORE_SetOwnerAccess(int64_t o) {
  return QueryOf(o) == nullptr ? 0 : 1;
}

NSTORE_ENTRY int64_t NSTORE_Exec(int64_t o, const char* text) {
  return Guarded(int64_t{0}, [=]() -> int64_t {
    Query* query = QueryOf(o);
    return query != nullptr && text != nullptr && query->Run(text) ? 1 : 0;
  });
}

NSTORE_ENTRY const char* NSTORE_Status(int64_t o) {
  return Guarded<const char*>(nullptr, [=]() -> const char* {
    Query* query = QueryOf(o);
    return query == nullptr ? nullptr : query->Status();
  });
}

NSTORE_ENTRY int64_t NSTORE_Next(int64_t o) {
  Query* query = QueryOf(o);
  return query != nullptr && query->rows().Next() ? 1 : 0;
}

NSTORE_ENTRY int64_t NSTORE_Count(int64_t o) {
  Query* query = QueryOf(o);
  return query == nullptr ? 0 : static_cast<int64_t>(query->rows().Count());
}

NSTORE_ENTRY const char* NSTORE_Data(int64_t o, const char* name) {
  Query* query = QueryOf(o);
  return query == nullptr || name == nullptr ? nullptr : query->rows().Value(std::string_view(name));
}

NSTORE_ENTRY const char* NSTORE_DataByFno(int64_t o, int64_t number) {
  Query* query = QueryOf(o);
  return query == nullptr ? nullptr : query->rows().Value(number);
}

NSTORE_ENTRY int64_t NSTORE_FreeObject(int64_t o) {
  return static_cast<int64_t>(objects.erase(o));
}
}
