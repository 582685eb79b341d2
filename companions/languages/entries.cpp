#include <cstdlib>
#include <exception>
#include <fstream>
#include <sstream>
#include <unordered_map>

#include "languages/session.h"

namespace {

using vorc::Answer;
using vorc::CopyOut;
using vorc::LanguageSession;

constexpr int32_t kDone = 0;
constexpr int32_t kFailed = 1;
constexpr std::string_view kTextName = "text";

struct Table {
  std::unordered_map<int64_t, std::unique_ptr<LanguageSession>> sessions;
  int64_t last = 1;  // 0 and 1 stand for no session
};

// Sessions that a script leaves open, when it ends the process itself, are closed like all others: what
// they have written reaches its files.
Table& Sessions() {
  static auto* const table = new Table;
  [[maybe_unused]] static const int at_exit = std::atexit([] { table->sessions.clear(); });
  return *table;
}

// Nothing that is thrown, for want of memory, passes the library's border.
template <typename T, typename Work>
T Guarded(T failure, Work work) {
  try {
    return work();
  } catch (const std::exception&) {
    return failure;
  }
}

// The answer of some work with a session, or `failure` if there is none of this number.
template <typename T, typename Work>
T With(int64_t number, T failure, Work work) {
  return Guarded(failure, [&] {
    const auto found = Sessions().sessions.find(number);
    return found == Sessions().sessions.end() ? failure : work(*found->second);
  });
}

int32_t RunOnce(const vorc::Source& source, char* out, int64_t size) {
  return Guarded(kFailed, [&] {
    Answer answer(size);
    std::string problem;
    const auto session = LanguageSession::Create(problem);
    const bool done = session != nullptr && session->Run(source, answer);
    if (session == nullptr) answer.Fail(problem);
    CopyOut(answer.text(), out, size);
    return done ? kDone : kFailed;
  });
}

}  // namespace

int32_t VLangRunSource(const char* text, char* out, int64_t size) {
  return RunOnce({text, kTextName}, out, size);
}

int32_t VLangRunFile(const char* path, char* out, int64_t size) {
  return Guarded(kFailed, [=] {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    // A folder can be opened, too; reading it is what fails.
    if (file && file.peek() != std::ifstream::traits_type::eof()) text << file.rdbuf();
    const bool read = file.is_open() && !file.bad() && !text.fail();
    if (read) return RunOnce({text.view(), path, true}, out, size);
    CopyOut("can't read " + std::string(path), out, size);
    return kFailed;
  });
}

int64_t VLangOpen(void) {
  return Guarded(int64_t{0}, []() -> int64_t {
    std::string problem;
    auto session = LanguageSession::Create(problem);
    if (session == nullptr) return 0;
    Sessions().sessions.emplace(++Sessions().last, std::move(session));
    return Sessions().last;
  });
}

int32_t VLangRunIn(int64_t number, const char* text, char* out, int64_t size) {
  return With(number, kFailed, [=](LanguageSession& session) {
    Answer answer(size);
    const bool done = session.Run({text, kTextName}, answer);
    CopyOut(answer.text(), out, size);
    return done ? kDone : kFailed;
  });
}

void VLangClose(int64_t number) {
  Guarded(0, [=] { return static_cast<int>(Sessions().sessions.erase(number)); });
}

int32_t VLangGetText(int64_t number, const char* name, char* out, int64_t size) {
  return With(number, 0, [=](LanguageSession& session) {
    const auto text = session.Text(name);
    CopyOut(text.value_or(""), out, size);
    return text ? 1 : 0;
  });
}

int32_t VLangGetNumber(int64_t number, const char* name, double* out) {
  *out = 0;
  return With(number, 0, [=](LanguageSession& session) {
    const auto value = session.Number(name);
    *out = value.value_or(0);
    return value ? 1 : 0;
  });
}

int32_t VLangGetKind(int64_t number, const char* name) {
  return With(number, int32_t{VLANG_MISSING}, [=](LanguageSession& session) { return session.Kind(name); });
}

int32_t VLangSetText(int64_t number, const char* name, const char* text) {
  return With(number, 0, [=](LanguageSession& session) {
    const auto json = vorc::NameOfJson(name);
    return (json ? session.SetJson(*json, text) : session.SetText(name, text)) ? 1 : 0;
  });
}

int32_t VLangSetNumber(int64_t number, const char* name, double value) {
  return With(number, 0, [=](LanguageSession& session) {
    return session.SetNumber(vorc::NameOfJson(name).value_or(name), value) ? 1 : 0;
  });
}

int32_t VLangVarCount(int64_t number) {
  return With(number, 0, [](LanguageSession& session) {
    session.CountNames();
    return static_cast<int32_t>(session.names().size());
  });
}

int32_t VLangVarName(int64_t number, int32_t index, char* out, int64_t size) {
  return With(number, 0, [=](LanguageSession& session) {
    if (index < 0 || static_cast<size_t>(index) >= session.names().size()) return 0;
    CopyOut(session.names()[static_cast<size_t>(index)], out, size);
    return 1;
  });
}

void VLangSetLimitMs(int64_t number, int32_t milliseconds) {
  With(number, 0, [=](LanguageSession& session) {
    session.SetLimit(milliseconds);
    return 1;
  });
}
