#include "lib/shell_utils.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "lib/globbing.h"
#include "lib/processes_by_name.h"
#include "lib/sandbox.h"
#include "lib/wildcard.h"
#include "scratch_folder.h"

namespace vorc {
namespace {

class ShellUtils : public ScratchFolder {};

// The plainest matcher there is, to check the fast one against.
bool SlowlyMatches(std::string_view pattern, std::string_view name) {
  if (pattern.empty()) return name.empty();
  if (pattern[0] == '*') {
    return SlowlyMatches(pattern.substr(1), name) ||
           (!name.empty() && SlowlyMatches(pattern, name.substr(1)));
  }
  return !name.empty() && (pattern[0] == '?' || pattern[0] == name[0]) &&
         SlowlyMatches(pattern.substr(1), name.substr(1));
}

std::string Spelled(int number, int length, std::string_view letters) {
  std::string text;
  for (; length > 0; --length, number /= static_cast<int>(letters.size())) {
    text += letters[static_cast<size_t>(number) % letters.size()];
  }
  return text;
}

TEST(Wildcard, AgreesWithThePlainMatcherOnAllShortTexts) {
  for (int pattern = 0; pattern < 4 * 4 * 4 * 4; ++pattern) {
    const std::string p = Spelled(pattern, 4, "ab*?");
    for (int length = 0; length <= 5; ++length) {
      for (int name = 0; name < 1 << length; ++name) {
        const std::string n = Spelled(name, length, "ab");
        ASSERT_EQ(morv_util_wild(p, n), SlowlyMatches(p, n)) << p << ' ' << n;
      }
    }
  }
}

TEST(Wildcard, IgnoresCaseAndStaysFast) {
  EXPECT_TRUE(morv_util_wild("*.TXT", "Notes.txt"));
  EXPECT_FALSE(morv_util_wild("[", "{"));
  EXPECT_TRUE(morv_util_wild("", "anything"));
  std::string pattern;
  for (int i = 0; i < 100; ++i) pattern += "*a";
  EXPECT_FALSE(morv_util_wild(pattern + "*b", std::string(10'000, 'a')));
}

TEST_F(ShellUtils, HeadAndTailTakeWholeLines) {
  const std::string path = Put("f", "1\n2\r\n3\n\n5");
  EXPECT_EQ(MorvUtilHead(path, 2), "1\n2\r\n");
  EXPECT_EQ(MorvUtilHead(path, 99), "1\n2\r\n3\n\n5");
  EXPECT_EQ(MorvUtilHead(path, 0), "");
  EXPECT_EQ(MorvUtilTail(path, 1), "5");
  EXPECT_EQ(MorvUtilTail(path, 3), "3\n\n5");
  EXPECT_EQ(MorvUtilTail(path, 2147483647), "1\n2\r\n3\n\n5");
  EXPECT_EQ(MorvUtilTail(path, -1), "");
  EXPECT_EQ(MorvUtilTail(Put("f", "1\n2\n"), 1), "2\n");
  EXPECT_EQ(MorvUtilTail(Put("f", "\n\n"), 1), "\n");
  EXPECT_EQ(MorvUtilTail(Put("f", ""), 1), "");
  EXPECT_EQ(MorvUtilTail(folder_, 1) + MorvUtilHead(folder_, 1) + MorvUtilCat(folder_), "");
}

TEST_F(ShellUtils, TailReachesBackAsFarAsNeeded) {
  std::string text;
  for (int i = 0; i < 40'000; ++i) text += std::to_string(i) + "\n";
  const std::string path = Put("f", text);
  for (const int count : {1, 10'000, 12'000, 39'999, 40'000, 40'001}) {
    const std::string tail = MorvUtilTail(path, count);
    EXPECT_EQ(std::count(tail.begin(), tail.end(), '\n'), std::min(count, 40'000));
    EXPECT_TRUE(tail.starts_with(std::to_string(std::max(0, 40'000 - count)) + "\n")) << count;
  }
  const std::string long_line(200'000, 'x');
  EXPECT_EQ(MorvUtilTail(Put("f", "a\n" + long_line + "\nb\n"), 2), long_line + "\nb\n");
}

TEST_F(ShellUtils, GrepTakesEachLineOnce) {
  struct Case {
    std::string needle, expected;
    int32_t count;
  };
  const std::string nul(1, '\0');
  const std::string text = "aXaXa\nb\r\n\nc" + nul + "X\nXlast";
  const std::string path = Put("f", text);
  const Case cases[] = {{"X", "aXaXa\nc" + nul + "X\nXlast", 3},
                        {"b", "b\r\n", 1},
                        {"", text, 5},
                        {"X\n", "c" + nul + "X\n", 1},
                        {"\n", "aXaXa\nb\r\n\nc" + nul + "X\n", 4},
                        {"a\nb", "", 0},
                        {"x", "", 0}};
  for (const Case& c : cases) {
    EXPECT_EQ(MorvUtilGrep(path, c.needle), c.expected) << c.needle;
    EXPECT_EQ(MorvUtilGrepCount(path, c.needle), c.count) << c.needle;
  }
  EXPECT_EQ(MorvUtilGrep(At("missing"), "a"), "");
  EXPECT_EQ(MorvUtilGrepCount(folder_, "a"), 0);
}

TEST_F(ShellUtils, GrepFindsLinesLongerThanABlock) {
  const std::string line = std::string(700'000, 'x') + "needle" + std::string(700'000, 'y') + "\n";
  EXPECT_EQ(MorvUtilGrep(Put("f", "a\n" + line + "b\n"), "needle"), line);
}

TEST(Cut, GivesALineForEachLine) {
  struct Case {
    std::string text, delimiter;
    int32_t field;
    std::string expected;
  };
  const Case cases[] = {{"a,b,c\nd\n\n,f", ",", 2, "b\n\n\nf\n"},
                        {"a::b:c\n", "::", 2, "b:c\n"},
                        {"a,b\r\nc\r,d\r\n", ",", 1, "a\nc\n"},
                        {"a,b\r\n", ",", 2, "b\n"},
                        {"a,b", ",", 3, "\n"},
                        {"", ",", 1, ""},
                        {"a,b", "", 1, ""},
                        {"a,b", ",", 0, ""}};
  for (const Case& c : cases) EXPECT_EQ(MorvUtilCut(c.text, c.delimiter, c.field), c.expected) << c.text;
}

TEST_F(ShellUtils, ListingsEndAtTheSandbox) {
  std::filesystem::create_directory(At("in"));
  Put("in/f", "");
  Put("out", "");
  std::filesystem::create_symlink("..", At("in/up"));
  MorvSandboxSetRoot(At("in"));
  EXPECT_EQ(MorvUtilFind(At("in"), ""), At("in/f") + "\n");
  EXPECT_EQ(MorvUtilFind(At("in/up"), "") + MorvUtilFind(folder_, "") + MorvUtilLs(folder_), "");
  EXPECT_EQ(MorvGlob(At("in/*")), std::vector<std::string>{"f"});
  EXPECT_EQ(MorvGlob(At("o*")), std::vector<std::string>{});
  MorvSandboxSetRoot("");
}

class NamedProcesses : public ScratchFolder {
 protected:
  ~NamedProcesses() override {
    for (const pid_t pid : started_) {
      kill(pid, SIGKILL);
      waitpid(pid, nullptr, 0);
    }
  }

  // Starts a copy of sleep under a name of its own.
  pid_t Start(const std::string& name) {
    std::filesystem::copy_file("/bin/sleep", At(name), std::filesystem::copy_options::skip_existing);
    int ready[2];
    if (pipe2(ready, O_CLOEXEC) != 0) return -1;
    const pid_t pid = fork();
    if (pid == 0) {
      execl(At(name).c_str(), name.c_str(), "60", nullptr);
      _exit(127);
    }
    close(ready[1]);
    char byte;
    while (read(ready[0], &byte, 1) < 0) continue;  // ends once the child's exec closed its copy
    close(ready[0]);
    started_.push_back(pid);
    return pid;
  }

  std::vector<pid_t> started_;
  Processes processes_;
};

TEST_F(NamedProcesses, AreFoundByNameInAnyCase) {
  const std::string name = "Vp" + std::to_string(getpid());
  const pid_t first = Start(name);
  const pid_t second = Start(name);
  EXPECT_EQ(MorvUtilRunning("vP" + name.substr(2) + ".EXE"), 2);
  EXPECT_EQ(MorvUtilRunning(name.substr(0, name.size() - 1)), 0);
  EXPECT_EQ(MorvUtilRunning(std::to_string(first)), 1);
  EXPECT_EQ(MorvUtilKill(name, processes_), 2);
  for (const pid_t pid : {first, second}) {
    int status = 0;
    waitpid(pid, &status, 0);
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
  }
  EXPECT_EQ(MorvUtilRunning(name) + MorvUtilRunning(std::to_string(first)), 0);
  EXPECT_EQ(MorvUtilKill(std::to_string(first), processes_), 0);
  started_.clear();
}

TEST_F(NamedProcesses, OfOthersAreOutOfReachInASandbox) {
  const std::string name = "Vq" + std::to_string(getpid());
  const pid_t foreign = Start(name);
  std::thread child([&] { EXPECT_EQ(processes_.MorvExec(At(name) + " 60"), 128 + SIGKILL); });
  while (MorvUtilRunning(name) < 2) usleep(1000);
  MorvSandboxSetRoot(folder_);
  EXPECT_EQ(MorvUtilKill(std::to_string(foreign), processes_), 0);
  EXPECT_EQ(MorvUtilKill(name, processes_), 1);
  MorvSandboxSetRoot("");
  child.join();
  EXPECT_EQ(MorvUtilRunning(name), 1);
}

TEST_F(NamedProcesses, LongNamesAreComparedWhole) {
  const std::string name = "a-long-program-name-" + std::to_string(getpid());
  const pid_t pid = Start(name);
  EXPECT_TRUE(morv_proc_name_matches(pid, name));
  EXPECT_TRUE(morv_proc_name_matches(pid, name.substr(0, 15)));
  EXPECT_FALSE(morv_proc_name_matches(pid, name + "x"));
  EXPECT_EQ(MorvUtilKill(std::to_string(pid), processes_), 1);
}

TEST_F(NamedProcesses, WhatNamesNoProcessAnswersZero) {
  for (const std::string target : {"", ".exe", "0", "99999999999999999999", "no such program", "-1"}) {
    EXPECT_EQ(MorvUtilRunning(target), 0) << target;
    EXPECT_EQ(MorvUtilKill(target, processes_), 0) << target;
  }
  EXPECT_EQ(MorvUtilRunning(std::string(600, 'x')), 0);
  EXPECT_EQ(MorvUtilRunning("1"), 1);
}

}  // namespace
}  // namespace vorc
