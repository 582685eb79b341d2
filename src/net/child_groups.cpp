#include "net/child_groups.h"

#include <array>
#include <atomic>
#include <csignal>
#include <utility>

namespace vorc {

namespace {

constexpr size_t kGroups = 4096;
constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP};

// All that a signal's handler may look at. 0 is a free place.
std::array<std::atomic<pid_t>, kGroups> groups;
static_assert(std::atomic<pid_t>::is_always_lock_free);

// The usual disposition is in force again when this runs, so the signal that is raised ends the process.
void EndGroups(int number) {
  for (const auto& group : groups) {
    if (const pid_t id = group.load(); id > 0) kill(-id, SIGKILL);
  }
  raise(number);
}

// A signal that is ignored, as under nohup, stays so.
void HandleEndingSignals() {
  for (const int number : kEndingSignals) {
    struct sigaction present {};
    if (sigaction(number, nullptr, &present) != 0 || present.sa_handler != SIG_DFL) continue;
    struct sigaction handling {};
    handling.sa_handler = EndGroups;
    handling.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(number, &handling, nullptr);
  }
}

}  // namespace

void ChildGroup::Watch(pid_t group) {
  HandleEndingSignals();
  for (place_ = 0; place_ < kGroups; ++place_) {
    pid_t free = 0;
    watched_ = groups[place_].compare_exchange_strong(free, group);
    if (watched_) return;
  }
}

void ChildGroup::Release() {
  if (std::exchange(watched_, false)) groups[place_] = 0;
}

}  // namespace vorc
