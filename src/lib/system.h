#pragma once

#include <cstdint>
#include <string>

namespace vorc {

/// Value of an environment variable; empty if it is not set.
std::string MorvGetenv(const std::string& name);

/// Sets an environment variable for this process and those it starts. False for an empty name or
/// one with `=`.
bool MorvSetenv(const std::string& name, const std::string& value);

/// Seconds since 1970.
int32_t MorvTime();

/// Local time as "2024-05-31 23:59:00".
std::string MorvDateString();

/// Always 0: there is no such clock.
int32_t MorvElapsedMs();

/// Path of the working directory; empty if it has gone.
std::string MorvCwd();

/// Changes the working directory. Not confined by the sandbox.
bool MorvChdir(const std::string& path);

}  // namespace vorc
