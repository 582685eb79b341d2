#include "retarget/rv_unit.h"

#include "base/format.h"
#include "retarget/rv_disassemble.h"
#include "retarget/rv_formats.h"

namespace vorc {
namespace {

constexpr uint32_t kHalfImm12 = 0x800;
constexpr uint32_t kUpperMask = 0xFFFFF000;

void PointTo(CodeBytes& image, uint32_t site, uint32_t target) {
  const uint32_t rd = Bits(image.Word(site), 7, 5);
  const uint32_t distance = target - site;
  const uint32_t upper = (distance + kHalfImm12) & kUpperMask;
  image.SetWord(site, upper | rd << 7 | kOpAuipc);
  image.SetWord(site + 4, RvIWord(kOpImm, rd, 0, rd, distance - upper));
}

}  // namespace

bool RvPlaceData(RvUnit& unit) {
  unit.code_size = unit.image.size();
  if (unit.data_size == 0) return true;
  if (!unit.image.Align(4)) return false;
  unit.data_base = unit.image.size();
  if (!unit.image.AppendZeros(unit.data_size)) return false;
  for (const RvAddressSite& site : unit.sites) {
    if (site.global < 0) continue;
    PointTo(unit.image, site.offset, unit.data_base + unit.globals[static_cast<size_t>(site.global)].offset);
  }
  return true;
}

std::string RvMap(const RvUnit& unit) {
  std::string map = "# name unitoffset size framebytes\n";
  if (unit.data_size > 0) map += Format("# data %u %u\n", unit.data_base, unit.data_size);
  for (const RvGlobal& global : unit.globals) {
    map += Format("# global %s %u %u\n", global.name.c_str(), unit.data_base + global.offset, global.size);
  }
  for (const RvFunction& function : unit.functions) {
    if (!function.Visible()) continue;
    map += Format("%s %u %u %d\n", function.name.c_str(), function.start, function.size, function.frame);
  }
  return map;
}

std::string_view RvListingHead() {
  return "; RV32I selection listing - vorc retarget back end\n"
         "; Offsets are per function, from that function's own start.\n";
}

std::string RvListing(const RvUnit& unit) {
  std::string listing;
  std::string text;
  for (const RvFunction& function : unit.functions) {
    if (!function.Visible()) continue;
    listing += Format("\n; ---- %s : %u bytes at unit offset 0x%04X, %d-byte frame\n", function.name.c_str(),
                      function.size, function.start, function.frame);
    const uint32_t end = function.start + function.size;
    for (uint32_t at = function.start; at < end && unit.image.HoldsWord(at); at += 4) {
      const uint32_t word = unit.image.Word(at);
      vrv_disasm_one(word, at, text);
      listing += Format("  %04X  %08X   %s\n", at, word, text.c_str());
    }
  }
  return listing;
}

}  // namespace vorc
