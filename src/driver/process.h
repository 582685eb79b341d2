#pragma once

#include <functional>

namespace vorc {

/// Sets up what concerns the process: the standard descriptors, unbuffered streams, signals, the root
/// of the sandbox. False if the host grants no descriptors.
bool PrepareProcess();

/// Does some work and answers its status, or 1 with a message where memory ran out.
int WithMemory(const std::function<int()>& work);

/// Does some work on a stack that deep nesting and recursion need, and answers its status.
int RunWithLargeStack(const std::function<int()>& work);

/// Ends a program: its status, or no return at all.
int Leave(int status);

}  // namespace vorc
