#include "netstore/interrupt.h"

#include <sqlite3.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>

namespace vorc {

namespace {

std::atomic<bool> running;
std::atomic<bool> interrupted;
std::atomic<sqlite3*> running_database;
std::atomic<int64_t> last_interrupt;

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
  const int64_t before = last_interrupt.exchange(now);
  if (!running || (before != 0 && now - before < kNanoseconds)) {
    std::signal(number, SIG_DFL);
    raise(number);
  } else {
    interrupted = true;
    if (sqlite3* database = running_database) sqlite3_interrupt(database);
  }
  errno = error;
}

}  // namespace

void WatchInterrupts() {
  struct sigaction action {};
  if (sigaction(SIGINT, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) return;
  action = {};
  action.sa_handler = OnInterrupt;
  action.sa_flags = SA_RESTART;
  sigaction(SIGINT, &action, nullptr);
}

RunningQuery::RunningQuery(sqlite3* database) {
  interrupted = false;
  running_database = database;
  running = true;
}

RunningQuery::~RunningQuery() {
  running = false;
  running_database = nullptr;
}

bool RunningQuery::Interrupted() {
  return interrupted;
}

}  // namespace vorc
