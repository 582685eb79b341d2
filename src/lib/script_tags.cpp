#include "lib/script_tags.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "lib/crypto.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

constexpr size_t kMaxScripts = 16;

std::vector<std::string>& morv_script_src() {
  static std::vector<std::string> sources;
  return sources;
}

void MorvRememberScript(const std::string& source) {
  auto& sources = morv_script_src();
  if (sources.size() == kMaxScripts || std::ranges::find(sources, source) != sources.end()) return;
  sources.push_back(source);
}

// What of a file stands in the page: a text in a script ends at its first NUL.
std::optional<std::string> ReadAsPrinted(const std::string& file) {
  auto text = MorvReadWholeFile(file);
  if (text) text->resize(std::min(text->size(), text->find('\0')));
  return text;
}

// The digest has to be that of the bytes that the page will hold, or a browser refuses the script.
std::string MorvDigestAsPrinted(std::string_view printed) {
  return MorvSha256Base64(printed);
}

std::string Remembered(std::string_view printed) {
  std::string source = "'sha256-" + MorvDigestAsPrinted(printed) + "'";
  MorvRememberScript(source);
  return source;
}

}  // namespace

std::string MorvScriptTag(const std::string& file) {
  const auto printed = ReadAsPrinted(file);
  if (!printed) return {};
  Remembered(*printed);
  return "<script>" + *printed + "</script>";
}

std::string MorvScriptSrc(const std::string& file) {
  const auto printed = ReadAsPrinted(file);
  return printed ? Remembered(*printed) : std::string();
}

std::string MorvScriptSrcs(size_t capacity) {
  std::string all;
  for (const std::string& source : morv_script_src()) {
    const std::string piece = all.empty() ? source : " " + source;
    if (all.size() + piece.size() >= capacity) break;
    all += piece;
  }
  return all;
}

}  // namespace vorc
