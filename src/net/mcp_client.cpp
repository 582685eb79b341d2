#include "net/mcp_client.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <mutex>
#include <optional>
#include <thread>

#include "base/environment.h"
#include "base/format.h"
#include "lib/json.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

using Clock = std::chrono::steady_clock;

constexpr size_t kLineLimit = 65535;
constexpr int kLinesTried = 64;
constexpr size_t kWordLimit = 512;
constexpr size_t kToolSize = 256;
constexpr int kChildFailed = 127;
constexpr auto kGrace = std::chrono::seconds(3);
constexpr auto kPause = std::chrono::milliseconds(10);
constexpr const char* kInitialize =
    R"("method":"initialize","params":{"protocolVersion":"2025-03-26","capabilities":{},)"
    R"("clientInfo":{"name":"morv","version":"1.0"}})";

struct Pipe {
  Descriptor reading;
  Descriptor writing;
};

// Clear of the numbers 0 to 2, which the child replaces.
Descriptor AboveStandardStreams(int number) {
  Descriptor descriptor(number);
  if (number > STDERR_FILENO) return descriptor;
  return Descriptor(fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

std::optional<Pipe> OpenPipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
  Pipe pipe{AboveStandardStreams(ends[0]), AboveStandardStreams(ends[1])};
  if (!pipe.reading || !pipe.writing) return std::nullopt;
  return pipe;
}

// A program of the working folder starts without "./" before its name.
std::string CommandLine(const std::string& command) {
  const std::string word = command.substr(0, command.find(' '));
  const bool plain = !word.empty() && word.find('/') == std::string::npos && word.size() < kWordLimit;
  return plain && access(word.c_str(), X_OK) == 0 ? "./" + command : command;
}

// Between fork and exec nothing may allocate.
[[noreturn]] void RunInChild(const char* command, const Pipe& input, const Pipe& output) {
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::signal(SIGPIPE, SIG_DFL);
  std::signal(SIGXFSZ, SIG_DFL);
  const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
  dup2(input.reading.get(), STDIN_FILENO);
  dup2(output.writing.get(), STDOUT_FILENO);
  if (null >= 0) dup2(null, STDERR_FILENO);
  execl("/bin/sh", "sh", "-c", command, nullptr);
  _exit(kChildFailed);
}

}  // namespace

std::unique_ptr<McpServer> McpServer::Start(const std::string& command) {
  std::unique_ptr<McpServer> server(new McpServer);
  if (!server->Launch(command) || !server->ShakeHands()) return nullptr;
  return server;
}

bool McpServer::Launch(const std::string& command) {
  auto input = OpenPipe();
  auto output = OpenPipe();
  if (!input || !output) return false;
  const std::string line = CommandLine(command);
  std::fflush(stdout);
  {
    const std::lock_guard environment(EnvironmentLock());
    pid_ = fork();
  }
  if (pid_ == 0) RunInChild(line.c_str(), *input, *output);
  if (pid_ > 0) {
    setpgid(pid_, pid_);
    group_.Watch(pid_);
  }
  to_child_ = std::move(input->writing);
  from_child_ = std::move(output->reading);
  return pid_ > 0;
}

McpServer::~McpServer() {
  Finish(Clock::now());
}

void McpServer::Finish(Clock::time_point deadline) {
  CloseInput();
  if (pid_ <= 0) return;
  pid_t ended = RetryInterrupted([&] { return waitpid(pid_, nullptr, WNOHANG); });
  while (ended == 0 && Clock::now() < deadline) {
    std::this_thread::sleep_for(kPause);
    ended = RetryInterrupted([&] { return waitpid(pid_, nullptr, WNOHANG); });
  }
  if (ended == 0) {
    // The shell may have started the server as a child of its own: both are one group.
    kill(-pid_, SIGKILL);
    RetryInterrupted([&] { return waitpid(pid_, nullptr, 0); });
  }
  group_.Release();
  pid_ = -1;
  from_child_.Close();
}

bool McpServer::Send(std::string_view line) {
  std::string message(line);
  message += '\n';
  for (size_t sent = 0; sent < message.size();) {
    const ssize_t count = RetryInterrupted(
        [&] { return write(to_child_.get(), message.data() + sent, message.size() - sent); });
    if (count <= 0) return false;
    sent += static_cast<size_t>(count);
  }
  return true;
}

bool McpServer::ReadLine(std::string& line) {
  line.clear();
  while (true) {
    if (read_place_ == read_ahead_.size()) {
      read_ahead_.resize(kLineLimit);
      read_place_ = 0;
      const ssize_t count =
          RetryInterrupted([&] { return read(from_child_.get(), read_ahead_.data(), read_ahead_.size()); });
      read_ahead_.resize(static_cast<size_t>(std::max<ssize_t>(count, 0)));
      if (count <= 0) return false;
    }
    const size_t end = std::min(read_ahead_.find('\n', read_place_), read_ahead_.size());
    for (; read_place_ < end; ++read_place_) {
      if (read_ahead_[read_place_] != '\r' && line.size() < kLineLimit) line += read_ahead_[read_place_];
    }
    if (end < read_ahead_.size()) {
      ++read_place_;
      return true;
    }
  }
}

std::string McpServer::morv_mcp_roundtrip(std::string_view method_and_parameters) {
  const int32_t id = next_id_++;
  std::string request = Format(R"({"jsonrpc":"2.0","id":%d,)", id);
  request.append(method_and_parameters).append("}");
  if (!Send(request)) return "";
  const std::string mark = Format("\"id\":%d", id);
  std::string line;
  for (int tried = 0; tried < kLinesTried && ReadLine(line); ++tried) {
    if (line.find(mark) != std::string::npos) return line;
  }
  return "";
}

bool McpServer::ShakeHands() {
  return !morv_mcp_roundtrip(kInitialize).empty() &&
         Send(R"({"jsonrpc":"2.0","method":"notifications/initialized"})");
}

std::string McpServer::ListTools() {
  return morv_mcp_roundtrip(R"("method":"tools/list")");
}

std::string McpServer::Call(std::string_view tool, std::string arguments, size_t capacity) {
  if (arguments.empty()) arguments = "{}";
  if (arguments.find('"') == std::string::npos) std::ranges::replace(arguments, '\'', '"');
  const std::string answer =
      morv_mcp_roundtrip(R"("method":"tools/call","params":{"name":")" + MorvJsonEscape(tool, kToolSize) +
                         R"(","arguments":)" + arguments + "}");
  std::string text = MorvJsonGet(answer, "result.content.0.text", capacity);
  return text.empty() ? answer : text;
}

McpClients::~McpClients() {
  const auto deadline = Clock::now() + kGrace;
  for (int32_t handle = 1; handle < HandleTable<McpServer>::kSlotCount; ++handle) {
    if (McpServer* server = servers_.Find(handle)) server->CloseInput();
  }
  for (int32_t handle = 1; handle < HandleTable<McpServer>::kSlotCount; ++handle) {
    if (McpServer* server = servers_.Find(handle)) server->Finish(deadline);
  }
}

int32_t McpClients::MorvMcpConnect(const std::string& command) {
  if (command.empty() || !MorvSandboxAllowsExec(command)) return 0;
  auto server = McpServer::Start(command);
  return server == nullptr ? 0 : servers_.Add(std::move(server));
}

std::string McpClients::MorvMcpListTools(int32_t handle) {
  McpServer* server = servers_.Find(handle);
  return server == nullptr ? "" : server->ListTools();
}

std::string McpClients::MorvMcpCall(int32_t handle, std::string_view tool, std::string_view arguments,
                                    size_t capacity) {
  McpServer* server = servers_.Find(handle);
  return server == nullptr ? "" : server->Call(tool, std::string(arguments), capacity);
}

void McpClients::MorvMcpDisconnect(int32_t handle) {
  McpServer* server = servers_.Find(handle);
  if (server == nullptr) return;
  server->Finish(Clock::now() + kGrace);
  servers_.Free(handle);
}

}  // namespace vorc
