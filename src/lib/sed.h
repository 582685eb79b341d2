#pragma once

#include <string>
#include <string_view>

namespace vorc {

/// Runs one command "s/PATTERN/REPLACEMENT/[g]", with a delimiter of its choice, over each line of
/// a text. Answers the new text; for a command it can't read, the text as it was, with a line on
/// standard error.
std::string MorvSed(std::string_view text, std::string_view script);

/// Runs the command over a file in place. 1 if the file changed, 0 if it is left alone because
/// nothing would change, -1 if it is no regular file or can't be read or written. The file is replaced
/// in one step, as FileRewrite does it; in a folder that takes no new file it is written in place.
int MorvSedFile(const std::string& path, std::string_view script);

}  // namespace vorc
