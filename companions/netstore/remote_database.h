#pragma once

#include <memory>
#include <string>

#include "netstore/database.h"
#include "netstore/libpq.h"
#include "netstore/secret.h"

namespace vorc {

/// A session with a server that speaks PostgreSQL's protocol. "use NAME;" settles the database and
/// "login USER,PASSWORD;" opens the session; both may come again. A session that the server has closed is
/// opened anew at the next statement. There must be a Libpq.
class RemoteDatabase : public Database {
 public:
  /// `address` may list several hosts, with commas; the first that answers serves.
  RemoteDatabase(std::string address, std::string port);

  Outcome Run(std::string_view text, Rows& rows) override;

 private:
  struct Progress;
  struct Finish {
    void operator()(PGconn* connection) const;
  };

  Outcome Use(std::string_view name);
  Outcome LogIn(std::string_view user, std::string_view password);
  Outcome Connect();
  bool Revive(Outcome& outcome);
  Outcome Query(const std::string& text, Rows& rows);
  bool Await();
  void Cancel();
  void Take(const PGresult* result, Rows& rows, Progress& progress);
  void AddRow(const PGresult* row, Rows& rows, Progress& progress);
  void EndCopy(const PGresult* result);
  std::string Told(std::string text) const;

  std::string address_;
  std::string port_;
  std::string database_;
  std::string user_;
  Secret password_;
  std::unique_ptr<PGconn, Finish> connection_;
};

}  // namespace vorc
