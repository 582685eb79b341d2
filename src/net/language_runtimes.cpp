#include "net/language_runtimes.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "base/format.h"
#include "lib/sandbox.h"
#include "net/companion.h"

namespace vorc {

namespace {

constexpr int64_t kFree = 0;
constexpr int64_t kReserved = 1;
constexpr size_t kNameSize = 128;
constexpr const char* kSuffix = ".so";

struct RuntimeName {
  const char* stem;
  const char* variable;
};
constexpr RuntimeName kNames[LanguageRuntimes::kKinds] = {
    {"vpython", "VORC_VPYTHON"},
    {"vjava", "VORC_VJAVA"},
    {"vjson", "VORC_VJSON"},
};

/// Room for a library's answer, zeroed, one byte longer than it may fill.
class Answer {
 public:
  explicit Answer(size_t size) : bytes_(size + 1) {}
  char* data() { return bytes_.data(); }
  int64_t size() const { return static_cast<int64_t>(bytes_.size()) - 1; }
  void MoveTo(std::string& out) { out.assign(bytes_.data(), strnlen(bytes_.data(), bytes_.size() - 1)); }

 private:
  std::vector<char> bytes_;
};

bool IsLetter(std::string_view text, size_t place, char lower) {
  return text.size() > place && (text[place] | 0x20) == lower;
}

}  // namespace

LanguageRuntimes::Kind LanguageRuntimes::KindOf(std::string_view name) {
  if (!IsLetter(name, 0, 'j')) return kPython;
  return IsLetter(name, 1, 's') ? kJson : kJava;
}

LanguageRuntimes::~LanguageRuntimes() {
  for (size_t i = 0; i < kSessions; ++i) MorvLangClose(static_cast<int32_t>(i + 1));
}

void* LanguageRuntimes::OpenLibrary(Kind kind, std::string& error) {
  const RuntimeName& name = kNames[kind];
  const char* named = std::getenv(name.variable);
  if (named != nullptr && *named != '\0') {
    if (void* library = dlopen(named, RTLD_NOW)) return library;
    error = Format("%s names '%.400s', which could not be loaded", name.variable, named);
  }
  const std::string file = std::string(name.stem) + kSuffix;
  if (void* library = OpenBesideProgram(file)) return library;
  // Whoever names a library isn't given the one that comes with the program without a word.
  void* library = error.empty() ? OpenCompanion(file) : dlopen(file.c_str(), RTLD_NOW);
  if (library == nullptr && error.empty()) {
    error =
        Format("%s%s was not found beside the executable or on the library search path", name.stem, kSuffix);
  }
  return library;
}

bool LanguageRuntimes::LookUp(void* library, VLangEntries& entries) {
  const auto find = [library](const char* name, auto& entry) {
    entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(dlsym(library, name));
  };
  find("VLangRunSource", entries.VLangRunSource);
  find("VLangRunFile", entries.VLangRunFile);
  find("VLangOpen", entries.VLangOpen);
  find("VLangRunIn", entries.VLangRunIn);
  find("VLangGetText", entries.VLangGetText);
  find("VLangGetNumber", entries.VLangGetNumber);
  find("VLangGetKind", entries.VLangGetKind);
  find("VLangSetLimitMs", entries.VLangSetLimitMs);
  find("VLangSetText", entries.VLangSetText);
  find("VLangSetNumber", entries.VLangSetNumber);
  find("VLangVarCount", entries.VLangVarCount);
  find("VLangVarName", entries.VLangVarName);
  find("VLangClose", entries.VLangClose);
  return entries.VLangRunSource != nullptr && entries.VLangRunFile != nullptr;
}

bool LanguageRuntimes::vlang_load_locked(Kind kind) {
  Runtime& runtime = runtimes_[kind];
  if (runtime.entries.VLangRunSource != nullptr && runtime.entries.VLangRunFile != nullptr) return true;
  if (std::exchange(runtime.tried, true)) return false;
  if (MorvSandboxActive()) {
    runtime.error = "no other language runs inside MORV_FILE_ROOT: it could open any file";
    return false;
  }
  void* library = OpenLibrary(kind, runtime.error);
  runtime.missing = library == nullptr;
  if (runtime.missing) return false;
  if (LookUp(library, runtime.entries)) return true;
  runtime.entries = {};
  runtime.error =
      Format("%s%s loaded but does not export VLangRunSource/VLangRunFile", kNames[kind].stem, kSuffix);
  return false;
}

bool LanguageRuntimes::Load(Kind kind) {
  const std::lock_guard guard(lock_);
  return vlang_load_locked(kind);
}

LanguageRuntimes::Kind LanguageRuntimes::JavaScriptKind() {
  const char* named = std::getenv(kNames[kJava].variable);
  if (Load(kJava) || !runtimes_[kJava].missing || (named != nullptr && *named != '\0')) return kJava;
  return Load(kJson) ? kJson : kJava;
}

int32_t LanguageRuntimes::RunOnce(Kind kind, RunEntry entry, const std::string& text, std::string& out) {
  out.clear();
  if (!Load(kind)) {
    out = runtimes_[kind].error;
    return 1;
  }
  Answer answer(kTextSize);
  const int32_t result = (runtimes_[kind].entries.*entry)(text.c_str(), answer.data(), answer.size());
  answer.MoveTo(out);
  return result;
}

int32_t LanguageRuntimes::MorvLangRunSource(Kind kind, const std::string& text, std::string& out) {
  return RunOnce(kind, &VLangEntries::VLangRunSource, text, out);
}

int32_t LanguageRuntimes::MorvLangRunFile(Kind kind, const std::string& path, std::string& out) {
  return RunOnce(kind, &VLangEntries::VLangRunFile, path, out);
}

int32_t LanguageRuntimes::MorvLangOpen(Kind kind, std::string& error) {
  Runtime& runtime = runtimes_[kind];
  std::unique_lock guard(lock_);
  if (!vlang_load_locked(kind)) {
    error = runtime.error;
    return 0;
  }
  if (runtime.entries.VLangOpen == nullptr || runtime.entries.VLangRunIn == nullptr) {
    error = "this language library predates shared sessions; rebuild it";
    return 0;
  }
  const auto entry =
      std::ranges::find_if(sessions_, [](const Session& session) { return session.value == kFree; });
  if (entry == sessions_.end()) {
    error = "too many open language sessions";
    return 0;
  }
  entry->value = kReserved;
  guard.unlock();
  const int64_t session = runtime.entries.VLangOpen();
  guard.lock();
  if (session == 0) {
    *entry = {};
    error = "no memory for a session";
    return 0;
  }
  *entry = {&runtime, session};
  return static_cast<int32_t>(entry - sessions_.begin()) + 1;
}

void LanguageRuntimes::MorvLangClose(int32_t handle) {
  if (handle < 1 || handle > static_cast<int32_t>(kSessions)) return;
  Session session;
  {
    const std::lock_guard guard(lock_);
    session = std::exchange(sessions_[static_cast<size_t>(handle - 1)], Session{});
  }
  const bool open = session.value != kFree && session.value != kReserved;
  if (open && session.runtime->entries.VLangClose != nullptr) {
    session.runtime->entries.VLangClose(session.value);
  }
}

LanguageRuntimes::Session* LanguageRuntimes::Find(int32_t handle) {
  if (handle < 1 || handle > static_cast<int32_t>(kSessions)) return nullptr;
  Session& session = sessions_[static_cast<size_t>(handle - 1)];
  return session.value == kFree || session.value == kReserved ? nullptr : &session;
}

int32_t LanguageRuntimes::MorvLangRunIn(int32_t handle, const std::string& text, std::string& out) {
  out.clear();
  const Session* session = Find(handle);
  if (session == nullptr) {
    out = "no such language session";
    return 1;
  }
  Answer answer(kTextSize);
  const int32_t result =
      session->runtime->entries.VLangRunIn(session->value, text.c_str(), answer.data(), answer.size());
  answer.MoveTo(out);
  return result;
}

int32_t LanguageRuntimes::MorvLangSetLimitMs(int32_t handle, int32_t milliseconds) {
  const Session* session = Find(handle);
  if (session == nullptr || session->runtime->entries.VLangSetLimitMs == nullptr) return 0;
  session->runtime->entries.VLangSetLimitMs(session->value, milliseconds);
  return 1;
}

int32_t LanguageRuntimes::MorvLangGetText(int32_t handle, const std::string& name, std::string& out,
                                          size_t size) {
  out.clear();
  const Session* session = Find(handle);
  if (session == nullptr || session->runtime->entries.VLangGetText == nullptr) return 0;
  Answer answer(size);
  const int32_t result =
      session->runtime->entries.VLangGetText(session->value, name.c_str(), answer.data(), answer.size());
  answer.MoveTo(out);
  return result;
}

int32_t LanguageRuntimes::MorvLangGetNumber(int32_t handle, const std::string& name, double& out) {
  out = 0;
  const Session* session = Find(handle);
  if (session == nullptr || session->runtime->entries.VLangGetNumber == nullptr) return 0;
  return session->runtime->entries.VLangGetNumber(session->value, name.c_str(), &out);
}

int32_t LanguageRuntimes::MorvLangSetText(int32_t handle, const std::string& name, const std::string& text) {
  const Session* session = Find(handle);
  if (session == nullptr || session->runtime->entries.VLangSetText == nullptr) return 0;
  return session->runtime->entries.VLangSetText(session->value, name.c_str(), text.c_str());
}

int32_t LanguageRuntimes::MorvLangSetNumber(int32_t handle, const std::string& name, double value) {
  const Session* session = Find(handle);
  if (session == nullptr || session->runtime->entries.VLangSetNumber == nullptr) return 0;
  return session->runtime->entries.VLangSetNumber(session->value, name.c_str(), value);
}

int32_t LanguageRuntimes::MorvLangGetKind(int32_t handle, const std::string& name) {
  const Session* session = Find(handle);
  if (session == nullptr || session->runtime->entries.VLangGetKind == nullptr) return -1;
  return session->runtime->entries.VLangGetKind(session->value, name.c_str());
}

int32_t LanguageRuntimes::MorvLangVarNames(int32_t handle, std::string& out) {
  out.clear();
  const Session* session = Find(handle);
  if (session == nullptr) return 0;
  const VLangEntries& entries = session->runtime->entries;
  if (entries.VLangVarCount == nullptr || entries.VLangVarName == nullptr) return 0;
  const int32_t count = entries.VLangVarCount(session->value);
  for (int32_t i = 0; i < count; ++i) {
    Answer name(kNameSize);
    entries.VLangVarName(session->value, i, name.data(), name.size());
    std::string text;
    name.MoveTo(text);
    if (out.size() + text.size() + (i > 0 ? 1 : 0) >= kTextSize) break;
    if (i > 0) out += ',';
    out += text;
  }
  return count;
}

}  // namespace vorc
