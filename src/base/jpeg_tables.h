#pragma once

#include <string_view>

namespace vorc {

/// False for the bytes of a JPEG file with a Huffman table of more than the 256 values that a table can
/// have. The decoder of stb would write them all, past the end of its own table. True for other files.
bool JpegTablesFit(std::string_view bytes);

}  // namespace vorc
