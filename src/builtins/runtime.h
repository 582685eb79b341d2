#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace vorc {

/// Where a script's texts and its other memory come from.
class ScriptTexts {
 public:
  virtual ~ScriptTexts() = default;
  /// A NUL-terminated copy that lives as long as the script can refer to it. Null when memory is used up.
  virtual char* CopyText(std::string_view text) = 0;
  /// Zeroed memory to the end of the run, or null when it is used up.
  virtual char* Allocate(size_t size) = 0;
};

/// What the built-ins of one run of a script keep between their calls.
class ScriptRuntime {
 public:
  explicit ScriptRuntime(ScriptTexts& texts) : texts_(texts), states_(Count()) {}

  ScriptTexts& texts() { return texts_; }

  /// This run's one object of type T, made at its first use: a library's handles, counters or tables.
  template <typename T>
  T& State() {
    std::unique_ptr<AnyHolder>& state = states_[kIndex<T>];
    if (state == nullptr) [[unlikely]]
      MakeState<T>(state);
    return static_cast<Holder<T>*>(state.get())->value;
  }

 private:
  struct AnyHolder {
    virtual ~AnyHolder() = default;
  };
  template <typename T>
  struct Holder final : AnyHolder {
    T value;
  };

  template <typename T>
  [[gnu::noinline]] static void MakeState(std::unique_ptr<AnyHolder>& state) {
    state = std::make_unique<Holder<T>>();
  }

  /// Every type of state is numbered as the program starts.
  static size_t& Count();
  template <typename T>
  inline static const size_t kIndex = Count()++;

  ScriptTexts& texts_;
  std::vector<std::unique_ptr<AnyHolder>> states_;
};

}  // namespace vorc
