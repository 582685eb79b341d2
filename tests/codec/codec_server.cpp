// Lets a script work the codec: reads requests "FUNCTION CAPACITY SIZE\n" with SIZE bytes behind each, and
// answers each with "STATUS SIZE\n" and what was written.

#include <cstdint>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "codec/vzip.h"

int main() {
  using namespace vorc;
  static const std::map<std::string, decltype(&vz_deflate)> functions = {
      {"deflate", vz_deflate},
      {"inflate", vz_inflate},
      {"zlib_compress", vz_zlib_compress},
      {"zlib_decompress", vz_zlib_decompress},
      {"gzip_compress", vz_gzip_compress},
      {"gzip_decompress", vz_gzip_decompress},
  };
  std::string function;
  size_t capacity = 0;
  size_t size = 0;
  while (std::cin >> function >> capacity >> size && std::cin.get() == '\n') {
    std::vector<uint8_t> source(size);
    std::cin.read(reinterpret_cast<char*>(source.data()), static_cast<std::streamsize>(size));
    std::vector<uint8_t> target(capacity);
    size_t written = 0;
    const VzStatus status = functions.at(function)(source, target, written);
    std::cout << status << ' ' << written << '\n';
    std::cout.write(reinterpret_cast<const char*>(target.data()), static_cast<std::streamsize>(written));
    std::cout.flush();
  }
  return 0;
}
