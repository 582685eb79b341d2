#pragma once

#include <cstdint>
#include <string_view>

namespace vorc {

/// The most script threads that may exist at once: running, or ended and not joined yet.
inline constexpr int kMaxScriptThreads = 64;

/// Starts a thread that runs one command line as MorvExec does. Answers its number from 0 on, or -1
/// for an empty command and when all numbers are taken.
int MorvThreadCreate(std::string_view command);

/// Waits for a thread, gives its number back, and answers the status of its command. -1 if there is
/// no such thread or it is being joined already.
int MorvThreadJoin(int id);

/// Joins every thread and answers how many there were.
int MorvThreadBarrier();

/// Binds a thread, or for a negative `id` the calling one, to the processors whose bits are set in
/// `mask`. 1 on success; 0 for an empty mask, a thread that is not there, or a refusal by the host.
int MorvThreadAffinitySet(int id, uint32_t mask);

/// The mask of no processor.
uint32_t MorvCpuZero();

/// `mask` with the bit of processor `cpu` set; unchanged if `cpu` is not in 0 to 31.
uint32_t MorvCpuSet(int cpu, uint32_t mask);

/// The number of processors online, at least 1.
int MorvCpuCount();

/// Sleeps for so many milliseconds, signals notwithstanding. Nothing happens below 1.
void MorvSleepMs(int milliseconds);

}  // namespace vorc
