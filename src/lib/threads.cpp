#include "lib/threads.h"

#include <sched.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

namespace vorc {

namespace {

cpu_set_t CpuSetOf(uint32_t mask) {
  cpu_set_t cpus;
  CPU_ZERO(&cpus);
  for (size_t cpu = 0; cpu < 32; ++cpu) {
    if ((mask >> cpu & 1) != 0) CPU_SET(cpu, &cpus);
  }
  return cpus;
}

}  // namespace

void* ScriptThreads::morv_thread_body(void* argument) {
  auto* thread = static_cast<Thread*>(argument);
  thread->result = thread->processes->MorvExec(thread->command);
  return nullptr;
}

// Null for a number that is out of range or whose thread is not there to be joined.
ScriptThreads::Thread* ScriptThreads::FindLive(int id) {
  if (id < 0 || id >= kMaxScriptThreads) return nullptr;
  Thread& thread = entries_[static_cast<size_t>(id)];
  return thread.IsLive() ? &thread : nullptr;
}

int ScriptThreads::MorvThreadCreate(std::string_view command) {
  if (command.empty()) return -1;
  const std::lock_guard guard(lock_);
  int id = 0;
  while (id < kMaxScriptThreads && entries_[static_cast<size_t>(id)].used) ++id;
  if (id == kMaxScriptThreads) return -1;
  Thread& thread = entries_[static_cast<size_t>(id)];
  thread.processes = &processes_;
  thread.command = command;
  thread.used = true;
  thread.started = pthread_create(&thread.host, nullptr, morv_thread_body, &thread) == 0;
  if (thread.started) return id;
  thread = {};
  return -1;
}

int ScriptThreads::MorvThreadJoin(int id) {
  std::unique_lock guard(lock_);
  Thread* thread = FindLive(id);
  if (thread == nullptr) return -1;
  thread->joined = true;
  guard.unlock();
  pthread_join(thread->host, nullptr);
  guard.lock();
  const int32_t result = thread->result;
  *thread = {};
  return result;
}

int ScriptThreads::MorvThreadBarrier() {
  std::array<bool, kMaxScriptThreads> live{};
  {
    const std::lock_guard guard(lock_);
    for (int id = 0; id < kMaxScriptThreads; ++id) live[static_cast<size_t>(id)] = FindLive(id) != nullptr;
  }
  int count = 0;
  for (int id = 0; id < kMaxScriptThreads; ++id) {
    if (!live[static_cast<size_t>(id)]) continue;
    MorvThreadJoin(id);
    ++count;
  }
  return count;
}

int ScriptThreads::MorvThreadAffinitySet(int id, uint32_t mask) {
  if (mask == 0) return 0;
  const cpu_set_t cpus = CpuSetOf(mask);
  if (id < 0) return sched_setaffinity(0, sizeof cpus, &cpus) == 0 ? 1 : 0;
  const std::lock_guard guard(lock_);
  const Thread* thread = FindLive(id);
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
