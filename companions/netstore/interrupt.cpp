#include "netstore/interrupt.h"

#include <sqlite3.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>

namespace vorc {

namespace {

std::atomic<bool> interrupted;
std::atomic<sqlite3*> running_database;
std::atomic<int64_t> last_interrupt;
struct sigaction before {};

constexpr int64_t kNanoseconds = 1'000'000'000;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int64_t>::is_always_lock_free);

int64_t Now() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return int64_t{now.tv_sec} * kNanoseconds + now.tv_nsec;
}

void OnInterrupt(int number) {
  const int error = errno;
  const int64_t now = Now();
  const int64_t last = last_interrupt.exchange(now);
  if (last != 0 && now - last < kNanoseconds) {
    sigaction(number, &before, nullptr);
    raise(number);
  } else {
    interrupted = true;
    if (sqlite3* database = running_database) sqlite3_interrupt(database);
  }
  errno = error;
}

}  // namespace

RunningQuery::RunningQuery(sqlite3* database) {
  interrupted = false;
  running_database = database;
  struct sigaction action {};
  action.sa_handler = OnInterrupt;
  action.sa_flags = SA_RESTART;
  sigaction(SIGINT, &action, &before);
  if (before.sa_handler == SIG_IGN) sigaction(SIGINT, &before, nullptr);
}

RunningQuery::~RunningQuery() {
  sigaction(SIGINT, &before, nullptr);
  running_database = nullptr;
}

bool RunningQuery::Interrupted() {
  return interrupted;
}

}  // namespace vorc
