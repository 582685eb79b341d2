#pragma once

#include <string>

#include "base/descriptor.h"
#include "driver/options.h"

namespace vorc {

/// How an input ended.
struct InputEnd {
  enum class Kind {
    kDone,    ///< without an error
    kFailed,  ///< with an error, which has been told: the session stands where it stood before
    kKilled,  ///< by a signal, with the same effect
    kOver,    ///< the script ended the session
  };
  Kind kind;
  int number = 0;  ///< of the signal; the exit status
};

/// A session in a process of its own. Before each input it leaves a copy of itself behind, which takes
/// over where the input fails or is interrupted; so an error takes nothing along, and none ends a session.
class SessionProcess {
 public:
  /// Starts the process. `ready` tells whether that worked.
  explicit SessionProcess(const Options& options);
  bool ready() const { return static_cast<bool>(link_); }

  /// Runs an input; its output goes to standard output. An expression's value is printed.
  InputEnd Run(const std::string& text);

 private:
  Descriptor link_;
  int process_ = -1;
};

}  // namespace vorc
