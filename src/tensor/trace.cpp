#include "tensor/trace.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "base/console.h"
#include "base/format.h"

namespace vorc {

namespace {

constexpr std::string_view kMark = "[llmtrace] ";
constexpr size_t kRuleLength = 60;
constexpr const char* kMatrixCell = "%8.4f";

std::string Cell(const char* format, double value) {
  char text[512];  // the largest double has 309 digits in front of its point
  std::snprintf(text, sizeof text, format, value);
  return text;
}

}  // namespace

bool MorvLlmTraceEnabled() {
  static const bool enabled = std::getenv("VORC_LLMTRACE") != nullptr;
  return enabled;
}

std::string TraceLine(std::string_view text) {
  return std::string(kMark).append(text).append("\n");
}

std::string TraceRows(ConstMatrix matrix, const char* cell) {
  const size_t rows = std::min(matrix.rows, kTracedCells);
  const size_t cols = std::min(matrix.cols, kTracedCells);
  std::string lines;
  for (size_t row = 0; row < rows; ++row) {
    std::string line = "    [";
    for (size_t col = 0; col < cols; ++col) {
      if (col > 0) line += ' ';
      line += Cell(cell, matrix.data[row * matrix.stride + col]);
    }
    if (cols < matrix.cols) line += " ...";
    lines += TraceLine(line + " ]");
  }
  if (rows < matrix.rows) {
    lines += TraceLine(Format("    ... (%d more rows)", static_cast<int>(matrix.rows - rows)));
  }
  return lines;
}

std::string OnOneLine(std::string_view text) {
  std::string shown(text);
  for (char& c : shown) {
    if (c >= '\n' && c <= '\r') c = ' ';
  }
  return shown;
}

LlmTraceBlock::LlmTraceBlock(Rule rule, const std::string& title, std::span<const std::string_view> reasons) {
  Line(std::string(kRuleLength, static_cast<char>(rule)));
  Line("STEP: " + title);
  for (const std::string_view reason : reasons) Line(std::string("WHY: ").append(reason));
}

void LlmTraceBlock::Line(std::string_view text) {
  text_ += TraceLine(text);
}

void LlmTraceBlock::MorvLlmTraceMatrix(std::string_view label, ConstMatrix matrix) {
  const bool cut = matrix.rows > kTracedCells || matrix.cols > kTracedCells;
  Line(Format("  %.*s  (%d rows x %d cols%s):", static_cast<int>(label.size()), label.data(),
              static_cast<int>(matrix.rows), static_cast<int>(matrix.cols),
              cut ? ", showing top-left corner" : ""));
  text_ += TraceRows(matrix, kMatrixCell);
}

void LlmTraceBlock::Print() const {
  WriteOutput(text_);
}

}  // namespace vorc
