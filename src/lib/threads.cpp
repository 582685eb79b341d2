#include "lib/threads.h"

#include <pthread.h>
#include <sched.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <mutex>
#include <string>

#include "lib/processes.h"

namespace vorc {

namespace {

struct ScriptThread {
  pthread_t host{};
  std::string command;
  int32_t result = -1;
  bool used = false;
  bool started = false;
  bool joined = false;

  bool IsLive() const { return used && started && !joined; }
};

struct ThreadTable {
  std::mutex lock;  ///< guards the entries; an entry's `result` belongs to its thread until joined
  std::array<ScriptThread, kMaxScriptThreads> entries;

  // Null for a number that is out of range or whose thread is not there to be joined.
  ScriptThread* FindLive(int id) {
    if (id < 0 || id >= kMaxScriptThreads) return nullptr;
    ScriptThread& thread = entries[static_cast<size_t>(id)];
    return thread.IsLive() ? &thread : nullptr;
  }
};

// Never destroyed: threads may still run while the process ends.
ThreadTable& g_threads() {
  static ThreadTable& table = *new ThreadTable;
  return table;
}

void* morv_thread_body(void* argument) {
  auto* thread = static_cast<ScriptThread*>(argument);
  thread->result = MorvExec(thread->command);
  return nullptr;
}

cpu_set_t CpuSetOf(uint32_t mask) {
  cpu_set_t cpus;
  CPU_ZERO(&cpus);
  for (size_t cpu = 0; cpu < 32; ++cpu) {
    if ((mask >> cpu & 1) != 0) CPU_SET(cpu, &cpus);
  }
  return cpus;
}

}  // namespace

int MorvThreadCreate(std::string_view command) {
  if (command.empty()) return -1;
  ThreadTable& table = g_threads();
  const std::lock_guard guard(table.lock);
  int id = 0;
  while (id < kMaxScriptThreads && table.entries[static_cast<size_t>(id)].used) ++id;
  if (id == kMaxScriptThreads) return -1;
  ScriptThread& thread = table.entries[static_cast<size_t>(id)];
  thread.command = command;
  thread.used = true;
  thread.started = pthread_create(&thread.host, nullptr, morv_thread_body, &thread) == 0;
  if (thread.started) return id;
  thread = {};
  return -1;
}

int MorvThreadJoin(int id) {
  ThreadTable& table = g_threads();
  std::unique_lock guard(table.lock);
  ScriptThread* thread = table.FindLive(id);
  if (thread == nullptr) return -1;
  thread->joined = true;
  guard.unlock();
  pthread_join(thread->host, nullptr);
  guard.lock();
  const int32_t result = thread->result;
  *thread = {};
  return result;
}

int MorvThreadBarrier() {
  ThreadTable& table = g_threads();
  std::array<bool, kMaxScriptThreads> live{};
  {
    const std::lock_guard guard(table.lock);
    for (int id = 0; id < kMaxScriptThreads; ++id)
      live[static_cast<size_t>(id)] = table.FindLive(id) != nullptr;
  }
  int count = 0;
  for (int id = 0; id < kMaxScriptThreads; ++id) {
    if (!live[static_cast<size_t>(id)]) continue;
    MorvThreadJoin(id);
    ++count;
  }
  return count;
}

int MorvThreadAffinitySet(int id, uint32_t mask) {
  if (mask == 0) return 0;
  const cpu_set_t cpus = CpuSetOf(mask);
  if (id < 0) return sched_setaffinity(0, sizeof cpus, &cpus) == 0 ? 1 : 0;
  ThreadTable& table = g_threads();
  const std::lock_guard guard(table.lock);
  const ScriptThread* thread = table.FindLive(id);
  if (thread == nullptr) return 0;
  return pthread_setaffinity_np(thread->host, sizeof cpus, &cpus) == 0 ? 1 : 0;
}

uint32_t MorvCpuZero() {
  return 0;
}

uint32_t MorvCpuSet(int cpu, uint32_t mask) {
  return cpu < 0 || cpu > 31 ? mask : mask | uint32_t{1} << cpu;
}

int MorvCpuCount() {
  const long count = sysconf(_SC_NPROCESSORS_ONLN);
  return count < 1 ? 1 : static_cast<int>(count);
}

void MorvSleepMs(int milliseconds) {
  if (milliseconds < 1) return;
  timespec left{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
  while (nanosleep(&left, &left) != 0 && errno == EINTR) {
  }
}

}  // namespace vorc
