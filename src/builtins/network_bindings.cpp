#include <string>

#include "builtins/bindings.h"
#include "net/mcp_client.h"

namespace vorc {

namespace {

McpClients& ServersOf(const BuiltinCall& call) {
  return call.runtime().State<McpClients>();
}

void MorvMcpConnectBuiltin(BuiltinCall& call) {
  const auto command = call.Text(0);
  call.ReturnInt(command ? ServersOf(call).MorvMcpConnect(std::string(*command)) : 0);
}

void MorvMcpListToolsBuiltin(BuiltinCall& call) {
  const auto handle = call.Int(0);
  call.ReturnText(handle ? ServersOf(call).MorvMcpListTools(*handle) : "");
}

void MorvMcpCallBuiltin(BuiltinCall& call) {
  const auto handle = call.Int(0);
  const auto tool = call.Text(1);
  const auto arguments = call.Text(2);
  const bool fit = handle && tool && arguments;
  call.ReturnText(fit ? ServersOf(call).MorvMcpCall(*handle, *tool, *arguments, BuiltinCall::kTextLimit)
                      : "");
}

void MorvMcpDisconnectBuiltin(BuiltinCall& call) {
  if (const auto handle = call.Int(0)) ServersOf(call).MorvMcpDisconnect(*handle);
}

constexpr BuiltinBinding kBuiltins[] = {
    {"morv_mcp_connect", MorvMcpConnectBuiltin},
    {"morv_mcp_list_tools", MorvMcpListToolsBuiltin},
    {"morv_mcp_call", MorvMcpCallBuiltin},
    {"morv_mcp_disconnect", MorvMcpDisconnectBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> NetworkBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
