#pragma once

struct sqlite3;

namespace vorc {

/// Lets SIGINT end a running query instead of the process, where nobody else has asked for that
/// signal. Outside of queries, and twice within a second, it ends the process as before.
void WatchInterrupts();

/// A query that SIGINT may end, for as long as this stands. One at a time.
class RunningQuery {
 public:
  /// With a database, that one is told to stop.
  explicit RunningQuery(sqlite3* database);
  ~RunningQuery();
  RunningQuery(const RunningQuery&) = delete;
  RunningQuery& operator=(const RunningQuery&) = delete;

  static bool Interrupted();
};

}  // namespace vorc
