#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "lib/processes.h"

namespace vorc {

/// True if process `pid` runs a program of this name, compared without regard to case. A trailing
/// ".exe" of `name` doesn't count; a name of no or of more than 511 characters fits no process.
bool morv_proc_name_matches(pid_t pid, std::string_view name);

/// Calls `found` for each other process that runs a program of this name.
void morv_proc_walk(std::string_view name, const std::function<void(pid_t)>& found);

/// Ends a process by number (digits only): 1 if it could be, else 0; or all processes that run a
/// program of this name: their count. Inside a sandbox only those that `processes` started.
int32_t MorvUtilKill(std::string_view target, Processes& processes);

/// 1 or 0 for a process number; for a program's name, how many processes run it.
int32_t MorvUtilRunning(std::string_view target);

}  // namespace vorc
