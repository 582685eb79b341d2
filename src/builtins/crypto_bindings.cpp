#include <string>

#include "builtins/bindings.h"
#include "lib/base64.h"
#include "lib/crypto.h"
#include "lib/sandbox.h"
#include "lib/script_tags.h"

namespace vorc {

namespace {

constexpr size_t kDigestLimit = 96;
constexpr size_t kScriptSourcesLimit = 1400;

void MorvSha256Builtin(BuiltinCall& call) {
  const auto text = call.Text(0);
  call.ReturnText(text ? MorvSha256Hex(*text) : "", kDigestLimit);
}

void MorvSha256Base64Builtin(BuiltinCall& call) {
  const auto text = call.Text(0);
  call.ReturnText(text ? MorvSha256Base64(*text) : "", kDigestLimit);
}

void MorvBase64EncodeBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvBase64Encode(call.Text(0).value_or("")), BuiltinCall::kNoLimit);
}

void MorvBase64DecodeBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvBase64Decode(call.Text(0).value_or("")), BuiltinCall::kNoLimit);
}

void MorvHmacSha256Builtin(BuiltinCall& call) {
  const auto key = call.Text(0);
  const auto text = call.Text(1);
  call.ReturnText(key && text ? MorvHmacSha256Hex(*key, *text) : "");
}

void MorvPbkdf2Builtin(BuiltinCall& call) {
  const auto password = call.Text(0);
  const auto salt = call.Text(1);
  const auto iterations = call.Int(2);
  call.ReturnText(password && salt && iterations ? MorvPbkdf2Hex(*password, *salt, *iterations) : "");
}

void MorvRandomHexBuiltin(BuiltinCall& call) {
  call.ReturnText(MorvRandomHex(call.Int(0).value_or(0), BuiltinCall::kTextLimit));
}

void MorvEncryptBuiltin(BuiltinCall& call) {
  const auto key = call.Text(0);
  const auto text = call.Text(1);
  call.ReturnText(key && text ? MorvEncrypt(*key, *text, BuiltinCall::kTextLimit) : "");
}

void MorvDecryptBuiltin(BuiltinCall& call) {
  const auto key = call.Text(0);
  const auto sealed = call.Text(1);
  call.ReturnText(key && sealed ? MorvDecrypt(*key, *sealed, BuiltinCall::kTextLimit) : "");
}

void MorvScriptBuiltin(BuiltinCall& call) {
  const auto file = call.Text(0);
  call.ReturnText(file ? call.runtime().State<ScriptTags>().MorvScriptTag(std::string(*file)) : "",
                  BuiltinCall::kNoLimit);
}

void MorvScriptSrcBuiltin(BuiltinCall& call) {
  const auto file = call.Text(0);
  call.ReturnText(file ? call.runtime().State<ScriptTags>().MorvScriptSrc(std::string(*file)) : "",
                  kDigestLimit);
}

void MorvScriptSrcsBuiltin(BuiltinCall& call) {
  call.ReturnText(call.runtime().State<ScriptTags>().MorvScriptSrcs(kScriptSourcesLimit),
                  kScriptSourcesLimit);
}

void MorvFileHashBuiltin(BuiltinCall& call) {
  const auto path = call.Text(0);
  const auto bytes = path ? MorvReadWholeFile(std::string(*path)) : std::nullopt;
  call.ReturnText(bytes ? MorvSha256Hex(*bytes) : "");
}

constexpr BuiltinBinding kBuiltins[] = {
    {"morv_sha256", MorvSha256Builtin},          {"morv_sha256_base64", MorvSha256Base64Builtin},
    {"morv_base64", MorvBase64EncodeBuiltin},    {"morv_base64_encode", MorvBase64EncodeBuiltin},
    {"morv_unbase64", MorvBase64DecodeBuiltin},  {"morv_base64_decode", MorvBase64DecodeBuiltin},
    {"morv_hmac_sha256", MorvHmacSha256Builtin}, {"morv_pbkdf2", MorvPbkdf2Builtin},
    {"morv_random_hex", MorvRandomHexBuiltin},   {"morv_encrypt", MorvEncryptBuiltin},
    {"morv_decrypt", MorvDecryptBuiltin},        {"morv_script", MorvScriptBuiltin},
    {"morv_script_src", MorvScriptSrcBuiltin},   {"morv_script_srcs", MorvScriptSrcsBuiltin},
    {"morv_file_hash", MorvFileHashBuiltin},     {"ifile_hash", MorvFileHashBuiltin},
};

}  // namespace

std::span<const BuiltinBinding> CryptoBuiltins() {
  return kBuiltins;
}

}  // namespace vorc
