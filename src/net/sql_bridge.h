#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vorc {

/// True if the text is no longer than `limit` bytes and can't break out of a statement that names it.
bool MorvSqlCredentialOk(std::string_view text, size_t limit, bool comma_allowed);

/// True if something accepts connections there, asked for at most three seconds an address. `address` may
/// list several hosts, with commas.
bool MorvSqlReachable(const std::string& address, const std::string& port);

/// Connections to databases and results of queries, by handles from 1 to 512 that both share. The
/// client library is opened at the first connect; without it, every answer is the empty one.
class SqlBridge {
 public:
  static constexpr size_t kEntries = 512;

  struct Remote {
    std::string address;
    std::string port;
    std::string user;
    std::string password;
    std::string database;
  };

  SqlBridge() = default;
  SqlBridge(const SqlBridge&) = delete;
  SqlBridge& operator=(const SqlBridge&) = delete;
  ~SqlBridge();

  /// A handle, or 0. Texts that could break a statement are refused before anything is asked.
  int64_t Connect(const std::string& home, const std::string& database);
  int64_t ConnectRemote(const Remote& remote);
  /// A handle of a result, or 0.
  int64_t Query(int64_t connection, const std::string& sql);
  bool Next(int64_t result);
  int64_t Count(int64_t result);
  std::string Get(int64_t result, const std::string& column);
  std::string Get(int64_t result, int64_t column);
  std::string Status(int64_t handle);
  void Free(int64_t result);
  void Disconnect(int64_t connection);

 private:
  struct Entry {
    int64_t object = 0;
    std::string database;
    std::string login;  ///< user and password, wiped when the entry is cleared
    int64_t session = 0;
    bool borrowed = false;  ///< the object is a connection's session
    bool connection = false;
    std::string last_status;
  };

  Entry* Find(int64_t handle);
  int64_t Register(Entry entry);
  void Clear(Entry& entry);
  int64_t LogIn(int64_t start, const Remote& remote);
  int64_t NewQuery(const Entry& connection, const std::string& sql);

  std::array<Entry, kEntries> entries_;
};

}  // namespace vorc
