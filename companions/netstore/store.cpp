#include "netstore/store.h"

#include <limits.h>
#include <sys/stat.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "netstore/confinement.h"
#include "netstore/libpq.h"
#include "netstore/local_database.h"
#include "netstore/remote_database.h"
#include "netstore/statement.h"

namespace vorc {

namespace {

constexpr const char* kDefaultName = "main";
constexpr const char* kSuffix = ".sqlite";
constexpr mode_t kFolderMode = 0777;
// A note longer than this ends in dots.
constexpr size_t kNoteLimit = 200;

std::string WithoutSlashes(std::string path) {
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path;
}

// The folder's name without links; empty if it isn't one or can't be made.
std::string FolderAt(const std::string& path) {
  if (mkdir(path.c_str(), kFolderMode) != 0 && errno != EEXIST) return "";
  std::array<char, PATH_MAX> real{};
  struct stat status {};
  const bool found = realpath(path.c_str(), real.data()) != nullptr && stat(real.data(), &status) == 0;
  return found && S_ISDIR(status.st_mode) ? real.data() : "";
}

}  // namespace

std::unique_ptr<Store> Store::Local(const std::string& home, const std::string& root) {
  if (home.empty()) return nullptr;
  const std::string path = WithoutSlashes(home);
  struct stat status {};
  // Nothing is made outside; what is there already is judged by where it really is.
  if (!root.empty() && stat(path.c_str(), &status) != 0 && !IsConfined(root, path)) return nullptr;
  auto store = std::make_unique<Store>();
  store->home_ = FolderAt(path);
  store->root_ = root;
  if (store->home_.empty()) return nullptr;
  const std::string inside = store->home_ + "/x";
  return root.empty() || IsConfined(root, inside) ? std::move(store) : nullptr;
}

std::unique_ptr<Store> Store::Remote(std::string address, std::string port) {
  if (address.empty() || port.empty() || Libpq::Get() == nullptr) return nullptr;
  auto store = std::make_unique<Store>();
  store->address_ = std::move(address);
  store->port_ = std::move(port);
  return store;
}

Database* Store::Find(const std::string& name, std::string& status) {
  const std::string& used = name.empty() ? kDefaultName : name;
  if (const auto found = databases_.find(used); found != databases_.end()) return found->second.get();
  auto database = LocalDatabase::Open(home_ + "/" + used + kSuffix, root_, status);
  if (database == nullptr) return nullptr;
  return (databases_[used] = std::move(database)).get();
}

std::unique_ptr<Database> Store::NewSession() const {
  return std::make_unique<RemoteDatabase>(address_, port_);
}

Query::Query(Store& store) : store_(store), session_(store.IsLocal() ? nullptr : store.NewSession()) {}

Outcome Query::RunLocally(std::string_view text) {
  rows_.Clear();
  if (const auto name = UsedDatabase(text)) {
    if (!IsDatabaseName(*name)) return {false, Failure("no database can have this name")};
    database_ = *name;
    return {true, "Done."};
  }
  if (LoginOf(text)) return {true, "Done."};
  Outcome outcome;
  Database* database = store_.Find(database_, outcome.status);
  return database == nullptr ? outcome : database->Run(text, rows_);
}

bool Query::Run(const char* text) {
  Outcome outcome = session_ != nullptr ? session_->Run(text, rows_) : RunLocally(text);
  outcome_ = std::move(outcome.status);
  return outcome.done;
}

const char* Query::Status() {
  status_ = outcome_;
  std::string nulls = rows_.NullColumns();
  if (nulls.size() > kNoteLimit) nulls = nulls.substr(0, kNoteLimit) + "...";
  if (!nulls.empty()) status_ += " NULL in " + nulls + ".";
  return status_.c_str();
}

}  // namespace vorc
