#include "builtins/table.h"

#include <span>
#include <string_view>
#include <unordered_map>

#include "builtins/bindings.h"

namespace vorc {

namespace {

struct Row {
  const char* name;
  int argument_count;
  BuiltinResult result;
};

constexpr Row kRows[] = {
#define SYSFUNC(name, count, result) {name, count, BuiltinResult::result},
#include "builtins/builtins.def"
#undef SYSFUNC
};

// Two built-ins of the closed SQL client take any count, though the table gives one.
constexpr std::string_view kAnyCount[] = {"morv_sql_connect", "morv_sql_connect_remote"};

bool TakesAnyCount(const Row& row) {
  for (const std::string_view name : kAnyCount) {
    if (name == row.name) return true;
  }
  return row.argument_count < 0;
}

std::unordered_map<std::string_view, BuiltinHandler> Handlers() {
  const std::span<const BuiltinBinding> tables[] = {
      BasicBuiltins(),  CheckBuiltins(),       CodeBuiltins(),    ContainerBuiltins(), CryptoBuiltins(),
      FileBuiltins(),   FingerprintBuiltins(), JsonBuiltins(),    PictureBuiltins(),   ProcessBuiltins(),
      RegexBuiltins(),  ShellUtilBuiltins(),   StringBuiltins(),  SystemBuiltins(),    TensorBuiltins(),
      ThreadBuiltins(), VersionBuiltins(),     NetworkBuiltins(), LanguageBuiltins(),  SqlBuiltins(),
  };
  std::unordered_map<std::string_view, BuiltinHandler> handlers;
  for (const auto& table : tables) {
    for (const BuiltinBinding& binding : table) handlers.emplace(binding.name, binding.handler);
  }
  return handlers;
}

std::vector<SysFunc> MakeTable() {
  const auto handlers = Handlers();
  std::vector<SysFunc> table;
  table.reserve(std::size(kRows));
  for (const Row& row : kRows) {
    const auto found = handlers.find(row.name);
    table.push_back({row.name, row.argument_count, row.result, TakesAnyCount(row),
                     found == handlers.end() ? nullptr : found->second});
  }
  return table;
}

std::unordered_map<std::string_view, const SysFunc*> MakeIndex() {
  std::unordered_map<std::string_view, const SysFunc*> index;
  for (const SysFunc& row : SystemFunctions()) index.emplace(row.name, &row);
  return index;
}

}  // namespace

const std::vector<SysFunc>& SystemFunctions() {
  static const std::vector<SysFunc> table = MakeTable();
  return table;
}

const SysFunc* FindSystemFunction(std::string_view name) {
  static const auto index = MakeIndex();
  const auto found = index.find(name);
  return found == index.end() ? nullptr : found->second;
}

}  // namespace vorc
