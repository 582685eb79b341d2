// A language library that knows one statement, NAME=VALUE, and records what it is asked.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

namespace {

struct Session {
  std::map<std::string, std::string> values;
  int limit = 0;
};

Session* Of(long session) {
  return reinterpret_cast<Session*>(session);
}

int Put(char* out, long size, const std::string& text) {
  std::snprintf(out, static_cast<size_t>(size), "%s", text.c_str());
  return 1;
}

}  // namespace

extern "C" {
int VLangRunSource(const char* text, char* out, long size) {
  Put(out, size, std::string("source:") + text);
  return 0;
}
int VLangRunFile(const char* path, char* out, long size) {
  Put(out, size, std::string("file:") + path);
  return 0;
}
long VLangOpen() {
  return std::getenv("TEST_NO_SESSION") != nullptr ? 0 : reinterpret_cast<long>(new Session);
}
int VLangRunIn(long session, const char* text, char* out, long size) {
  const char* sign = std::strchr(text, '=');
  if (sign == nullptr) return Put(out, size, "no statement");
  Of(session)->values[std::string(text, sign)] = sign + 1;
  Put(out, size, "limit " + std::to_string(Of(session)->limit));
  return 0;
}
int VLangGetText(long session, const char* name, char* out, long size) {
  const auto found = Of(session)->values.find(name);
  return found == Of(session)->values.end() ? 0 : Put(out, size, found->second);
}
int VLangGetNumber(long session, const char* name, double* out) {
  *out = std::atof(Of(session)->values[name].c_str());
  return 1;
}
int VLangGetKind(long session, const char* name) {
  return Of(session)->values.count(name) == 0 ? -1 : std::atoi(Of(session)->values[name].c_str());
}
void VLangSetLimitMs(long session, int milliseconds) {
  Of(session)->limit = milliseconds;
}
int VLangSetText(long session, const char* name, const char* text) {
  Of(session)->values[name] = text;
  return 1;
}
int VLangSetNumber(long session, const char* name, double value) {
  Of(session)->values[name] = std::to_string(value);
  return 1;
}
int VLangVarCount(long session) {
  return static_cast<int>(Of(session)->values.size());
}
int VLangVarName(long session, int index, char* out, long size) {
  auto place = Of(session)->values.begin();
  std::advance(place, index);
  return Put(out, size, place->first);
}
void VLangClose(long session) {
  delete Of(session);
}
}
