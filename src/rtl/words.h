#pragma once

#include <set>
#include <string>
#include <string_view>

// Whole words in Verilog text: they start with a letter or `_` and run on with letters, digits and `_`.

namespace vorc {

using WordSet = std::set<std::string, std::less<>>;

/// The text with "_v" behind each word of the set.
std::string morv_rtl_rename_word(std::string_view text, const WordSet& words);

/// The text with "_next" behind each word of the set: a name that this state has assigned reads what comes
/// next, any other the register.
std::string morv_rtl_subst_next(std::string_view text, const WordSet& known);

}  // namespace vorc
