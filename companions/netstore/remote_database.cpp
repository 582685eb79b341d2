#include "netstore/remote_database.h"

#include <poll.h>

#include <array>
#include <cstdlib>
#include <utility>
#include <vector>

#include "netstore/interrupt.h"
#include "netstore/statement.h"

namespace vorc {

namespace {

constexpr const char* kConnectSeconds = "5";
constexpr int kPollMs = 100;
constexpr int kLastWords = 8;
constexpr Oid kBool = 16;
constexpr Oid kBytes = 17;

struct Clear {
  void operator()(PGresult* result) const { Libpq::Get()->PQclear(result); }
};
using Result = std::unique_ptr<PGresult, Clear>;

// Databases are made only where the library is.
const Libpq& Pq() {
  return *Libpq::Get();
}

std::vector<std::string> ColumnsOf(const PGresult* result) {
  std::vector<std::string> names;
  for (int i = 0; i < Pq().PQnfields(result); ++i) names.emplace_back(Pq().PQfname(result, i));
  return names;
}

// The short form of an error: without the statement's text, in which anything may stand.
std::string ErrorOf(const PGresult* result) {
  const char* primary = Pq().PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
  return primary != nullptr ? primary : Pq().PQresultErrorMessage(result);
}

bool Readable(int descriptor, int milliseconds) {
  pollfd waiting{descriptor, POLLIN, 0};
  return poll(&waiting, 1, milliseconds) > 0;
}

// Truth and bytes read as they do from a local database.
std::string_view ValueOf(const PGresult* row, int column) {
  const std::string_view value(Pq().PQgetvalue(row, 0, column),
                               static_cast<size_t>(Pq().PQgetlength(row, 0, column)));
  if (Pq().PQftype(row, column) == kBool) return value == "t" ? "1" : "0";
  if (Pq().PQftype(row, column) == kBytes && value.starts_with("\\x")) return value.substr(2);
  return value;
}

}  // namespace

/// How far the results of one text have been taken.
struct RemoteDatabase::Progress {
  std::string problem;
  int64_t changed = -1;
  bool in_rows = false;  ///< more rows of the same statement follow
  bool too_large = false;
};

void RemoteDatabase::Finish::operator()(PGconn* connection) const {
  Pq().PQfinish(connection);
}

RemoteDatabase::RemoteDatabase(std::string address, std::string port)
    : address_(std::move(address)), port_(std::move(port)) {}

Outcome RemoteDatabase::Run(std::string_view text, Rows& rows) {
  rows.Clear();
  if (const auto name = UsedDatabase(text)) return Use(*name);
  if (const auto login = LoginOf(text)) return LogIn(login->user, login->password);
  Outcome outcome;
  if (!Revive(outcome)) return outcome;
  return Query(std::string(text), rows);
}

Outcome RemoteDatabase::Use(std::string_view name) {
  if (!IsDatabaseName(name)) return {false, Failure("no database can have this name")};
  const std::string before = std::exchange(database_, std::string(name));
  if (user_.empty()) return {true, "Done."};
  Outcome outcome = Connect();
  if (!outcome.done) database_ = before;
  return outcome;
}

Outcome RemoteDatabase::LogIn(std::string_view user, std::string_view password) {
  if (user.empty()) return {false, Failure("a login needs a user")};
  user_ = user;
  password_.Set(password);
  return Connect();
}

Outcome RemoteDatabase::Connect() {
  const std::array<const char*, 9> names = {"host",
                                            "port",
                                            "user",
                                            "password",
                                            "connect_timeout",
                                            "application_name",
                                            "client_encoding",
                                            database_.empty() ? nullptr : "dbname",
                                            nullptr};
  const std::array<const char*, 9> values = {
      address_.c_str(), port_.c_str(),     user_.c_str(), password_.Get().c_str(), kConnectSeconds, "vorc",
      "UTF8",           database_.c_str(), nullptr};
  connection_.reset(Pq().PQconnectdbParams(names.data(), values.data(), 0));
  if (connection_ == nullptr) return {false, Failure("out of memory")};
  Pq().PQsetNoticeProcessor(
      connection_.get(), [](void*, const char*) {}, nullptr);
  if (Pq().PQstatus(connection_.get()) == CONNECTION_OK) return {true, "Done."};
  return {false, Told(Pq().PQerrorMessage(connection_.get()))};
}

// Makes sure that there is a connection. One that the server closed between two statements, outside of a
// transaction, has lost nothing.
bool RemoteDatabase::Revive(Outcome& outcome) {
  if (user_.empty()) {
    outcome = {false, Failure("nobody has logged in")};
    return false;
  }
  PGconn* connection = connection_.get();
  const bool idle = Pq().PQtransactionStatus(connection) == PQTRANS_IDLE;
  // What a server says before it closes comes first.
  for (int i = 0; idle && i < kLastWords && Readable(Pq().PQsocket(connection), 0); ++i) {
    if (Pq().PQconsumeInput(connection) == 0) break;
  }
  if (Pq().PQstatus(connection) == CONNECTION_OK) return true;
  outcome = Connect();
  return outcome.done;
}

void RemoteDatabase::Cancel() {
  std::array<char, 256> error{};
  PGcancel* cancel = Pq().PQgetCancel(connection_.get());
  if (cancel == nullptr) return;
  Pq().PQcancel(cancel, error.data(), static_cast<int>(error.size()));
  Pq().PQfreeCancel(cancel);
}

// Waits until the next result can be taken without waiting. Asks the server to stop when the user does.
bool RemoteDatabase::Await() {
  bool cancelled = false;
  while (Pq().PQisBusy(connection_.get()) != 0) {
    if (RunningQuery::Interrupted() && !std::exchange(cancelled, true)) Cancel();
    Pq().PQflush(connection_.get());
    if (Readable(Pq().PQsocket(connection_.get()), kPollMs) && Pq().PQconsumeInput(connection_.get()) == 0)
      return false;
  }
  return true;
}

void RemoteDatabase::AddRow(const PGresult* row, Rows& rows, Progress& progress) {
  if (!std::exchange(progress.in_rows, true)) rows.Begin(ColumnsOf(row));
  if (Pq().PQntuples(row) == 0 || progress.too_large) return;
  bool fits = true;
  for (int i = 0; fits && i < Pq().PQnfields(row); ++i) {
    fits = Pq().PQgetisnull(row, 0, i) != 0 ? rows.AddNull() : rows.AddText(ValueOf(row, i));
  }
  if (fits) return;
  progress.too_large = true;
  progress.problem = "the result is larger than 512 MiB";
  rows.Clear();
  Cancel();
}

// Bytes of a copy can't go through a script's queries: it is refused, or its rows are dropped.
void RemoteDatabase::EndCopy(const PGresult* result) {
  if (Pq().PQresultStatus(result) == PGRES_COPY_IN) {
    Pq().PQputCopyEnd(connection_.get(), "nothing to copy from");
    return;
  }
  Cancel();
  char* piece = nullptr;
  while (Pq().PQgetCopyData(connection_.get(), &piece, 0) > 0) Pq().PQfreemem(piece);
}

void RemoteDatabase::Take(const PGresult* result, Rows& rows, Progress& progress) {
  switch (Pq().PQresultStatus(result)) {
    case PGRES_SINGLE_TUPLE: return AddRow(result, rows, progress);
    case PGRES_TUPLES_OK:
      if (!progress.in_rows) AddRow(result, rows, progress);
      break;
    case PGRES_COMMAND_OK:
      if (const char* count = Pq().PQcmdTuples(const_cast<PGresult*>(result)); *count != '\0') {
        progress.changed = (progress.changed < 0 ? 0 : progress.changed) + std::strtoll(count, nullptr, 10);
      }
      break;
    case PGRES_EMPTY_QUERY: break;
    case PGRES_COPY_IN:
    case PGRES_COPY_OUT:
      EndCopy(result);
      if (progress.problem.empty()) progress.problem = "a copy to or from the client is not possible";
      break;
    default:
      if (progress.problem.empty()) progress.problem = ErrorOf(result);
  }
  progress.in_rows = false;
}

Outcome RemoteDatabase::Query(const std::string& text, Rows& rows) {
  const RunningQuery running(nullptr);
  PGconn* connection = connection_.get();
  Progress progress;
  if (Pq().PQsendQuery(connection, text.c_str()) == 0) progress.problem = Pq().PQerrorMessage(connection);
  Pq().PQsetSingleRowMode(connection);
  while (progress.problem.empty() || Pq().PQstatus(connection) == CONNECTION_OK) {
    Await();
    const Result result(Pq().PQgetResult(connection));
    if (result == nullptr) break;
    Take(result.get(), rows, progress);
  }
  if (!progress.problem.empty()) {
    rows.Clear();
    return {false, RunningQuery::Interrupted() ? Failure("interrupted") : Told(progress.problem)};
  }
  if (rows.HasColumns()) return {true, CountOfRows(static_cast<int64_t>(rows.Count())) + "."};
  return {true, progress.changed < 0 ? "Done." : CountOfRows(progress.changed) + " changed."};
}

// A server's words as a status. A statement's own words may be quoted in them, the password among them.
std::string RemoteDatabase::Told(std::string text) const {
  const std::string& password = password_.Get();
  for (size_t at = 0; !password.empty() && (at = text.find(password, at)) != std::string::npos; at += 3) {
    text.replace(at, password.size(), "***");
  }
  return Failure(text);
}

}  // namespace vorc
