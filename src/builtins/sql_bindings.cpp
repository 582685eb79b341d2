#include <cstring>
#include <string>

#include "builtins/bindings.h"
#include "net/sql_bridge.h"

namespace vorc {

namespace {

constexpr size_t kTextLimit = 1024;
constexpr int64_t kBadHandle = 0;

SqlBridge& BridgeOf(const BuiltinCall& call) {
  return call.runtime().State<SqlBridge>();
}

int64_t HandleOf(const BuiltinCall& call) {
  return call.Int64(0).value_or(kBadHandle);
}

std::string TextOrEmpty(const BuiltinCall& call, size_t i) {
  return std::string(call.Text(i).value_or(""));
}

void MorvSqlConnectBuiltin(BuiltinCall& call) {
  const auto home = call.Text(0);
  call.ReturnInt64(home ? BridgeOf(call).Connect(std::string(*home), TextOrEmpty(call, 1)) : kBadHandle);
}

void MorvSqlConnectRemoteBuiltin(BuiltinCall& call) {
  if (!call.Text(0) || !call.Text(1) || !call.Text(2) || !call.Text(3)) return call.ReturnInt64(kBadHandle);
  SqlBridge::Remote remote{TextOrEmpty(call, 0), TextOrEmpty(call, 1), TextOrEmpty(call, 2),
                           TextOrEmpty(call, 3), TextOrEmpty(call, 4)};
  call.ReturnInt64(BridgeOf(call).ConnectRemote(remote));
  explicit_bzero(remote.password.data(), remote.password.size());
}

void MorvSqlQueryBuiltin(BuiltinCall& call) {
  const auto sql = call.Text(1);
  call.ReturnInt64(sql ? BridgeOf(call).Query(HandleOf(call), std::string(*sql)) : kBadHandle);
}

void MorvSqlNextBuiltin(BuiltinCall& call) {
  call.ReturnInt(BridgeOf(call).Next(HandleOf(call)) ? 1 : 0);
}

void MorvSqlCountBuiltin(BuiltinCall& call) {
  call.ReturnInt(static_cast<int32_t>(BridgeOf(call).Count(HandleOf(call))));
}

void MorvSqlGetBuiltin(BuiltinCall& call) {
  std::string field;
  if (const auto name = call.Text(1)) {
    field = BridgeOf(call).Get(HandleOf(call), std::string(*name));
  } else if (const auto number = call.Int64(1)) {
    field = BridgeOf(call).Get(HandleOf(call), *number);
  }
  call.ReturnText(field, kTextLimit);
}

void MorvSqlStatusBuiltin(BuiltinCall& call) {
  call.ReturnText(BridgeOf(call).Status(HandleOf(call)), kTextLimit);
}

void MorvSqlFreeBuiltin(BuiltinCall& call) {
  BridgeOf(call).Free(HandleOf(call));
}

void MorvSqlDisconnectBuiltin(BuiltinCall& call) {
  BridgeOf(call).Disconnect(HandleOf(call));
}

constexpr BuiltinBinding kBuiltins[] = {
    {"morv_sql_connect", MorvSqlConnectBuiltin},
    {"morv_sql_connect_remote", MorvSqlConnectRemoteBuiltin},
    {"morv_sql_query", MorvSqlQueryBuiltin},
    {"morv_sql_next", MorvSqlNextBuiltin},
    {"morv_sql_count", MorvSqlCountBuiltin},
    {"morv_sql_get", MorvSqlGetBuiltin},
    {"morv_sql_status", MorvSqlStatusBuiltin},
    {"morv_sql_free", MorvSqlFreeBuiltin},
    {"morv_sql_disconnect", MorvSqlDisconnectBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> SqlBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
