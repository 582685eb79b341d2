#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vorc {

/// The SHA-256 digest of a text, as 64 hexadecimal digits or in base64.
std::string MorvSha256Hex(std::string_view text);
std::string MorvSha256Base64(std::string_view text);

/// HMAC-SHA-256 (RFC 2104), as 64 hexadecimal digits.
std::string MorvHmacSha256Hex(std::string_view key, std::string_view text);

/// One block, 32 bytes, of PBKDF2-HMAC-SHA-256 (RFC 8018), as 64 hexadecimal digits. The salt is
/// given in hexadecimal, at most 256 bytes, and may be empty. Empty text for iterations outside
/// 1 to 10,000,000 or a broken salt.
std::string MorvPbkdf2Hex(std::string_view password, std::string_view salt_hex, int32_t iterations);

/// So many random bytes as hexadecimal digits. Empty text if `count` is below 1, if the digits and
/// their NUL exceed `capacity`, or if the host yields no random bytes.
std::string MorvRandomHex(int32_t count, size_t capacity);

/// Seals a text with AES-256-GCM under a key of exactly 64 hexadecimal digits: base64 of nonce (12
/// bytes), tag (16 bytes) and ciphertext. Empty text for a bad key, without random bytes, or if the
/// result and its NUL exceed `capacity`.
std::string MorvEncrypt(std::string_view key_hex, std::string_view text, size_t capacity);

/// Opens what MorvEncrypt sealed. Empty text for a bad key, a text that is cut or changed anywhere,
/// or one of `capacity` bytes or more. Unauthenticated bytes are never handed out.
std::string MorvDecrypt(std::string_view key_hex, std::string_view sealed, size_t capacity);

}  // namespace vorc
