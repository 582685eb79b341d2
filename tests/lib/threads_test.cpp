#include "lib/threads.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include <chrono>
#include <csignal>

#include "temp_folder.h"

namespace vorc {
namespace {

TEST(Threads, Are64AtMost) {
  Processes processes;
  ScriptThreads threads(processes);
  TempFolder folder;
  for (int i = 0; i < kMaxScriptThreads; ++i) {
    ASSERT_EQ(threads.MorvThreadCreate("touch " + (folder / std::to_string(i))), i);
  }
  EXPECT_EQ(threads.MorvThreadCreate("true"), -1);
  EXPECT_EQ(threads.MorvThreadJoin(40), 0);
  EXPECT_EQ(threads.MorvThreadCreate("true"), 40);
  EXPECT_EQ(threads.MorvThreadBarrier(), 64);
  EXPECT_EQ(threads.MorvThreadBarrier(), 0);
  for (int i = 0; i < kMaxScriptThreads; ++i) {
    EXPECT_TRUE(std::filesystem::exists(folder / std::to_string(i))) << i;
  }
}

TEST(Threads, AreBoundToProcessors) {
  Processes processes;
  ScriptThreads threads(processes);
  cpu_set_t before;
  sched_getaffinity(0, sizeof before, &before);
  EXPECT_EQ(MorvCpuSet(31, MorvCpuZero()), 0x80000000U);
  EXPECT_EQ(MorvCpuSet(1, MorvCpuSet(0, 0)), 3U);
  EXPECT_EQ(MorvCpuSet(32, 5), 5U);
  EXPECT_EQ(MorvCpuSet(-1, 5), 5U);
  EXPECT_GE(MorvCpuCount(), 1);

  uint32_t allowed = 0;
  for (int cpu = 31; cpu >= 0; --cpu) {
    if (CPU_ISSET(cpu, &before)) allowed = MorvCpuSet(cpu, 0);
  }
  EXPECT_EQ(threads.MorvThreadAffinitySet(-1, 0), 0);
  EXPECT_EQ(threads.MorvThreadAffinitySet(0, allowed), 0);
  EXPECT_EQ(threads.MorvThreadAffinitySet(-1, allowed), 1);
  cpu_set_t now;
  sched_getaffinity(0, sizeof now, &now);
  EXPECT_EQ(CPU_COUNT(&now), 1);
  const int id = threads.MorvThreadCreate("sleep 0.5");
  EXPECT_EQ(threads.MorvThreadAffinitySet(id, allowed), 1);
  EXPECT_EQ(threads.MorvThreadJoin(id), 0);
  sched_setaffinity(0, sizeof before, &before);
}

TEST(Threads, SleepOnAfterASignal) {
  std::signal(SIGALRM, [](int) {});
  const itimerval every{{0, 20'000}, {0, 20'000}};
  setitimer(ITIMER_REAL, &every, nullptr);
  const auto start = std::chrono::steady_clock::now();
  MorvSleepMs(-5);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  MorvSleepMs(150);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(150));
  const itimerval never{};
  setitimer(ITIMER_REAL, &never, nullptr);
  std::signal(SIGALRM, SIG_DFL);
}

}  // namespace
}  // namespace vorc
