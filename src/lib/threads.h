#pragma once

#include <pthread.h>

#include <array>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "lib/processes.h"

namespace vorc {

/// The most script threads that may exist at once: running, or ended and not joined yet.
inline constexpr int kMaxScriptThreads = 64;

/// The threads that a script started, each for one command line. The end of this object waits for
/// them, so that no command is lost when a script ends before them.
class ScriptThreads {
 public:
  /// The commands run in `processes`, which must live longer.
  explicit ScriptThreads(Processes& processes) : processes_(processes) {}
  ScriptThreads(const ScriptThreads&) = delete;
  ScriptThreads& operator=(const ScriptThreads&) = delete;
  ~ScriptThreads() { MorvThreadBarrier(); }

  /// Starts a thread that runs one command line as MorvExec does. Answers its number from 0 on, or
  /// -1 for an empty command and when all numbers are taken.
  int MorvThreadCreate(std::string_view command);

  /// Waits for a thread, gives its number back, and answers the status of its command. -1 if there
  /// is no such thread or it is being joined already.
  int MorvThreadJoin(int id);

  /// Joins every thread and answers how many there were.
  int MorvThreadBarrier();

  /// Binds a thread, or for a negative `id` the calling one, to the processors whose bits are set in
  /// `mask`. 1 on success; 0 for an empty mask, a thread that is not there, or a refusal by the host.
  int MorvThreadAffinitySet(int id, uint32_t mask);

 private:
  struct Thread {
    pthread_t host{};
    Processes* processes = nullptr;
    std::string command;
    int32_t result = -1;
    bool used = false;
    bool started = false;
    bool joined = false;

    bool IsLive() const { return used && started && !joined; }
  };

  static void* morv_thread_body(void* argument);
  Thread* FindLive(int id);

  Processes& processes_;
  std::mutex lock_;  ///< guards the entries; an entry's `result` belongs to its thread until joined
  std::array<Thread, kMaxScriptThreads> entries_;
};

/// The mask of no processor.
uint32_t MorvCpuZero();

/// `mask` with the bit of processor `cpu` set; unchanged if `cpu` is not in 0 to 31.
uint32_t MorvCpuSet(int cpu, uint32_t mask);

/// The number of processors online, at least 1.
int MorvCpuCount();

/// Sleeps for so many milliseconds, signals notwithstanding. Nothing happens below 1.
void MorvSleepMs(int milliseconds);

}  // namespace vorc
