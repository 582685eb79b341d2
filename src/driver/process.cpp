#include "driver/process.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "base/console.h"
#include "base/host_stack.h"
#include "driver/compile.h"
#include "lib/processes.h"
#include "lib/sandbox.h"
#include "net/https_client.h"

#if defined(__SANITIZE_ADDRESS__)
#define VORC_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VORC_SANITIZED
#endif
#endif

namespace vorc {

namespace {

// Deeply nested sources and scripts that recurse need more than the host gives a first thread.
constexpr size_t kStackSize = size_t{512} << 20;

#ifndef VORC_SANITIZED
constexpr size_t kStackGuard = size_t{64} << 10;
#endif

struct Run {
  const std::function<int()>* work;
  int status;
};

#ifdef VORC_SANITIZED
// The sanitizers know the stacks of threads, and only those.
void* RunOnThread(void* argument) {
  auto* run = static_cast<Run*>(argument);
  run->status = (*run->work)();
  return nullptr;
}
#else
Run* current_run = nullptr;

void RunOnStack() {
  current_run->status = (*current_run->work)();
}
#endif

// Were one of the standard descriptors free, the next file that is opened would become standard
// output. What stands in for it can't be written, so that lost output is told.
bool OpenMissingStreams() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    if (open("/dev/null", descriptor == STDERR_FILENO ? O_WRONLY : O_RDONLY) != descriptor) return false;
  }
  return true;
}

[[noreturn]] void FailForMemory() {
  WriteErrors("vorc: failed (not enough memory)\n");
  _exit(kExitFailure);
}

}  // namespace

bool PrepareProcess() {
  // Where memory doesn't even suffice for an exception, or a thread of a script has none.
  std::set_terminate(FailForMemory);
  if (!OpenMissingStreams()) return false;
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  std::setvbuf(stderr, nullptr, _IONBF, 0);
  IgnoreWriteSignals();
  std::signal(SIGCHLD, SIG_DFL);
  // What a sandbox confines is settled before a script can touch the environment.
  if (MorvSandboxActive()) PrivateAddressesAllowed();
  return true;
}

int WithMemory(const std::function<int()>& work) {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    WriteErrors("vorc: failed (not enough memory)\n");
    return kExitFailure;
  }
}

#ifdef VORC_SANITIZED
int RunWithLargeStack(const std::function<int()>& work) {
  Run run{&work, kExitFailure};
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, kStackSize);
  pthread_t thread;
  if (pthread_create(&thread, &attributes, RunOnThread, &run) != 0)
    RunOnThread(&run);
  else
    pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  return run.status;
}

int Leave(int status) {
  return status;
}
#else
// Runs on a stack that is reserved and costs nothing until it is used; a thread would cost more.
int RunWithLargeStack(const std::function<int()>& work) {
  void* memory = mmap(nullptr, kStackSize, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_STACK, -1, 0);
  if (memory == MAP_FAILED || mprotect(memory, kStackGuard, PROT_NONE) != 0) return work();
  Run run{&work, kExitFailure};
  current_run = &run;
  UseHostStack(static_cast<const char*>(memory), kStackSize);
  ucontext_t here;
  ucontext_t there;
  getcontext(&there);
  there.uc_stack.ss_sp = memory;
  there.uc_stack.ss_size = kStackSize;
  there.uc_link = &here;
  makecontext(&there, RunOnStack, 0);
  swapcontext(&here, &there);
  return run.status;
}

// Everything has been written and closed: what is left would only give memory back piece by piece.
int Leave(int status) {
  std::fflush(nullptr);
  _exit(status);
}
#endif

}  // namespace vorc
