#include "lib/system.h"

#include <unistd.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <mutex>
#include <system_error>

#include "base/environment.h"

namespace vorc {

std::string MorvGetenv(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value == nullptr ? std::string() : std::string(value);
}

bool MorvSetenv(const std::string& name, const std::string& value) {
  const std::lock_guard guard(EnvironmentLock());
  return setenv(name.c_str(), value.c_str(), 1) == 0;
}

int32_t MorvTime() {
  return static_cast<int32_t>(std::time(nullptr));
}

std::string MorvDateString() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  if (localtime_r(&now, &local) == nullptr) return {};
  std::array<char, 64> text;
  return std::string(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local));
}

int32_t MorvElapsedMs() {
  return 0;
}

std::string MorvCwd() {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::current_path(error);
  return error ? std::string() : path.string();
}

bool MorvChdir(const std::string& path) {
  return chdir(path.c_str()) == 0;
}

}  // namespace vorc
