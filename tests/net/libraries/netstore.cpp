// A database client that writes each call to standard output. Objects are numbers that count up;
// statements with "bad" in them fail; a result has two rows.
#include <cstdio>
#include <cstring>
#include <map>
#include <string>

namespace {

long last_object = 100;
std::map<long, int> rows;
std::string field;

long Tell(const char* name, const std::string& arguments, long answer) {
  std::printf("%s(%s)\n", name, arguments.c_str());
  std::fflush(stdout);
  return answer;
}

std::string Number(long value) {
  return std::to_string(value);
}

}  // namespace

extern "C" {
long NSTORE_CreateNetStoreInstance() {
  return Tell("Create", "", ++last_object);
}
long NSTORE_NoNetworkMode(long i) {
  return Tell("NoNetworkMode", Number(i), 1);
}
long NSTORE_DisableMessage(long i) {
  return Tell("DisableMessage", Number(i), 1);
}
long NSTORE_StartNetStore(long i, const char* home, const char* address, const char* port) {
  const std::string place = home != nullptr ? home : "null";
  return Tell("Start", Number(i) + "," + place + "," + address + "," + (*port != '\0' ? "port" : ""),
              ++last_object);
}
long NSTORE_StopNetStore(long s) {
  return Tell("Stop", Number(s), 1);
}
long NSTORE_DeleteInstance(long s) {
  return Tell("Delete", Number(s), 1);
}
long NSTORE_NewObject(long s) {
  return Tell("New", Number(s), ++last_object);
}
long NSTORE_SetOwnerAccess(long o) {
  return Tell("SetOwnerAccess", Number(o), 1);
}
long NSTORE_Exec(long o, const char* text) {
  rows[o] = 2;
  return Tell("Exec", Number(o) + "," + text, std::strstr(text, "bad") != nullptr ? 0 : 1);
}
const char* NSTORE_Status(long o) {
  return o % 2 == 0 ? nullptr : "fine";
}
long NSTORE_Next(long o) {
  return rows[o]-- > 0;
}
long NSTORE_Count(long) {
  return 2;
}
const char* NSTORE_Data(long o, const char* name) {
  field = std::string(name) + " of row " + Number(2 - rows[o]);
  return field.c_str();
}
const char* NSTORE_DataByFno(long, long number) {
  field = "field " + Number(number);
  return number < 0 ? nullptr : field.c_str();
}
long NSTORE_FreeObject(long o) {
  return Tell("Free", Number(o), 1);
}
}
