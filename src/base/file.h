#pragma once

#include <cstdio>
#include <memory>

namespace vorc {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

/// An owned stdio stream. Where a failing close must be seen, release it and call fclose.
using File = std::unique_ptr<std::FILE, FileCloser>;

}  // namespace vorc
