#include <string>

#include "builtins/bindings.h"
#include "builtins/commands.h"
#include "lib/processes_by_name.h"
#include "lib/shell_utils.h"

namespace vorc {

namespace {

void ReturnWhole(BuiltinCall& call, std::string_view text) {
  call.ReturnText(text, BuiltinCall::kNoLimit);
}

using LinesOfFile = std::string (*)(const std::string& path, int32_t count);

void ReturnLines(BuiltinCall& call, LinesOfFile lines) {
  const auto path = call.Text(0);
  const auto count = call.Int(1);
  ReturnWhole(call, path && count ? lines(std::string(*path), *count) : std::string());
}

void MorvUtilCatBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  ReturnWhole(call, path ? MorvUtilCat(std::string(*path)) : std::string());
}

void MorvUtilHeadBuiltin(BuiltinCall& call) {
  ReturnLines(call, MorvUtilHead);
}

void MorvUtilTailBuiltin(BuiltinCall& call) {
  ReturnLines(call, MorvUtilTail);
}

void MorvUtilGrepBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  const auto needle = call.Text(1);
  ReturnWhole(call, path && needle ? MorvUtilGrep(std::string(*path), *needle) : std::string());
}

void MorvUtilGrepCountBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  const auto needle = call.Text(1);
  call.ReturnInt(path && needle ? MorvUtilGrepCount(std::string(*path), *needle) : 0);
}

void MorvUtilCutBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto delimiter = call.Text(1);
  const auto field = call.Int(2);
  ReturnWhole(call, text && delimiter && field ? MorvUtilCut(*text, *delimiter, *field) : std::string());
}

void MorvUtilLsBuiltin(BuiltinCall& call) {
  const auto dir = call.Text(0);
  ReturnWhole(call, dir ? MorvUtilLs(std::string(*dir)) : std::string());
}

void MorvUtilFindBuiltin(BuiltinCall& call) {
  const auto dir = call.Text(0);
  const auto pattern = call.Text(1);
  ReturnWhole(call, dir ? MorvUtilFind(std::string(*dir), pattern.value_or("*")) : std::string());
}

void MorvUtilReplaceBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  const auto from = call.Text(1);
  const auto to = call.Text(2);
  call.ReturnInt(path && from && to ? MorvUtilReplace(std::string(*path), *from, *to) : 0);
}

void MorvUtilBashBuiltin(BuiltinCall& call) {
  const auto command = call.Text(0);
  ReturnWhole(call, command ? MorvUtilBash(*command, ProcessesOf(call)) : std::string());
}

void MorvUtilMakeBuiltin(BuiltinCall& call) {
  const auto arguments = call.Text(0);
  call.ReturnInt(arguments ? MorvUtilMake(*arguments, ProcessesOf(call)) : -1);
}

void MorvUtilKillBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvUtilKill(call.Text(0).value_or(""), ProcessesOf(call)));
}

void MorvUtilRunningBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvUtilRunning(call.Text(0).value_or("")));
}

constexpr BuiltinBinding kBindings[] = {
    {"icat", MorvUtilCatBuiltin},
    {"ihead", MorvUtilHeadBuiltin},
    {"itail", MorvUtilTailBuiltin},
    {"igrep", MorvUtilGrepBuiltin},
    {"igrep_count", MorvUtilGrepCountBuiltin},
    {"icut", MorvUtilCutBuiltin},
    {"ils", MorvUtilLsBuiltin},
    {"ifind", MorvUtilFindBuiltin},
    {"ireplace", MorvUtilReplaceBuiltin},
    {"ibash", MorvUtilBashBuiltin},
    {"imake", MorvUtilMakeBuiltin},
    {"ikill", MorvUtilKillBuiltin},
    {"irunning", MorvUtilRunningBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> ShellUtilBuiltins() {
  return kBindings;
}

}  // namespace vorc
