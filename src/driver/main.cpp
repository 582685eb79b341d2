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
#include <string>
#include <vector>

#include "base/console.h"
#include "base/host_stack.h"
#include "driver/compile.h"
#include "driver/options.h"
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

namespace {

constexpr const char* kVersion = "1.0.0+edf87ed-dirty";
// Deeply nested sources and scripts that recurse need more than the host gives a first thread.
constexpr size_t kStackSize = size_t{512} << 20;

constexpr size_t kStackGuard = size_t{64} << 10;

struct Run {
  const vorc::Options* options;
  int status;
};

#ifdef VORC_SANITIZED
// The sanitizers know the stacks of threads, and only those.
void* RunOnThread(void* argument) {
  auto* run = static_cast<Run*>(argument);
  run->status = vorc::RunCompilation(*run->options);
  return nullptr;
}

int RunWithLargeStack(const vorc::Options& options) {
  Run run{&options, vorc::kExitFailure};
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
Run* current_run = nullptr;

void RunOnStack() {
  current_run->status = vorc::RunCompilation(*current_run->options);
}

// Runs on a stack that is reserved and costs nothing until it is used; a thread would cost more.
int RunWithLargeStack(const vorc::Options& options) {
  void* memory = mmap(nullptr, kStackSize, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_STACK, -1, 0);
  if (memory == MAP_FAILED || mprotect(memory, kStackGuard, PROT_NONE) != 0)
    return vorc::RunCompilation(options);
  Run run{&options, vorc::kExitFailure};
  current_run = &run;
  vorc::UseHostStack(static_cast<const char*>(memory), kStackSize);
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

// Were one of the standard descriptors free, the next file that is opened would become standard
// output. What stands in for it can't be written, so that lost output is told.
bool OpenMissingStreams() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) continue;
    if (open("/dev/null", descriptor == STDERR_FILENO ? O_WRONLY : O_RDONLY) != descriptor) return false;
  }
  return true;
}

// The command line's words, and what they ask for.
int RunProgram(int argc, char** argv) {
  if (!OpenMissingStreams()) return vorc::kExitFailure;
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  std::setvbuf(stderr, nullptr, _IONBF, 0);
  vorc::IgnoreWriteSignals();
  std::signal(SIGCHLD, SIG_DFL);
  // What a sandbox confines is settled before a script can touch the environment.
  if (vorc::MorvSandboxActive()) vorc::PrivateAddressesAllowed();

  const std::vector<std::string> arguments(argv + 1, argv + argc);
  vorc::Options options;
  if (arguments.empty()) {
    vorc::PrintUsage();
    return vorc::kExitFailure;
  }
  if (const auto status = vorc::ParseOptions(arguments, &options)) return *status;
  if (options.version) {
    vorc::SendOutput(std::string("vorc ") + kVersion);
    return vorc::OutputStatus(vorc::kExitSuccess);
  }
  if (const auto status = vorc::SettleWidths(&options)) return *status;
  if (options.llmtrace) setenv("VORC_LLMTRACE", "1", 1);
  if (!options.script_arguments.empty()) {
    setenv("QUERY_STRING", vorc::BuildQueryString(options.script_arguments).c_str(), 0);
  }
  if (options.source.empty()) {
    vorc::PrintUsage();
    return vorc::kExitFailure;
  }
  return Leave(vorc::OutputStatus(RunWithLargeStack(options)));
}

}  // namespace

int main(int argc, char** argv) {
  // Where memory doesn't even suffice for an exception, or a thread of a script has none.
  std::set_terminate([] {
    vorc::WriteErrors("vorc: failed (not enough memory)\n");
    _exit(vorc::kExitFailure);
  });
  try {
    return RunProgram(argc, argv);
  } catch (const std::bad_alloc&) {
    vorc::WriteErrors("vorc: failed (not enough memory)\n");
    return vorc::kExitFailure;
  }
}
