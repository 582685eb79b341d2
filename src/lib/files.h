#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vorc {

/// The whole file. Empty if it can't be read, or if it has `limit` bytes or more: a text that is
/// cut, once written back, would destroy the rest, so that is refused with a line on standard error.
std::string MorvFileRead(const std::string& path, size_t limit);

/// Replaces the file's content. True if every byte was written, up to the closing of the file.
bool MorvFileWrite(const std::string& path, std::string_view text);

/// Appends the text and one LF. True if every byte was written, up to the closing of the file.
bool MorvFileAppendLine(const std::string& path, std::string_view text);

/// 1 if the file holds `needle`, 0 if not, -1 for an unreadable file or a needle over 4096 bytes.
/// An empty needle gives 1 without a look at the file. Files are searched in windows of 8191 bytes
/// that overlap, so that no match is lost between two; but a NUL byte in the file hides what
/// follows it within its window.
int32_t MorvFileContains(const std::string& path, std::string_view needle);

/// Compares by lines, without the CR and LF bytes at their ends. 0 for equal files, else the number
/// from 1 of the first line that differs or stands in one file only; -1 if a file can't be read.
int32_t MorvFileDiff(const std::string& path_a, const std::string& path_b);

/// Number of lines; a last line without LF counts. -1 if the file can't be read.
int32_t MorvFileLines(const std::string& path);

/// Line `number`, from 1, without the CR and LF bytes at its end. Empty if there is none.
std::string MorvFileLine(const std::string& path, int32_t number);

/// Size of a regular file in bytes, at most 2147483647. 0 if it is missing, refused or no such file.
int32_t MorvFileSize(const std::string& path);

/// True if anything of this name exists. Not confined by the sandbox, as nothing is opened.
bool MorvFileExists(const std::string& path);

/// Time of the last change in seconds since 1970, -1 for a missing file. Not confined.
int32_t MorvFileMtime(const std::string& path);

/// Makes a directory with mode 0777 less the umask. True also if the path exists. Not confined.
bool MorvMkdir(const std::string& path);

/// Removes a file or an empty directory. Not confined.
bool MorvRemove(const std::string& path);

/// Renames, replacing a file of the new name. Not confined, but nothing passes the sandbox's border.
bool MorvRename(const std::string& from, const std::string& to);

}  // namespace vorc
