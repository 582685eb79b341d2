#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include "temp_folder.h"

namespace vorc {

/// Makes every write beyond `bytes` of a file fail, as a full disk does.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    handler_ = signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    signal(SIGXFSZ, handler_);
  }

 private:
  rlimit before_{};
  sighandler_t handler_;
};

/// A folder of its own for each test, removed behind it.
class ScratchFolder : public testing::Test {
 protected:
  std::string At(const std::string& name) const { return temp_ / name; }
  std::string Put(const std::string& name, std::string_view bytes) const { return temp_.Write(name, bytes); }
  static std::string Get(const std::string& path) { return FileText(path); }

  const TempFolder temp_;
  const std::string folder_ = temp_.path();
};

}  // namespace vorc
