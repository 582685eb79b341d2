#pragma once

#include <string>
#include <string_view>

namespace vorc {

/// Runs one command "s/PATTERN/REPLACEMENT/[g]", with a delimiter of its choice, over each line of
/// a text. Answers the new text; for a command it can't read, the text as it was, with a line on
/// standard error.
std::string MorvSed(std::string_view text, std::string_view script);

/// Runs the command over a file in place. 1 if the file changed, 0 if it is left alone because
/// nothing would change, -1 if it can't be read or written. When writing fails midway, the old
/// content is put back as far as the disk lets it.
int MorvSedFile(const std::string& path, std::string_view script);

}  // namespace vorc
