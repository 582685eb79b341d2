#include "lib/processes.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <thread>
#include <vector>

#include "lib/command_line.h"
#include "temp_folder.h"

namespace vorc {
namespace {

TEST(CommandLine, SplitsIntoWordsUnlessAShellIsNeeded) {
  using Words = std::vector<std::string>;
  const struct {
    const char* command;
    bool shell;
    Words words;
  } cases[] = {
      {"echo a b", false, {"echo", "a", "b"}},
      {" \t echo\ta  ", false, {"echo", "a"}},
      {R"(echo "a  b")", false, {"echo", "a  b"}},
      {R"(a"b c"d "" e)", false, {"ab cd", "", "e"}},
      {R"(bash -c "echo \"a  b\" | cat \\")", false, {"bash", "-c", R"(echo "a  b" | cat \)"}},
      {R"("\d\n")", false, {R"(\d\n)"}},
      {R"(a\ b)", false, {"a\\", "b"}},
      {R"(\\ \")", false, {"\\\\", "\\"}},
      {R"(open "to the | end)", false, {"open", "to the | end"}},
      {R"("\")", false, {"\""}},
      {R"("\)", false, {"\\"}},
      {"''", false, {"''"}},
      {"", false, {}},
      {" \t ", false, {}},
      {"a | b", true, {"a", "|", "b"}},
      {"a&b", true, {"a&b"}},
      {R"("a" > b)", true, {"a", ">", "b"}},
      {R"(\"<\")", false, {R"(\<")"}},
      {"a ; b $x (c)", false, {"a", ";", "b", "$x", "(c)"}},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(CommandNeedsShell(each.command), each.shell) << each.command;
    EXPECT_EQ(SplitCommand(each.command).value_or(Words()), each.words) << each.command;
  }
}

TEST(CommandLine, TakesAtMost127Words) {
  Processes processes;
  std::string command;
  for (int i = 0; i < 127; ++i) command += "\"\" ";
  EXPECT_EQ(SplitCommand(command).value().size(), 127U);
  EXPECT_EQ(SplitCommand(command + "x"), std::nullopt);
  EXPECT_EQ(processes.MorvExec("true " + command), -1);
}

TEST(Processes, AnswersTheStatus) {
  Processes processes;
  const struct {
    const char* command;
    int status;
  } cases[] = {
      {"true", 0},
      {"false", 1},
      {"no-such-program", -1},
      {"/", -1},
      {"no-such-program | true", 0},
      {"true | no-such-program 2>/dev/null", 127},
      {R"(sh -c "exit 255")", 255},
      {R"(sh -c "kill -9 $$")", 137},
      {R"("")", -1},
      {"", -1},
      {"  ", -1},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(processes.MorvExec(each.command), each.status) << each.command;
    EXPECT_EQ(processes.MorvExecStatus(), each.status) << each.command;
  }
  EXPECT_EQ(processes.MorvExec({}), -1);
  EXPECT_EQ(processes.MorvExec("echo " + std::string(10'000'000, 'x')), -1);
}

TEST(Processes, CapturesBothOutputsUpToTheCapacity) {
  Processes processes;
  EXPECT_EQ(processes.MorvExecCapture("echo out; echo err >&2", 100), "out\nerr\n");
  EXPECT_EQ(processes.MorvExecCapture("echo abcdef", 4), "abc");
  EXPECT_EQ(processes.MorvExecCapture("echo abcdef", 1), "");
  EXPECT_EQ(processes.MorvExecStatus(), 0);
  EXPECT_EQ(processes.MorvExecCapture("echo abcdef", 0), "");
  EXPECT_EQ(processes.MorvExecCapture("no-such-program", 100), "");
  EXPECT_EQ(processes.MorvExecStatus(), -1);
  EXPECT_EQ(processes.MorvExecCapture("seq 500000 | cat; exit 7 ", 10), "1\n2\n3\n4\n5");
  EXPECT_EQ(processes.MorvExecStatus(), 7);
  EXPECT_EQ(processes.MorvExecCapture("head -c 3000000 /dev/zero", 4'000'000).size(), 3'000'000U);
}

TEST(Processes, WritesBothOutputsToAFile) {
  Processes processes;
  TempFolder folder;
  const std::string path = folder.Write("out", "something longer that was there before");
  EXPECT_EQ(processes.MorvExecToFile("echo out; echo err >&2", path), 0);
  EXPECT_EQ(FileText(path), "out\nerr\n");
  EXPECT_EQ(processes.MorvExecToFile("true", folder / "missing/out"), 127);
  EXPECT_EQ(processes.MorvExecToFile("true", ""), 127);
  EXPECT_EQ(processes.MorvExecToFile("echo x", "/dev/full"), 1);
  EXPECT_EQ(processes.MorvExecToFile("no-such-program", path), -1);
}

TEST(Processes, LeaveNoDescriptorBehind) {
  Processes processes;
  TempFolder folder;
  const long before = OpenDescriptors();
  int inheritable = 0;
  for (int i = 0; i < 1024; ++i) {
    const int flags = fcntl(i, F_GETFD);
    if (flags >= 0 && (flags & FD_CLOEXEC) == 0) ++inheritable;
  }
  const std::string seen = processes.MorvExecCapture("ls /proc/self/fd", 4096);
  EXPECT_EQ(std::ranges::count(seen, '\n'), inheritable + 1) << "one more is the folder that ls reads";
  processes.MorvExec("no-such-program");
  processes.MorvExecToFile("no-such-program", folder / "y");
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST(Processes, WriteSignalsEndChildrenOnly) {
  Processes processes;
  IgnoreWriteSignals();
  EXPECT_EQ(processes.MorvExec("sh -c \"kill -PIPE $$\""), 128 + SIGPIPE);
  EXPECT_EQ(processes.MorvExec("sh -c \"kill -XFSZ $$\""), 128 + SIGXFSZ);
  for (const int number : {SIGPIPE, SIGXFSZ}) {
    std::raise(number);
    std::signal(number, SIG_DFL);
  }
}

TEST(Processes, WorkWithoutStandardStreams) {
  Processes processes;
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_EXIT(
      {
        for (int stream = 0; stream < 3; ++stream) close(stream);
        const bool right = processes.MorvExecCapture("echo a; echo b >&2", 100) == "a\nb\n" &&
                           processes.MorvExec("no-such-program") == -1 && processes.MorvExec("true") == 0;
        std::_Exit(right ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Processes, RunFromManyThreadsWhileOthersAllocate) {
  Processes processes;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < 25; ++i) {
        EXPECT_EQ(processes.MorvExecCapture("echo 12345 | cat", 100), "12345\n");
        EXPECT_EQ(processes.MorvExecCapture("echo " + std::string(1000, 'x'), 1024).size(), 1001U);
      }
    });
  }
  for (auto& thread : threads) thread.join();
}

}  // namespace
}  // namespace vorc
