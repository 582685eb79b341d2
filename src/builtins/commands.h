#pragma once

#include "builtins/call.h"
#include "lib/processes.h"
#include "lib/threads.h"

namespace vorc {

/// The commands of a script's run. Its end waits for the threads, which use the processes.
struct ScriptCommands {
  Processes processes;
  ScriptThreads threads{processes};
};

inline Processes& ProcessesOf(const BuiltinCall& call) {
  return call.runtime().State<ScriptCommands>().processes;
}

inline ScriptThreads& ThreadsOf(const BuiltinCall& call) {
  return call.runtime().State<ScriptCommands>().threads;
}

}  // namespace vorc
