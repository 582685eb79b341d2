#pragma once

#include <optional>
#include <string>
#include <vector>

#include "program/target_options.h"

namespace vorc {

/// The command line, read.
struct Options {
  bool version = false;
  bool rtl = false;
  bool llmtrace = false;
  int address_override = 0;  ///< 0 for none
  TargetOptions target;
  bool has_source = false;
  std::string source;  ///< may be an empty text
  std::vector<std::string> script_arguments;
  std::vector<std::string> defines;
  std::optional<std::string> source_text;  ///< what the source holds, instead of the file of its name
  bool temporary_outputs = false;          ///< output files stand in a folder that goes away at once
};

/// Reads the arguments behind the program's name, from left to right. An error is told on standard
/// error and stops at the argument that holds it; the exit status is the answer then.
std::optional<int> ParseOptions(const std::vector<std::string>& arguments, Options* options);

/// Settles register and address widths. An error is told and answers the exit status.
std::optional<int> SettleWidths(Options* options);

/// Text of the QUERY_STRING variable for the script's arguments: "1=first&2=second". A plus sign stands
/// for a blank there, unless `escape_plus` keeps it what it is.
std::string BuildQueryString(const std::vector<std::string>& arguments, bool escape_plus = false);

/// The help text, on standard error.
void PrintUsage();

}  // namespace vorc
