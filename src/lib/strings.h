#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorc {

/// -1, 0 or 1 by unsigned bytes. No text stands before every text and equals no text.
int32_t MorvStrCmp(std::optional<std::string_view> a, std::optional<std::string_view> b);

/// Byte position of the first occurrence, -1 if there is none.
int32_t MorvStrStr(std::string_view text, std::string_view needle);

/// As MorvStrStr, without regard to the case of A to Z.
int32_t MorvSearchTxt(std::string_view text, std::string_view needle);

/// Length in bytes.
int32_t MorvStrLen(std::string_view text);

bool MorvStartsWith(std::string_view text, std::string_view start);
bool MorvEndsWith(std::string_view text, std::string_view end);

/// `length` bytes from `start`. A negative start counts as 0, a negative length reaches to the end.
std::string_view MorvSubstr(std::string_view text, int32_t start, int32_t length);

/// Upper and lower case of A to Z; all other bytes stay.
std::string MorvUpper(std::string_view text);
std::string MorvLower(std::string_view text);

/// The text without tab, LF, CR and space at both ends.
std::string_view MorvTrim(std::string_view text);

/// Every occurrence of `search`, taken from the left, replaced. An empty `search` gives the source.
/// The result is cut to `limit` - 1 bytes.
std::string MorvReplaceAll(std::string_view source, std::string_view search, std::string_view replacement,
                           size_t limit);

/// `"`, `&`, `'`, `<` and `>` as character references. Stops in front of the first piece with which
/// the result would exceed `limit` - 1 bytes.
std::string MorvHtmlEscape(std::string_view text, size_t limit);

/// Lower-case hexadecimal digits, zero-padded to `width`, of which at most 8 count. Width 0 pads
/// nothing, a negative one gives an empty text.
std::string MorvHex(uint32_t value, int32_t width);

/// Binary digits, zero-padded to `width`, of which at most 32 count. Width 0 pads nothing, a
/// negative one gives an empty text.
std::string MorvBin(uint32_t value, int32_t width);

/// The number behind optional blanks and `0x`, up to the first byte that is no hexadecimal digit;
/// of more than eight digits the last eight count. 0 if there is no digit.
uint32_t MorvParseHex(std::string_view text);

/// The decimal number behind optional white space and a sign, as strtol reads it: its low 32 bits.
/// 0 if there is no digit.
int32_t MorvAtoi(std::string_view text);

/// `count` bits of `value` from bit `low` upward. Bits outside of 0 to 31 are 0.
uint32_t MorvBits(uint32_t value, int32_t low, int32_t count);

}  // namespace vorc
