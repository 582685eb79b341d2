#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace vorc {

/// True if `path` leads to a place below `root`, an absolute path without links; the last component need
/// not exist and may not be a link.
bool IsConfined(const std::string& root, const std::string& path);

/// Keeps every file that SQLite opens, asks about or deletes below `root`. The answer is the name of
/// the file system to open databases with. There is one root a process: the first.
const char* ConfinedFileSystem(const std::string& root);

/// Whether a confined database may do what its authorizer is asked: no file outside, named in a way
/// that can be judged, no extension, no other folder or place for temporary files.
bool ConfinedActionAllowed(int action, const char* first, const char* second);

}  // namespace vorc
