#include "netstore/local_database.h"

#include <cstring>
#include <utility>
#include <vector>

#include "netstore/confinement.h"
#include "netstore/interrupt.h"
#include "netstore/statement.h"

namespace vorc {

namespace {

constexpr int kWaitMs = 10;
constexpr int kWaits = 1000;  // ten seconds for another writer to finish

bool IsSchemaChange(int action) {
  switch (action) {
    case SQLITE_CREATE_INDEX:
    case SQLITE_CREATE_TABLE:
    case SQLITE_CREATE_TEMP_TABLE:
    case SQLITE_CREATE_VIEW:
    case SQLITE_CREATE_VTABLE:
    case SQLITE_DROP_INDEX:
    case SQLITE_DROP_TABLE:
    case SQLITE_DROP_TEMP_TABLE:
    case SQLITE_DROP_VIEW:
    case SQLITE_DROP_VTABLE:
    case SQLITE_ALTER_TABLE: return true;
    default: return false;
  }
}

bool IsRowChange(int action) {
  return action == SQLITE_INSERT || action == SQLITE_UPDATE || action == SQLITE_DELETE;
}

std::vector<std::string> ColumnsOf(sqlite3_stmt* statement) {
  std::vector<std::string> names;
  for (int i = 0; i < sqlite3_column_count(statement); ++i) {
    const char* name = sqlite3_column_name(statement, i);
    names.emplace_back(name != nullptr ? name : "");
  }
  return names;
}

}  // namespace

std::unique_ptr<LocalDatabase> LocalDatabase::Open(const std::string& path, const std::string& root,
                                                   std::string& status) {
  const char* system = root.empty() ? nullptr : ConfinedFileSystem(root);
  sqlite3* opened = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  const int result = sqlite3_open_v2(path.c_str(), &opened, flags, system);
  std::unique_ptr<LocalDatabase> database(new LocalDatabase(opened));
  if (result != SQLITE_OK) {
    status = Failure(opened != nullptr ? sqlite3_errmsg(opened) : "out of memory");
    return nullptr;
  }
  database->SetUp(!root.empty());
  return database;
}

// The same statements shall do the same on a server: references are kept to, and what stands in double
// quotes is a name.
void LocalDatabase::SetUp(bool confined) {
  sqlite3* database = database_.get();
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
  if (confined) {
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    Do("PRAGMA temp_store = MEMORY");
  }
  confined_ = confined;
  sqlite3_busy_handler(database, Wait, nullptr);
  sqlite3_set_authorizer(database, Authorize, this);
}

int LocalDatabase::Wait(void*, int tries) {
  if (RunningQuery::Interrupted() || tries >= kWaits) return 0;
  sqlite3_sleep(kWaitMs);
  return 1;
}

int LocalDatabase::Authorize(void* self, int action, const char* first, const char* second, const char*,
                             const char*) {
  auto* database = static_cast<LocalDatabase*>(self);
  database->Note(action, first, first);
  return database->confined_ && !ConfinedActionAllowed(action, first, second) ? SQLITE_DENY : SQLITE_OK;
}

void LocalDatabase::Note(int action, const char* table, const char* operation) {
  if (IsRowChange(action)) changes_rows_ |= table != nullptr && std::strncmp(table, "sqlite_", 7) != 0;
  changes_schema_ |= IsSchemaChange(action);
  if (action == SQLITE_SAVEPOINT) control_ = Control::kOther;
  if (action == SQLITE_TRANSACTION) {
    control_ = std::strcmp(operation, "BEGIN") == 0 ? Control::kBegin : Control::kOther;
  }
}

bool LocalDatabase::Do(const char* statement) {
  return sqlite3_exec(database_.get(), statement, nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::string LocalDatabase::Problem() const {
  if (RunningQuery::Interrupted()) return "interrupted";
  return sqlite3_errmsg(database_.get());
}

// Takes the first statement off the text. Null for a blank one.
LocalDatabase::Statement LocalDatabase::Prepare(std::string_view& text, bool& good) {
  control_ = Control::kNone;
  changes_rows_ = changes_schema_ = false;
  sqlite3_stmt* prepared = nullptr;
  const char* rest = nullptr;
  good = sqlite3_prepare_v3(database_.get(), text.data(), static_cast<int>(text.size()), 0, &prepared,
                            &rest) == SQLITE_OK;
  text.remove_prefix(good ? static_cast<size_t>(rest - text.data()) : text.size());
  return {prepared, sqlite3_finalize};
}

bool LocalDatabase::AddRow(sqlite3_stmt* statement, Rows& rows) {
  bool fits = true;
  for (int i = 0, count = sqlite3_data_count(statement); fits && i < count; ++i) {
    switch (sqlite3_column_type(statement, i)) {
      case SQLITE_NULL: fits = rows.AddNull(); break;
      case SQLITE_BLOB: {
        const void* bytes = sqlite3_column_blob(statement, i);
        fits = rows.AddHexadecimal(bytes, static_cast<size_t>(sqlite3_column_bytes(statement, i)));
        break;
      }
      default: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
        if (text == nullptr) return false;
        fits = rows.AddText({text, static_cast<size_t>(sqlite3_column_bytes(statement, i))});
      }
    }
  }
  return fits;
}

bool LocalDatabase::Step(sqlite3_stmt* statement, Rows& rows, std::string& problem) {
  if (sqlite3_column_count(statement) > 0) rows.Begin(ColumnsOf(statement));
  int result = SQLITE_ROW;
  while ((result = sqlite3_step(statement)) == SQLITE_ROW) {
    if (AddRow(statement, rows)) continue;
    problem = "the result is larger than 512 MiB";
    return false;
  }
  if (result == SQLITE_DONE) return true;
  problem = Problem();
  return false;
}

// Statements of one text stand or fall together, also within a transaction of the script's own.
void LocalDatabase::OpenBracket() {
  bracket_ = InTransaction() ? Bracket::kSavepoint : Bracket::kTransaction;
  const Control control = std::exchange(control_, Control::kNone);
  Do(bracket_ == Bracket::kSavepoint ? "SAVEPOINT vorc_text" : "BEGIN");
  control_ = control;
}

// Keeps or undoes what the text did. False with the problem if it can't be kept.
bool LocalDatabase::CloseBracket(bool good, std::string& problem) {
  const Bracket bracket = std::exchange(bracket_, Bracket::kNone);
  if (bracket == Bracket::kNone || !InTransaction()) return good;
  const bool nested = bracket == Bracket::kSavepoint;
  if (good && Do(nested ? "RELEASE vorc_text" : "COMMIT")) return true;
  if (good) problem = Problem();
  if (nested) Do("ROLLBACK TO vorc_text");
  Do(nested ? "RELEASE vorc_text" : "ROLLBACK");
  return false;
}

bool LocalDatabase::RunAll(std::string_view text, Rows& rows, std::string& problem) {
  for (bool first = true; !text.empty(); first = false) {
    bool good = false;
    const Statement statement = Prepare(text, good);
    if (!good) problem = Problem();
    if (!good) return false;
    if (statement == nullptr) continue;
    if (first && control_ == Control::kNone && HasStatement(text)) OpenBracket();
    if (control_ == Control::kBegin && bracket_ == Bracket::kTransaction) {
      // The text begins the transaction that it stands in already; from here on it is the script's.
      bracket_ = Bracket::kNone;
      continue;
    }
    if (!Step(statement.get(), rows, problem)) return false;
  }
  return true;
}

Outcome LocalDatabase::Run(std::string_view text, Rows& rows) {
  rows.Clear();
  const RunningQuery running(database_.get());
  const bool was_open = InTransaction();
  const int64_t before = sqlite3_total_changes64(database_.get());
  std::string problem;
  const bool run = RunAll(text, rows, problem);
  const bool counted = changes_rows_ && !changes_schema_;
  if (!CloseBracket(run, problem)) {
    rows.Clear();
    if (!was_open && InTransaction()) Do("ROLLBACK");
    return {false, Failure(problem)};
  }
  if (rows.HasColumns()) return {true, CountOfRows(static_cast<int64_t>(rows.Count())) + "."};
  const int64_t changed = sqlite3_total_changes64(database_.get()) - before;
  if (counted || changed > 0) return {true, CountOfRows(changed) + " changed."};
  return {true, "Done."};
}

}  // namespace vorc
