#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/descriptor.h"
#include "base/handle_table.h"
#include "net/child_groups.h"

namespace vorc {

/// A tool server: a child process that speaks JSON-RPC 2.0 over its standard input and output, a
/// message a line (Model Context Protocol, 2025-03-26).
class McpServer {
 public:
  /// Starts the command and shakes hands. Null if it can't be started or doesn't answer.
  static std::unique_ptr<McpServer> Start(const std::string& command);

  McpServer(const McpServer&) = delete;
  McpServer& operator=(const McpServer&) = delete;
  /// Ends the child at once, if Finish has not been called.
  ~McpServer();

  /// The answer of `tools/list`, a line of JSON. Empty if the server is gone.
  std::string ListTools();
  /// The text of a tool's answer, or all of the answer where it has none. Arguments are a JSON object,
  /// which may be written with single quotes only; none stand for an empty object.
  std::string Call(std::string_view tool, std::string arguments, size_t capacity);

  /// Tells the child that nothing more comes.
  void CloseInput() { to_child_.Close(); }
  /// Waits for the child until `deadline`, then ends it.
  void Finish(std::chrono::steady_clock::time_point deadline);

 private:
  McpServer() = default;
  bool Launch(const std::string& command);
  bool ShakeHands();
  bool Send(std::string_view line);
  bool ReadLine(std::string& line);
  /// The answer to the request with the next number. Empty on failure.
  std::string morv_mcp_roundtrip(std::string_view method_and_parameters);

  pid_t pid_ = -1;
  ChildGroup group_;
  Descriptor to_child_;
  Descriptor from_child_;
  int32_t next_id_ = 1;
  std::string read_ahead_;
  size_t read_place_ = 0;
};

/// The tool servers of a script's run, by handles from 1 to 4095 that are never used again.
class McpClients {
 public:
  McpClients() = default;
  McpClients(const McpClients&) = delete;
  McpClients& operator=(const McpClients&) = delete;
  /// Disconnects all that are left, within three seconds in all.
  ~McpClients();

  /// A handle, or 0. Inside the sandbox no server starts.
  int32_t MorvMcpConnect(const std::string& command);
  std::string MorvMcpListTools(int32_t handle);
  std::string MorvMcpCall(int32_t handle, std::string_view tool, std::string_view arguments, size_t capacity);
  void MorvMcpDisconnect(int32_t handle);

 private:
  HandleTable<McpServer> servers_;
};

}  // namespace vorc
