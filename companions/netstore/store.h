#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

#include "netstore/database.h"

namespace vorc {

/// A connection as a script sees it: a folder of local databases, or a server.
class Store {
 public:
  /// A store of this machine; the folder is made if only it is missing. Null if it can't be one.
  static std::unique_ptr<Store> Local(const std::string& home, const std::string& root);
  /// A store of a server. Null without PostgreSQL's client library.
  static std::unique_ptr<Store> Remote(std::string address, std::string port);

  bool IsLocal() const { return !home_.empty(); }
  /// The local database of this name, which all queries of the store share. Null with the reason.
  Database* Find(const std::string& name, std::string& status);
  /// A session of its own with the server.
  std::unique_ptr<Database> NewSession() const;

 private:
  std::string home_;
  std::string root_;
  std::string address_;
  std::string port_;
  std::map<std::string, std::unique_ptr<Database>> databases_;
};

/// Where one query runs, and what came of it.
class Query {
 public:
  explicit Query(Store& store);

  bool Run(const char* text);
  /// How the last text ended, with a note of NULLs.
  const char* Status();
  Rows& rows() { return rows_; }

 private:
  Outcome RunLocally(std::string_view text);

  Store& store_;
  std::string database_;
  std::unique_ptr<Database> session_;
  Rows rows_;
  std::string outcome_;
  std::string status_;
};

}  // namespace vorc
