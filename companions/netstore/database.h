#pragma once

#include <string>
#include <string_view>

#include "netstore/rows.h"

namespace vorc {

/// What became of a statement.
struct Outcome {
  bool done = false;
  std::string status;  ///< a short sentence
};

/// Somewhere that statements run.
class Database {
 public:
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  virtual ~Database() = default;

  /// Runs the statements of a text, several of them as one transaction. `rows` takes those of the last
  /// statement that has rows, and is empty after a failure.
  virtual Outcome Run(std::string_view text, Rows& rows) = 0;
};

}  // namespace vorc
