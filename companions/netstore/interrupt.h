#pragma once

struct sqlite3;

namespace vorc {

/// As long as this stands, SIGINT ends the query and not the process. Twice within a second, it does what it
/// did before. One at a time; ignored signals stay ignored.
class RunningQuery {
 public:
  /// A database is told to stop; without one, ask Interrupted.
  explicit RunningQuery(sqlite3* database);
  ~RunningQuery();
  RunningQuery(const RunningQuery&) = delete;
  RunningQuery& operator=(const RunningQuery&) = delete;

  static bool Interrupted();
};

}  // namespace vorc
