#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "sim/assembler.h"
#include "sim/machine.h"

namespace vorc::sim {

/// A file whose procedure f holds these lines, under a header and behind data sections, if any.
inline std::string File(const std::string& body, const std::string& header = "",
                        const std::string& data = "") {
  return header + data + "SECTION   CODE\nBEGIN\nPROCEDURE f\nBEGIN\n" + body +
         "\nEND //f\nEND   //SECTION CODE\n";
}

/// What assembling a text, or calling its f, answers: a number or a message.
inline std::string Outcome(const std::string& text, const std::vector<Argument>& arguments = {},
                           const Limits& limits = {}, const AssemblyOptions& options = {}) {
  AssemblyError error;
  const auto program = Assemble(text, options, &error);
  if (!program) return "line " + std::to_string(error.line) + ": " + error.message;
  Machine machine(*program, limits);
  std::string fault;
  const auto result = machine.Call("f", arguments, &fault);
  return result ? std::to_string(*result) : fault;
}

}  // namespace vorc::sim
