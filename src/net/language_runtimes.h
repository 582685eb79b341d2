#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace vorc {

/// The entries of a language library. Sessions are 64-bit values; a size counts the ending NUL.
struct VLangEntries {
  int32_t (*VLangRunSource)(const char* text, char* out, int64_t size);  ///< 0 is success
  int32_t (*VLangRunFile)(const char* path, char* out, int64_t size);    ///< 0 is success
  int64_t (*VLangOpen)();                                                ///< 0 is failure
  int32_t (*VLangRunIn)(int64_t session, const char* text, char* out, int64_t size);
  int32_t (*VLangGetText)(int64_t session, const char* name, char* out, int64_t size);  ///< 1 is success
  int32_t (*VLangGetNumber)(int64_t session, const char* name, double* out);
  int32_t (*VLangGetKind)(int64_t session, const char* name);
  void (*VLangSetLimitMs)(int64_t session, int32_t milliseconds);
  int32_t (*VLangSetText)(int64_t session, const char* name, const char* text);
  int32_t (*VLangSetNumber)(int64_t session, const char* name, double value);
  int32_t (*VLangVarCount)(int64_t session);
  int32_t (*VLangVarName)(int64_t session, int32_t index, char* out, int64_t size);  ///< 1 is success
  void (*VLangClose)(int64_t session);
};

/// The languages that scripts reach through shared libraries, and the sessions that are open in them.
/// A library is looked for at its first use, once; later calls get the same answer. Inside a sandbox none
/// is loaded.
class LanguageRuntimes {
 public:
  enum Kind : uint8_t { kPython, kJava, kJson, kKinds };
  static constexpr size_t kSessions = 128;
  static constexpr size_t kTextSize = 65536;

  LanguageRuntimes() = default;
  LanguageRuntimes(const LanguageRuntimes&) = delete;
  LanguageRuntimes& operator=(const LanguageRuntimes&) = delete;
  ~LanguageRuntimes();

  /// What a name like "python", "java" or "js" stands for.
  static Kind KindOf(std::string_view name);

  /// Which of them a text in JavaScript goes to: the second where it is told or found, else the third.
  Kind JavaScriptKind();

  /// Runs a text or a file once. `out` takes the answer, or why there is none; 0 is success.
  int32_t MorvLangRunSource(Kind kind, const std::string& text, std::string& out);
  int32_t MorvLangRunFile(Kind kind, const std::string& path, std::string& out);

  /// A handle from 1 to 128, or 0 with the reason in `error`.
  int32_t MorvLangOpen(Kind kind, std::string& error);
  void MorvLangClose(int32_t handle);

  /// 0 is success, 1 a bad handle with `out` telling so.
  int32_t MorvLangRunIn(int32_t handle, const std::string& text, std::string& out);
  /// Each of these answers 0 for a bad handle and for an entry that the library lacks.
  int32_t MorvLangSetLimitMs(int32_t handle, int32_t milliseconds);
  int32_t MorvLangGetText(int32_t handle, const std::string& name, std::string& out, size_t size = kTextSize);
  int32_t MorvLangGetNumber(int32_t handle, const std::string& name, double& out);
  int32_t MorvLangSetText(int32_t handle, const std::string& name, const std::string& text);
  int32_t MorvLangSetNumber(int32_t handle, const std::string& name, double value);
  /// The number of a variable's kind, or -1.
  int32_t MorvLangGetKind(int32_t handle, const std::string& name);
  /// All names, joined by commas, as far as they fit. Answers how many the session has.
  int32_t MorvLangVarNames(int32_t handle, std::string& out);

 private:
  struct Runtime {
    VLangEntries entries{};
    bool tried = false;
    bool missing = false;  ///< no library was found
    std::string error;
  };
  struct Session {
    Runtime* runtime = nullptr;
    int64_t value = 0;
  };

  bool vlang_load_locked(Kind kind);
  bool Load(Kind kind);
  static void* OpenLibrary(Kind kind, std::string& error);
  static bool LookUp(void* library, VLangEntries& entries);
  Session* Find(int32_t handle);
  using RunEntry = int32_t (*VLangEntries::*)(const char*, char*, int64_t);
  int32_t RunOnce(Kind kind, RunEntry entry, const std::string& text, std::string& out);

  std::array<Runtime, kKinds> runtimes_;
  std::array<Session, kSessions> sessions_;
  std::mutex lock_;  ///< guards loading and the table; no library runs under it
};

}  // namespace vorc
