#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorc {

/// A page of the documentation, as it stands in the tree.
struct ManualPage {
  std::string_view name;
  std::string_view text;
};

/// The index of built-in functions first, then its pages.
extern const std::vector<ManualPage> kManualPages;

/// Every built-in function with its arguments and answer, by topic; only those whose row holds `word`.
std::string ListFunctions(std::string_view word);

/// What the pages tell of a function: arguments, answer, details, an example. Empty if it isn't known.
std::string DescribeFunction(std::string_view name);

/// Names that are near to one that isn't known, at most a few.
std::vector<std::string> SimilarFunctions(std::string_view name);

/// The names of all built-in functions.
std::vector<std::string> FunctionNames();

}  // namespace vorc
