#pragma once

#include <gtest/gtest.h>

#include "temp_folder.h"

namespace vorc {

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
