#include "net/sql_bridge.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <strings.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "base/descriptor.h"
#include "base/trace.h"
#include "lib/sandbox.h"
#include "net/companion.h"

namespace vorc {

namespace {

constexpr const char* kLibrary = "libnstoredll.so.1";
constexpr int kConnectMs = 3000;
constexpr size_t kStatusSize = 256;
constexpr size_t kAddressLimit = 253;
constexpr size_t kPortLimit = 5;
constexpr size_t kNameLimit = 63;
constexpr size_t kPasswordLimit = 255;
constexpr size_t kTracedBytes = 14;

/// The entries of the client library. Objects, texts and results are all 64-bit values.
struct NetStore {
  using Text = const char*;
  int64_t (*CreateNetStoreInstance)() = nullptr;
  int64_t (*NoNetworkMode)(int64_t) = nullptr;
  int64_t (*DisableMessage)(int64_t) = nullptr;
  int64_t (*StartNetStore)(int64_t, Text, Text, Text) = nullptr;
  int64_t (*StopNetStore)(int64_t) = nullptr;
  int64_t (*DeleteInstance)(int64_t) = nullptr;
  int64_t (*NewObject)(int64_t) = nullptr;
  int64_t (*SetOwnerAccess)(int64_t) = nullptr;
  int64_t (*Exec)(int64_t, Text) = nullptr;
  Text (*Status)(int64_t) = nullptr;
  int64_t (*Next)(int64_t) = nullptr;
  int64_t (*Count)(int64_t) = nullptr;
  Text (*Data)(int64_t, Text) = nullptr;
  Text (*DataByFno)(int64_t, int64_t) = nullptr;
  int64_t (*FreeObject)(int64_t) = nullptr;
  /// Keeps an instance's files in a folder. A library may lack it.
  int64_t (*SetFileRoot)(int64_t, Text) = nullptr;

  /// The library, or null if it or one of its entries is missing.
  static const NetStore* Get() {
    static const NetStore library;
    return library.complete_ ? &library : nullptr;
  }

 private:
  NetStore() {
    void* library = OpenBesideProgram(kLibrary);
    if (library == nullptr) library = OpenCompanion(kLibrary);
    if (library == nullptr) return;
    complete_ = true;
    const auto find = [&](const char* name, auto& entry) {
      entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(dlsym(library, name));
      complete_ &= entry != nullptr;
    };
    find("NSTORE_CreateNetStoreInstance", CreateNetStoreInstance);
    find("NSTORE_NoNetworkMode", NoNetworkMode);
    find("NSTORE_DisableMessage", DisableMessage);
    find("NSTORE_StartNetStore", StartNetStore);
    find("NSTORE_StopNetStore", StopNetStore);
    find("NSTORE_DeleteInstance", DeleteInstance);
    find("NSTORE_NewObject", NewObject);
    find("NSTORE_SetOwnerAccess", SetOwnerAccess);
    find("NSTORE_Exec", Exec);
    find("NSTORE_Status", Status);
    find("NSTORE_Next", Next);
    find("NSTORE_Count", Count);
    find("NSTORE_Data", Data);
    find("NSTORE_DataByFno", DataByFno);
    find("NSTORE_FreeObject", FreeObject);
    SetFileRoot = reinterpret_cast<decltype(SetFileRoot)>(dlsym(library, "NSTORE_SetFileRoot"));
  }

  bool complete_ = false;
};

std::string OrEmpty(const char* text) {
  return text != nullptr ? text : "";
}

std::string StatusOf(const NetStore& store, int64_t object) {
  return OrEmpty(store.Status(object)).substr(0, kStatusSize - 1);
}

void Wipe(std::string& text) {
  explicit_bzero(text.data(), text.size());
  text.clear();
}

// A statement as far as it may be shown: a login without what stands behind its user.
std::string Shown(const std::string& sql) {
  constexpr std::string_view kLogin = "login";
  const size_t start = std::min(sql.find_first_not_of(" \t\r\n"), sql.size());
  const bool login = strncasecmp(sql.c_str() + start, kLogin.data(), kLogin.size()) == 0;
  return login ? sql.substr(0, sql.find(',')) : sql;
}

void TraceSql(const std::string& sql) {
  if (!TraceOn()) return;
  const std::string shown = Shown(sql);
  std::fprintf(stderr, "DIAG: sql len=%d [%s]\n", static_cast<int>(sql.size()), shown.c_str());
  for (const char byte : shown.substr(0, kTracedBytes)) {
    std::fprintf(stderr, "%02x ", static_cast<unsigned>(static_cast<unsigned char>(byte)));
  }
  std::fputc('\n', stderr);
}

// Puts a connection's database in force. True without one.
bool UseDatabase(const NetStore& store, int64_t object, const std::string& database) {
  if (database.empty()) return true;
  const std::string statement = "use " + database + ";";
  const int64_t done = store.Exec(object, statement.c_str());
  VORC_TRACE("DIAG: replay [%s] rc=%lld status=[%s]\n", statement.c_str(), static_cast<long long>(done),
             StatusOf(store, object).c_str());
  return done > 0;
}

bool CredentialsOk(const SqlBridge::Remote& remote) {
  return !remote.address.empty() && !remote.port.empty() && !remote.user.empty() &&
         MorvSqlCredentialOk(remote.address, kAddressLimit, true) &&
         MorvSqlCredentialOk(remote.port, kPortLimit, true) &&
         MorvSqlCredentialOk(remote.user, kNameLimit, false) &&
         MorvSqlCredentialOk(remote.password, kPasswordLimit, false) &&
         MorvSqlCredentialOk(remote.database, kNameLimit, false);
}

bool Accepts(const addrinfo& address) {
  const Descriptor descriptor(
      socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, address.ai_protocol));
  if (!descriptor) return false;
  if (connect(descriptor.get(), address.ai_addr, address.ai_addrlen) == 0) return true;
  if (errno != EINPROGRESS) return false;
  pollfd waiting{descriptor.get(), POLLOUT, 0};
  if (RetryInterrupted([&] { return poll(&waiting, 1, kConnectMs); }) != 1) return false;
  int error = 0;
  socklen_t size = sizeof error;
  return getsockopt(descriptor.get(), SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
}

}  // namespace

bool MorvSqlCredentialOk(std::string_view text, size_t limit, bool comma_allowed) {
  if (text.size() > limit) return false;
  return std::ranges::none_of(text, [=](unsigned char byte) {
    return byte < 32 || byte == 127 || byte == '\'' || byte == ';' || (byte == ',' && !comma_allowed);
  });
}

bool MorvSqlReachable(const std::string& address, const std::string& port) {
  if (const size_t comma = address.find(','); comma != std::string::npos) {
    return MorvSqlReachable(address.substr(0, comma), port) ||
           MorvSqlReachable(address.substr(comma + 1), port);
  }
  if (address.empty()) return false;
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (getaddrinfo(address.c_str(), port.c_str(), &hints, &found) != 0) return false;
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addresses(found, freeaddrinfo);
  for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
    if (Accepts(*each)) return true;
  }
  return false;
}

SqlBridge::~SqlBridge() {
  for (Entry& entry : entries_) Wipe(entry.login);
}

SqlBridge::Entry* SqlBridge::Find(int64_t handle) {
  if (handle < 1 || handle > static_cast<int64_t>(kEntries)) return nullptr;
  Entry& entry = entries_[static_cast<size_t>(handle - 1)];
  return entry.object == 0 ? nullptr : &entry;
}

int64_t SqlBridge::Register(Entry entry) {
  const auto place = std::ranges::find(entries_, 0, &Entry::object);
  if (place == entries_.end()) {
    Wipe(entry.login);
    return 0;
  }
  *place = std::move(entry);
  return place - entries_.begin() + 1;
}

void SqlBridge::Clear(Entry& entry) {
  Wipe(entry.login);
  entry = {};
}

int64_t SqlBridge::Connect(const std::string& home, const std::string& database) {
  const NetStore* store = NetStore::Get();
  if (store == nullptr) return 0;
  const int64_t instance = store->CreateNetStoreInstance();
  VORC_TRACE("DIAG: morv_sql_connect instance=%lld dbhome=%s\n", static_cast<long long>(instance),
             home.c_str());
  if (instance == 0) return 0;
  if (store->SetFileRoot != nullptr && MorvSandboxActive()) {
    store->SetFileRoot(instance, MorvSandboxRoot().c_str());
  }
  store->NoNetworkMode(instance);
  store->DisableMessage(instance);
  const int64_t start = store->StartNetStore(instance, home.c_str(), "", "");
  if (start == 0) return 0;
  Entry entry;
  entry.object = start;
  entry.database = database.substr(0, kNameLimit);
  entry.connection = true;
  const int64_t handle = Register(std::move(entry));
  if (handle == 0) store->DeleteInstance(start);
  return handle;
}

int64_t SqlBridge::LogIn(int64_t start, const Remote& remote) {
  const NetStore& store = *NetStore::Get();
  const int64_t object = store.NewObject(start);
  if (object == 0) return 0;
  bool done = UseDatabase(store, object, remote.database);
  if (done) {
    std::string statement;
    // One piece of memory, so that wiping it leaves no copy behind.
    statement.reserve(kNameLimit + kPasswordLimit + std::strlen("login ,;"));
    statement.append("login ").append(remote.user).append(",").append(remote.password).append(";");
    const int64_t result = store.Exec(object, statement.c_str());
    Wipe(statement);
    VORC_TRACE("DIAG: session login rc=%lld status=[%s]\n", static_cast<long long>(result),
               StatusOf(store, object).c_str());
    done = result > 0;
  }
  if (done) return object;
  store.FreeObject(object);
  return 0;
}

int64_t SqlBridge::ConnectRemote(const Remote& remote) {
  if (!CredentialsOk(remote) || !MorvSqlReachable(remote.address, remote.port)) return 0;
  const NetStore* store = NetStore::Get();
  if (store == nullptr) return 0;
  const int64_t instance = store->CreateNetStoreInstance();
  if (instance == 0) return 0;
  store->DisableMessage(instance);
  const int64_t start = store->StartNetStore(instance, nullptr, remote.address.c_str(), remote.port.c_str());
  if (start == 0) return 0;
  Entry entry;
  entry.object = start;
  entry.session = LogIn(start, remote);
  entry.database = remote.database;
  entry.connection = true;
  const int64_t session = entry.session;
  if (session != 0) {
    entry.login.reserve(kNameLimit + kPasswordLimit + 1);
    entry.login.append(remote.user).append(",").append(remote.password);
    if (const int64_t handle = Register(std::move(entry)); handle != 0) return handle;
    store->FreeObject(session);
  }
  store->StopNetStore(start);
  return 0;
}

// A fresh object that has run the statement, or 0.
int64_t SqlBridge::NewQuery(const Entry& connection, const std::string& sql) {
  const NetStore& store = *NetStore::Get();
  const int64_t object = store.NewObject(connection.object);
  if (object == 0) return 0;
  store.SetOwnerAccess(object);
  if (UseDatabase(store, object, connection.database)) store.Exec(object, sql.c_str());
  return object;
}

int64_t SqlBridge::Query(int64_t connection, const std::string& sql) {
  Entry* from = Find(connection);
  if (from == nullptr || !from->connection) return 0;
  const NetStore& store = *NetStore::Get();
  TraceSql(sql);
  Entry result;
  result.borrowed = from->session != 0;
  if (result.borrowed) {
    result.object = from->session;
    store.Exec(result.object, sql.c_str());
  } else {
    result.object = NewQuery(*from, sql);
  }
  if (result.object == 0) return 0;
  from->last_status = StatusOf(store, result.object);
  const int64_t object = result.object;
  const bool owned = !result.borrowed;
  const int64_t handle = Register(std::move(result));
  if (handle == 0 && owned) store.FreeObject(object);
  return handle;
}

bool SqlBridge::Next(int64_t result) {
  const Entry* entry = Find(result);
  return entry != nullptr && !entry->connection && NetStore::Get()->Next(entry->object) != 0;
}

int64_t SqlBridge::Count(int64_t result) {
  const Entry* entry = Find(result);
  return entry != nullptr && !entry->connection ? NetStore::Get()->Count(entry->object) : 0;
}

std::string SqlBridge::Get(int64_t result, const std::string& column) {
  const Entry* entry = Find(result);
  if (entry == nullptr || entry->connection) return "";
  return OrEmpty(NetStore::Get()->Data(entry->object, column.c_str()));
}

std::string SqlBridge::Get(int64_t result, int64_t column) {
  const Entry* entry = Find(result);
  if (entry == nullptr || entry->connection) return "";
  return OrEmpty(NetStore::Get()->DataByFno(entry->object, column));
}

std::string SqlBridge::Status(int64_t handle) {
  const Entry* entry = Find(handle);
  if (entry == nullptr) return "";
  return entry->connection ? entry->last_status : OrEmpty(NetStore::Get()->Status(entry->object));
}

void SqlBridge::Free(int64_t result) {
  Entry* entry = Find(result);
  if (entry == nullptr || entry->connection) return;
  if (!entry->borrowed) NetStore::Get()->FreeObject(entry->object);
  Clear(*entry);
}

void SqlBridge::Disconnect(int64_t connection) {
  Entry* entry = Find(connection);
  if (entry == nullptr || !entry->connection) return;
  const NetStore& store = *NetStore::Get();
  if (entry->session != 0) {
    // Results that share the session go with it.
    for (Entry& other : entries_) {
      if (other.borrowed && other.object == entry->session) Clear(other);
    }
    store.FreeObject(entry->session);
    store.StopNetStore(entry->object);
  } else {
    store.DeleteInstance(entry->object);
  }
  Clear(*entry);
}

}  // namespace vorc
