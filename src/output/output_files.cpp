#include "output/output_files.h"

#include <unistd.h>

#include <utility>

namespace vorc {

std::string SetFileExt(const std::string& path, const std::string& extension) {
  const size_t slash = path.find_last_of('/');
  const size_t dot = path.find_last_of('.');
  const bool has_extension =
      dot != std::string::npos && (slash == std::string::npos || dot > slash + 1) && dot > 0;
  return (has_extension ? path.substr(0, dot) : path) + "." + extension;
}

bool OutputFiles::Open(const std::string& source) {
  const std::pair<TextWriter*, const char*> files[] = {{&assembly, "asm"},
                                                       {&analysis, "code_gen_analysis.txt"},
                                                       {&tac, "datafile_tac.txt"},
                                                       {&ai_input, "ai_tac_analysis_input.txt"}};
  unlink(SetFileExt(source, "ai_tac_analysis_output.txt").c_str());
  for (const auto& [file, extension] : files) unlink(SetFileExt(source, extension).c_str());
  for (const auto& [file, extension] : files) {
    if (!file->Open(SetFileExt(source, extension))) return false;
  }
  return true;
}

bool OutputFiles::Close() {
  bool good = assembly.Close();
  good = analysis.Close() && good;
  good = tac.Close() && good;
  return ai_input.Close() && good;
}

const VorcReference128& OutputFiles::Reference() {
  if (!reference_) reference_ = GenerateVorcReference128();
  return *reference_;
}

}  // namespace vorc
