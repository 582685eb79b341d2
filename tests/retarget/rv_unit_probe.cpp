// Writes the object, image, map and listing of a small unit made by hand into a folder.

#include <fstream>
#include <string>

#include "retarget/rv_encode.h"
#include "retarget/rv_unit.h"

namespace {

using namespace vorc;

constexpr uint32_t kT0 = 5, kA0 = 10, kA1 = 11, kT6 = 31;

void Save(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace

int main(int, char** argv) {
  VrvEncoder enc;
  RvUnit unit;
  const auto function = [&](const char* name, bool emitted, auto body) {
    const uint32_t start = enc.code.size();
    body();
    vrv_ret(enc);
    unit.functions.push_back({name, start, enc.code.size() - start, 16, emitted});
  };
  // Adds to a global and gives what it holds then.
  const auto bump = [&](int32_t global) {
    unit.sites.push_back({enc.code.size(), global});
    vrv_auipc(enc, kT6, 0);
    vrv_addi(enc, kT6, kT6, 0);
    vrv_lw(enc, kT0, kT6, 0);
    vrv_add(enc, kA0, kA0, kT0);
    vrv_sw(enc, kT6, 0, kA0);
  };
  unit.globals = {{"first", 0, 4}, {"table", 4, 4096}, {"last", 4100, 4}};
  unit.data_size = 4104;
  function("add", true, [&] { vrv_add(enc, kA0, kA0, kA1); });
  function("hidden", false, [&] { bump(-1); });
  function("bump_first", true, [&] { bump(0); });
  function("bump_last", true, [&] { bump(2); });
  unit.image = enc.code;
  if (!RvPlaceData(unit)) return 1;
  const std::string folder = argv[1];
  const auto image = unit.image.bytes();
  Save(folder + "/x.o", RvElfObject(unit).bytes);
  Save(folder + "/x.bin", {reinterpret_cast<const char*>(image.data()), image.size()});
  Save(folder + "/x.map", RvMap(unit));
  Save(folder + "/x.lst", std::string(RvListingHead()) + RvListing(unit));
  return 0;
}
