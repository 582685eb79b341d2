#include <memory>
#include <optional>
#include <string>

#include "base/handle_table.h"
#include "builtins/bindings.h"
#include "fingerprint/afis.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

HandleTable<AfisPrint>& Prints(const BuiltinCall& call) {
  return call.runtime().State<HandleTable<AfisPrint>>();
}

/// The print whose handle is argument `i`, or null.
AfisPrint* Print(const BuiltinCall& call, size_t i) {
  const std::optional<int32_t> handle = call.Int(i);
  return handle ? Prints(call).Find(*handle) : nullptr;
}

/// The print in the picture file that argument `i` names, or null.
std::unique_ptr<AfisPrint> ReadPrint(const BuiltinCall& call, size_t i) {
  const auto path = call.Text(i);
  if (!path) return nullptr;
  const std::optional<std::string> picture = MorvReadWholeFile(std::string(*path));
  return picture ? MorvAfisExtract(*picture) : nullptr;
}

void MorvAfisExtractBuiltin(BuiltinCall& call) {
  std::unique_ptr<AfisPrint> print = ReadPrint(call, 0);
  call.ReturnInt(print == nullptr ? 0 : Prints(call).Add(std::move(print)));
}

void MorvAfisMinutiaeBuiltin(BuiltinCall& call) {
  call.ReturnInt(MorvAfisMinutiae(Print(call, 0)));
}

void MorvAfisMatchBuiltin(BuiltinCall& call) {
  call.ReturnDouble(MorvAfisMatch(Print(call, 0), Print(call, 1)));
}

void MorvAfisFreeBuiltin(BuiltinCall& call) {
  if (const std::optional<int32_t> handle = call.Int(0)) Prints(call).Free(*handle);
}

void MorvAfisMatchFilesBuiltin(BuiltinCall& call) {
  const std::unique_ptr<AfisPrint> probe = ReadPrint(call, 0);
  const std::unique_ptr<AfisPrint> candidate = probe == nullptr ? nullptr : ReadPrint(call, 1);
  call.ReturnDouble(MorvAfisMatch(probe.get(), candidate.get()));
}

constexpr BuiltinBinding kBindings[] = {
    {"morv_afis_extract", MorvAfisExtractBuiltin},
    {"morv_afis_minutiae", MorvAfisMinutiaeBuiltin},
    {"morv_afis_match", MorvAfisMatchBuiltin},
    {"morv_afis_free", MorvAfisFreeBuiltin},
    {"morv_afis_match_files", MorvAfisMatchFilesBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> FingerprintBuiltins() {
  return kBindings;
}

}  // namespace vorc
