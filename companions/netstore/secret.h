#pragma once

#include <cstring>
#include <string>
#include <string_view>

namespace vorc {

/// A text that is wiped when it goes.
class Secret {
 public:
  Secret() = default;
  Secret(const Secret&) = delete;
  Secret& operator=(const Secret&) = delete;
  ~Secret() { Wipe(); }

  void Set(std::string_view text) {
    Wipe();
    text_.assign(text);
  }
  const std::string& Get() const { return text_; }

 private:
  void Wipe() {
    explicit_bzero(text_.data(), text_.size());
    text_.clear();
  }

  std::string text_;
};

}  // namespace vorc
