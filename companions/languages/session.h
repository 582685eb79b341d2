#pragma once

#include <vorc/vlang.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "languages/answer.h"

namespace vorc {

/// A program text and what errors call it.
struct Source {
  std::string_view text;
  std::string_view name;
  bool is_file = false;  ///< `name` is its path
};

/// An interpreter's variables. `languages/entries.cpp` is the border to the library's callers.
class LanguageSession {
 public:
  /// Made by the language. Null with the reason if there can be none.
  static std::unique_ptr<LanguageSession> Create(std::string& problem);

  LanguageSession() = default;
  LanguageSession(const LanguageSession&) = delete;
  LanguageSession& operator=(const LanguageSession&) = delete;
  virtual ~LanguageSession() = default;

  /// False with the reason at the end of the answer.
  virtual bool Run(const Source& source, Answer& answer) = 0;
  virtual std::optional<std::string> Text(std::string_view name) = 0;
  virtual std::optional<double> Number(std::string_view name) = 0;
  virtual int32_t Kind(std::string_view name) = 0;
  virtual bool SetText(std::string_view name, std::string_view text) = 0;
  /// Sets a variable to what a JSON text stands for.
  virtual bool SetJson(std::string_view name, std::string_view text) = 0;
  virtual bool SetNumber(std::string_view name, double value) = 0;
  /// The names of the variables that texts and calls have made.
  virtual std::vector<std::string> Names() = 0;

  void SetLimit(int32_t milliseconds) { limit_ms_ = milliseconds; }
  int32_t limit_ms() const { return limit_ms_; }
  void CountNames() { names_ = Names(); }
  const std::vector<std::string>& names() const { return names_; }

 private:
  int32_t limit_ms_ = 0;
  std::vector<std::string> names_;
};

}  // namespace vorc
