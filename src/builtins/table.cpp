#include "builtins/table.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <string_view>

#include "builtins/bindings.h"

namespace vorc {

namespace {

constexpr SysFunc kRows[] = {
#define SYSFUNC(name, count, result) {name, count, BuiltinResult::result, (count) < 0, nullptr},
#include "builtins/builtins.def"
#undef SYSFUNC
};

// Two built-ins of the closed SQL client take any count, though the table gives one.
constexpr std::string_view kAnyCount[] = {"morv_sql_connect", "morv_sql_connect_remote"};

constexpr auto kInOrderOfNames = [] {
  std::array<uint16_t, std::size(kRows)> rows{};
  for (size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<uint16_t>(i);
  std::sort(rows.begin(), rows.end(),
            [](size_t a, size_t b) { return std::string_view(kRows[a].name) < kRows[b].name; });
  return rows;
}();

BuiltinHandler HandlerOf(std::string_view name) {
  const std::span<const BuiltinBinding> tables[] = {
      BasicBuiltins(),  CheckBuiltins(),       CodeBuiltins(),    ContainerBuiltins(), CryptoBuiltins(),
      FileBuiltins(),   FingerprintBuiltins(), JsonBuiltins(),    PictureBuiltins(),   ProcessBuiltins(),
      RegexBuiltins(),  ShellUtilBuiltins(),   StringBuiltins(),  SystemBuiltins(),    TensorBuiltins(),
      ThreadBuiltins(), VersionBuiltins(),     NetworkBuiltins(), LanguageBuiltins(),  SqlBuiltins(),
  };
  for (const auto& table : tables) {
    for (const BuiltinBinding& binding : table) {
      if (binding.name == name) return binding.handler;
    }
  }
  return nullptr;
}

// A script uses a few of them: each is bound to its handler when it is first asked for.
struct Table {
  SysFunc rows[std::size(kRows)];
  bool bound[std::size(kRows)];

  const SysFunc* At(size_t i) {
    SysFunc& row = rows[i];
    if (!bound[i]) {
      row = kRows[i];
      row.any_count |= std::find(std::begin(kAnyCount), std::end(kAnyCount), row.name) != std::end(kAnyCount);
      row.handler = HandlerOf(row.name);
      bound[i] = true;
    }
    return &row;
  }
};
constinit Table table{};

}  // namespace

const SysFunc* FindSystemFunction(std::string_view name) {
  const auto found =
      std::lower_bound(kInOrderOfNames.begin(), kInOrderOfNames.end(), name,
                       [](size_t row, std::string_view wanted) { return kRows[row].name < wanted; });
  return found == kInOrderOfNames.end() || kRows[*found].name != name ? nullptr : table.At(*found);
}

}  // namespace vorc
