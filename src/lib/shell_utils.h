#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "lib/processes.h"

namespace vorc {

/// Capacity for the output of one `MorvUtilBash`; one byte less is kept.
constexpr size_t kBashOutputLimit = 0x100000;

/// The whole file; empty if it can't be read.
std::string MorvUtilCat(const std::string& path);

/// The first or the last `count` lines with their line ends; empty for a count below 1.
std::string MorvUtilHead(const std::string& path, int32_t count);
std::string MorvUtilTail(const std::string& path, int32_t count);

/// The lines that hold the plain text `needle`, with their line ends. An empty needle takes all.
std::string MorvUtilGrep(const std::string& path, std::string_view needle);

/// The number of those lines; 0 for an unreadable file.
int32_t MorvUtilGrepCount(const std::string& path, std::string_view needle);

/// Field `field`, from 1, of each line of `text`, as a line of its own; an empty line where there
/// are too few fields. A CR at the end of a line or of a field is dropped. Empty for an empty
/// delimiter or a field below 1.
std::string MorvUtilCut(std::string_view text, std::string_view delimiter, int32_t field);

/// The names in a directory, one a line in the directory's own order, directories with "/" behind.
/// An empty `dir` is the working directory. Empty for what is no directory or lies outside the
/// sandbox.
std::string MorvUtilLs(const std::string& dir);

/// The paths of regular files below `dir` whose base name fits by `morv_util_wild`, one a line.
std::string MorvUtilFind(const std::string& dir, std::string_view pattern);

/// `MorvFileReplace`: the count of replacements, -1 on failure.
int32_t MorvUtilReplace(const std::string& path, std::string_view from, std::string_view to);

/// Runs the build tool named by VMAKE_EXE, else "vmake.exe", with `arguments`; answers its status.
int32_t MorvUtilMake(std::string_view arguments, Processes& processes);

/// Runs a command line in bash; answers what it printed, on both of its outputs.
std::string MorvUtilBash(std::string_view command, Processes& processes);

}  // namespace vorc
