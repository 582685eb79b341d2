#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

#include "netstore/database.h"

namespace vorc {

/// A database of SQLite in one file.
class LocalDatabase : public Database {
 public:
  /// Opens or creates the file. With a root, nothing outside of it is ever touched. Null with the reason
  /// in `status`.
  static std::unique_ptr<LocalDatabase> Open(const std::string& path, const std::string& root,
                                             std::string& status);

  Outcome Run(std::string_view text, Rows& rows) override;

 private:
  enum class Control { kNone, kBegin, kOther };
  using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

  explicit LocalDatabase(sqlite3* database) : database_(database, sqlite3_close_v2) {}
  void SetUp(bool confined);
  static int Authorize(void* self, int action, const char* first, const char* second, const char*,
                       const char*);
  static int Wait(void* self, int tries);

  void Note(int action, const char* table, const char* operation);
  Statement Prepare(std::string_view& text, bool& good);
  bool RunAll(std::string_view text, Rows& rows, std::string& problem);
  bool Step(sqlite3_stmt* statement, Rows& rows, std::string& problem);
  bool AddRow(sqlite3_stmt* statement, Rows& rows);
  void OpenBracket();
  bool CloseBracket(bool good, std::string& problem);
  bool Do(const char* statement);
  bool InTransaction() const { return sqlite3_get_autocommit(database_.get()) == 0; }
  std::string Problem() const;

  /// What holds the statements of one text together.
  enum class Bracket { kNone, kTransaction, kSavepoint };

  std::unique_ptr<sqlite3, decltype(&sqlite3_close_v2)> database_;
  bool confined_ = false;
  Bracket bracket_ = Bracket::kNone;
  Control control_ = Control::kNone;  ///< what the statement prepared last does to transactions
  bool changes_rows_ = false;
  bool changes_schema_ = false;
};

}  // namespace vorc
