#pragma once

#include <cstdint>
#include <string>

#include "languages/answer.h"

namespace vorc {

/// Starts CPython, once a process. False with the reason.
bool StartPython(std::string& problem);

/// While this stands, what the program prints goes to an answer, and the program is ended when it takes
/// longer than the limit; 0 and less for none. One at a time, with the interpreter's lock held.
class PythonRun {
 public:
  PythonRun(Answer& answer, int32_t limit_ms);
  ~PythonRun();
  PythonRun(const PythonRun&) = delete;
  PythonRun& operator=(const PythonRun&) = delete;

  bool expired() const;
};

}  // namespace vorc
