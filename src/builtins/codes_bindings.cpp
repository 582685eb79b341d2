#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "builtins/bindings.h"
#include "codes/barcode_reader.h"
#include "codes/barcode_writer.h"
#include "codes/qr_reader.h"
#include "codes/qr_writer.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

// What a script's last try to read a barcode found.
struct LastBarcode {
  std::string last_kind;
};

std::optional<std::string> FileOfArgument(const BuiltinCall& call) {
  const auto path = call.Text(0);
  return path ? MorvReadWholeFile(std::string(*path)) : std::nullopt;
}

// Drawings are never cut: a part of one would be no drawing.
void ReturnDrawing(BuiltinCall& call, const std::optional<std::string>& svg) {
  call.ReturnText(svg.value_or(""), BuiltinCall::kNoLimit);
}

void MorvQrcodeSvgBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto scale = call.Int(1);
  ReturnDrawing(call, text && scale ? codes::MorvQrcodeSvg(*text, *scale) : std::nullopt);
}

void MorvBarcodeSvgBuiltin(BuiltinCall& call) {
  const auto text = call.Text(0);
  const auto kind = call.Text(1);
  ReturnDrawing(call,
                text && kind ? codes::MorvBarcodeSvg(*text, *kind, call.Int(2).value_or(0)) : std::nullopt);
}

void MorvQrcodeReadBuiltin(BuiltinCall& call) {
  const auto file = FileOfArgument(call);
  call.ReturnText(file ? codes::MorvQrcodeRead(*file).value_or("") : "");
}

void MorvBarcodeReadBuiltin(BuiltinCall& call) {
  const auto file = FileOfArgument(call);
  const auto barcode = file ? codes::MorvBarcodeRead(*file) : std::nullopt;
  call.runtime().State<LastBarcode>().last_kind = barcode ? barcode->kind : "";
  call.ReturnText(barcode ? barcode->text : "");
}

void MorvBarcodeKindBuiltin(BuiltinCall& call) {
  call.ReturnText(call.runtime().State<LastBarcode>().last_kind);
}

constexpr BuiltinBinding kBuiltins[] = {
    {"morv_qrcode_svg", MorvQrcodeSvgBuiltin},     {"morv_barcode_svg", MorvBarcodeSvgBuiltin},
    {"morv_qrcode_read", MorvQrcodeReadBuiltin},   {"morv_barcode_read", MorvBarcodeReadBuiltin},
    {"morv_barcode_kind", MorvBarcodeKindBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> CodeBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
