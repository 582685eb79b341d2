// Lets a script work the codec: reads requests "NUMBER CAPACITY SIZE\n" with SIZE bytes behind each, and
// answers each with "STATUS SIZE\n" and what was written. The number is that of a function below.

#include <iostream>
#include <vector>

#include "codec/vzip.h"

int main() {
  using namespace vorc;
  constexpr decltype(&vz_deflate) kFunctions[] = {vz_deflate,         vz_inflate,       vz_zlib_compress,
                                                  vz_zlib_decompress, vz_gzip_compress, vz_gzip_decompress};
  size_t number = 0, capacity = 0, size = 0;
  while (std::cin >> number >> capacity >> size && std::cin.get() == '\n') {
    std::vector<uint8_t> source(size), target(capacity);
    std::cin.read(reinterpret_cast<char*>(source.data()), static_cast<std::streamsize>(size));
    size_t written = 0;
    std::cout << kFunctions[number](source, target, written) << ' ' << written << '\n';
    std::cout.write(reinterpret_cast<const char*>(target.data()), static_cast<std::streamsize>(written))
        .flush();
  }
  return 0;
}
