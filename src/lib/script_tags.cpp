#include "lib/script_tags.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "lib/crypto.h"
#include "lib/sandbox.h"

namespace vorc {

namespace {

constexpr size_t kMaxScripts = 16;

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

}  // namespace

void ScriptTags::MorvRememberScript(const std::string& source) {
  if (sources_.size() == kMaxScripts || std::ranges::find(sources_, source) != sources_.end()) return;
  sources_.push_back(source);
}

std::string ScriptTags::Remembered(std::string_view printed) {
  std::string source = "'sha256-" + MorvDigestAsPrinted(printed) + "'";
  MorvRememberScript(source);
  return source;
}

std::string ScriptTags::MorvScriptTag(const std::string& file) {
  const auto printed = ReadAsPrinted(file);
  if (!printed) return {};
  Remembered(*printed);
  return "<script>" + *printed + "</script>";
}

std::string ScriptTags::MorvScriptSrc(const std::string& file) {
  const auto printed = ReadAsPrinted(file);
  return printed ? Remembered(*printed) : std::string();
}

std::string ScriptTags::MorvScriptSrcs(size_t capacity) const {
  std::string all;
  for (const std::string& source : sources_) {
    const std::string piece = all.empty() ? source : " " + source;
    if (all.size() + piece.size() >= capacity) break;
    all += piece;
  }
  return all;
}

}  // namespace vorc
