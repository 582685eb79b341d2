#include "morv/editor.h"

#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string_view>
#include <utility>

#ifdef MORV_LINE_EDITING
#include <editline/readline.h>
#endif

namespace vorc {

namespace {

volatile std::sig_atomic_t interrupted = 0;
volatile std::sig_atomic_t reading = 0;
timer_t reminder;

void Remind(long milliseconds) {
  const timespec interval = {0, milliseconds * 1'000'000};
  const itimerspec times = {interval, interval};
  timer_settime(reminder, 0, &times, nullptr);
}

// The default would end the program; a signal that is only noted ends the line in hand. One that comes
// just ahead of the wait for a key does not end that, so the reminders behind it do.
void NoteInterrupts() {
  constexpr long kUntilReminded = 20;
  sigevent event{};
  event.sigev_notify = SIGEV_SIGNAL;
  event.sigev_signo = SIGALRM;
  timer_create(CLOCK_MONOTONIC, &event, &reminder);
  struct sigaction action {};
  action.sa_handler = [](int) {};
  sigaction(SIGALRM, &action, nullptr);
  action.sa_handler = [](int) {
    interrupted = 1;
    if (reading != 0) Remind(kUntilReminded);
  };
  sigaction(SIGINT, &action, nullptr);
}

/// While a line is read.
class Reading {
 public:
  Reading() {
    interrupted = 0;
    reading = 1;
  }
  ~Reading() {
    reading = 0;
    Remind(0);
  }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
};

#ifdef MORV_LINE_EDITING
std::vector<std::string> completed_words;

// The library asks again and again, with `state` above 0, until there are no more.
char* NextCompletion(const char* begin, int state) {
  static size_t next;
  if (state == 0) next = 0;
  while (next < completed_words.size()) {
    const std::string& word = completed_words[next++];
    if (word.starts_with(begin)) return strdup(word.c_str());
  }
  return nullptr;
}

// Files inside of quotes, as the library does it by itself; names elsewhere.
char** Complete(const char* text, int start, int) {
  const std::string_view before(rl_line_buffer, static_cast<size_t>(start));
  size_t quotes = 0;
  for (const char c : before) quotes += c == '"' ? 1 : 0;
  if (quotes % 2 == 1) return nullptr;
  rl_attempted_completion_over = 1;
  rl_completion_append_character = '(';
  return rl_completion_matches(text, NextCompletion);
}

std::string HistoryFile() {
  const char* state = std::getenv("XDG_STATE_HOME");
  const char* home = std::getenv("HOME");
  if (state != nullptr && *state != '\0') {
    mkdir(state, 0700);
    return std::string(state) + "/morv_history";
  }
  return home == nullptr || *home == '\0' ? "" : std::string(home) + "/.morv_history";
}
#endif

}  // namespace

#ifdef MORV_LINE_EDITING
Editor::Editor(std::vector<std::string> words) : history_file_(HistoryFile()) {
  constexpr int kMostInputs = 1000;
  completed_words = std::move(words);
  rl_attempted_completion_function = Complete;
  rl_initialize();
  stifle_history(kMostInputs);
  if (!history_file_.empty()) read_history(history_file_.c_str());
  NoteInterrupts();
}

Editor::~Editor() {
  if (history_file_.empty()) return;
  const mode_t mask = umask(077);
  write_history(history_file_.c_str());
  umask(mask);
}

Editor::End Editor::Read(const char* prompt, std::string* line) {
  const Reading reading_now;
  char* typed = readline(prompt);
  if (typed == nullptr) return interrupted != 0 ? End::kInterrupted : End::kOver;
  *line = typed;
  std::free(typed);
  return interrupted != 0 ? End::kInterrupted : End::kLine;
}

void Editor::Remember(const std::string& input) {
  std::string flat = input;
  for (char& c : flat) c = c == '\n' ? ' ' : c;
  add_history(flat.c_str());
}
#else
Editor::Editor(std::vector<std::string>) {
  NoteInterrupts();
}

Editor::~Editor() = default;

Editor::End Editor::Read(const char* prompt, std::string* line) {
  const Reading reading_now;
  std::fputs(prompt, stdout);
  line->clear();
  for (;;) {
    const int c = std::getchar();
    if (c == '\n') return End::kLine;
    if (c != EOF) {
      *line += static_cast<char>(c);
      continue;
    }
    const bool signalled = errno == EINTR && interrupted != 0;
    std::clearerr(stdin);
    return signalled ? End::kInterrupted : End::kOver;
  }
}

void Editor::Remember(const std::string&) {}
#endif

}  // namespace vorc
