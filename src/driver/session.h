#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "driver/options.h"

namespace vorc {

/// A script that is typed in piece by piece. What one piece declares, the next ones know.
class Session {
 public:
  /// `options` tell where included files are looked for.
  explicit Session(const Options& options);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// False if the host grants no memory to run in.
  bool ready() const;
  /// Reads a text that stands next in the script and runs it; `name` is told in messages and must be
  /// new. False after an error: what the text left half done is then still there.
  bool Run(const std::string& name, std::string text);

  /// True for the name of a type, or for a word that can begin no expression.
  bool BeginsNoExpression(std::string_view word) const;
  /// True for a function, built-in or of the script, whose call has no value.
  bool AnswersNothing(std::string_view function) const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace vorc
