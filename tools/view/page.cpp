#include "view/page.h"

#include <set>

#include "base/format.h"
#include "view/flow_picture.h"
#include "view/svg.h"

namespace vorc {

namespace {

constexpr std::string_view kStyle = R"(
body { margin: 0 auto; padding: 1rem; max-width: 90rem; color: #1d2227; background: #fff; font: 16px/1.5 system-ui, sans-serif; }
.wide { overflow-x: auto; border: 1px solid #d8dde2; border-radius: 4px; margin: .6rem 0 1.4rem; }
svg text { font: 11.5px ui-monospace, monospace; fill: #1d2227; }
svg .head { font-weight: 700; }
svg .small { font-size: 10px; fill: #333; }
.flow rect { fill: #f5f7f9; stroke: #8b959e; }
.flow path { fill: none; stroke: #5c6670; stroke-width: 1.4; marker-end: url(#tip); }
.flow path.back { stroke: #b4552d; stroke-dasharray: 5 3; }
.ranges .column { fill: #f5f7f9; }
table { border-collapse: collapse; font: 13px/1.45 ui-monospace, monospace; }
td { vertical-align: top; padding: .1rem .8rem; white-space: pre; }
tr.new td { border-top: 1px solid #d8dde2; }
td.line { color: #8b959e; text-align: right; }
.key span { display: inline-block; padding: 0 .5em; margin: 0 .3em .3em 0; border-radius: 3px; font: 12px ui-monospace, monospace; }
)";

// A part of the page with a heading; nothing for an empty picture.
std::string Part(const std::string& heading, const std::string& content) {
  if (content.empty()) return "";
  return "<h3>" + heading + "</h3>\n<div class=\"wide\">\n" + content + "</div>\n";
}

std::string RegisterKey(const CompiledFunction& function) {
  std::set<int> used;
  for (const FlowBlock& block : function.blocks)
    for (const LiveRange& range : block.ranges) used.insert(range.colour);
  std::string key;
  for (const int number : used)
    key += "<span style=\"background:" + RegisterColour(number) + "\">" +
           (number < 0 ? std::string("memory") : "gpr" + std::to_string(number)) + "</span>";
  return key.empty() ? "" : "<p class=\"key\">" + key + "</p>\n";
}

// Rows of line number, source and the assembly that was made for it.
std::string SideBySide(const CompiledFunction& function) {
  std::string rows;
  std::string source;
  int shown = -1;
  for (const AssemblyLine& line : function.assembly) {
    if (!line.source.empty()) {
      source += (source.empty() ? "" : "\n") + line.source;
      continue;
    }
    const bool begins = line.source_line != shown || !source.empty();
    rows += begins ? Format("<tr class=\"new\"><td class=\"line\">%d</td><td>", line.source_line)
                   : "<tr><td></td><td>";
    rows += Escaped(source.substr(0, source.find('\n')));
    rows += "</td><td>" + Escaped(line.assembly) + "</td></tr>\n";
    source.clear();
    shown = line.source_line;
  }
  return rows.empty() ? "" : "<table>\n" + rows + "</table>\n";
}

std::string FunctionPart(const CompiledFunction& function) {
  const std::string name = Escaped(function.name);
  std::string part = "<section id=\"" + name + "\">\n<h2>" + name + "</h2>\n";
  std::string graph = FlowGraphSvg(function);
  if (graph.empty()) graph = Format("<p>%zu blocks are too many to draw.</p>\n", function.blocks.size());
  part += Part("Flow graph", graph);
  const std::string ranges = LiveRangesSvg(function);
  if (!ranges.empty())
    part += Part("Live ranges and registers, block by block", RegisterKey(function) + ranges);
  return part + Part("Source and assembly", SideBySide(function)) + "</section>\n";
}

}  // namespace

std::string FunctionsPage(std::string_view source, const std::vector<CompiledFunction>& functions) {
  std::string page =
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
      Escaped(source) + "</title>\n<style>" + std::string(kStyle) + "</style>\n</head>\n<body>\n<h1>" +
      Escaped(source) + "</h1>\n<ul>\n";
  for (const CompiledFunction& function : functions)
    page += "<li><a href=\"#" + Escaped(function.name) + "\">" + Escaped(function.name) + "</a>" +
            Format(", %zu blocks</li>\n", function.blocks.size());
  page +=
      "</ul>\n<svg width=\"0\" height=\"0\" style=\"position:absolute\"><defs><marker id=\"tip\" viewBox=\"0 "
      "0 8 8\" refX=\"7\" "
      "refY=\"4\" markerWidth=\"7\" markerHeight=\"7\" orient=\"auto\"><path d=\"M0 0 L8 4 L0 8 z\" "
      "fill=\"#5c6670\"/></marker></defs></svg>\n";
  for (const CompiledFunction& function : functions) page += FunctionPart(function);
  return page + "</body>\n</html>\n";
}

}  // namespace vorc
