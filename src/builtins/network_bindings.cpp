#include <string>

#include "builtins/bindings.h"
#include "net/https_client.h"
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

HttpsClient& ClientOf(const BuiltinCall& call) {
  return call.runtime().State<HttpsClient>();
}

void MorvHttpsGetBuiltin(BuiltinCall& call) {
  const HttpBody body = ClientOf(call).MorvHttpsGet(call.Text(0).value_or(""), call.Text(1).value_or(""));
  call.ReturnText(body.text(), BuiltinCall::kNoLimit);
}

void MorvHttpsPostBuiltin(BuiltinCall& call) {
  const HttpBody body = ClientOf(call).MorvHttpsPost(call.Text(0).value_or(""), call.Text(1).value_or(""),
                                                     call.Text(2).value_or(""));
  call.ReturnText(body.text(), BuiltinCall::kNoLimit);
}

void MorvHttpsStatusBuiltin(BuiltinCall& call) {
  call.ReturnInt(ClientOf(call).MorvHttpsStatus());
}

void MorvOpenAIChatBuiltin(BuiltinCall& call) {
  const auto url = call.Text(0);
  const auto key = call.Text(1);
  const auto model = call.Text(2);
  const auto prompt = call.Text(3);
  const bool fit = url && key && model && prompt;
  call.ReturnText(fit ? ClientOf(call).MorvOpenAIChat(*url, *key, *model, *prompt, BuiltinCall::kTextLimit)
                      : "");
}

constexpr BuiltinBinding kBuiltins[] = {
    {"morv_https_get", MorvHttpsGetBuiltin},       {"morv_https_post", MorvHttpsPostBuiltin},
    {"morv_https_status", MorvHttpsStatusBuiltin}, {"morv_openai_chat", MorvOpenAIChatBuiltin},
    {"morv_mcp_connect", MorvMcpConnectBuiltin},   {"morv_mcp_list_tools", MorvMcpListToolsBuiltin},
    {"morv_mcp_call", MorvMcpCallBuiltin},         {"morv_mcp_disconnect", MorvMcpDisconnectBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> NetworkBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
