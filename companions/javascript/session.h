#pragma once

#include <duktape.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "languages/session.h"

namespace vorc {

/// An interpreter of JavaScript with its own global object.
class Session : public LanguageSession {
 public:
  Session();
  ~Session() override;

  /// False if there was no memory for the interpreter.
  bool Usable() const { return context_ != nullptr; }

  bool Run(const Source& source, Answer& answer) override;
  std::optional<std::string> Text(std::string_view name) override;
  std::optional<double> Number(std::string_view name) override;
  int32_t Kind(std::string_view name) override;
  bool SetText(std::string_view name, std::string_view text) override;
  bool SetJson(std::string_view name, std::string_view text) override;
  bool SetNumber(std::string_view name, double value) override;
  std::vector<std::string> Names() override;

  /// True once what is running has taken too long.
  bool Expired();
  void Print(std::string_view text);

 private:
  template <typename Work>
  bool Protected(Work work, duk_idx_t given = 0);
  template <typename Work>
  bool Try(Work work);
  template <typename Push>
  bool Set(std::string_view name, Push push);
  bool FindVariable(std::string_view name);
  std::string FailureText();

  duk_context* context_;
  Answer* answer_ = nullptr;  ///< of the running text
  int64_t deadline_ns_ = 0;   ///< 0 for none
  bool expired_ = false;
};

}  // namespace vorc
