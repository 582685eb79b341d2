#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "retarget/code_bytes.h"

namespace vorc {

/// A function of a unit. Offsets count bytes from the start of the unit's code.
struct RvFunction {
  std::string name;
  uint32_t start = 0;
  uint32_t size = 0;
  int32_t frame = 0;
  /// Off for one that is not to be seen from outside, since something in it could not be translated.
  bool emitted = true;
  /// Where calls of it go, a label of the encoder or -1.
  int32_t label = -1;

  bool Visible() const { return emitted && size > 0; }
};

/// A variable in the data area; `offset` counts from its start.
struct RvGlobal {
  std::string name;
  uint32_t offset = 0;
  uint32_t size = 0;
};

/// An AUIPC with an ADDI behind it that load the address of a global, an index or -1 for none.
struct RvAddressSite {
  uint32_t offset = 0;
  int32_t global = -1;
};

/// What a compilation for RISC-V leaves.
struct RvUnit {
  /// The code; from RvPlaceData on also the data behind it.
  CodeBytes image;
  uint32_t code_size = 0;
  /// Where in the image the data begin.
  uint32_t data_base = 0;
  uint32_t data_size = 0;
  std::vector<RvFunction> functions;
  std::vector<RvGlobal> globals;
  std::vector<RvAddressSite> sites;
};

/// Puts the data area, all zeros, behind the code and points the address sites to it, so that the image runs
/// wherever it lies. To be called once. False, with the code as it was, if the data are too large.
bool RvPlaceData(RvUnit& unit);

struct RvObject {
  std::string bytes;
  int symbols = 0;
  int relocations = 0;
};

/// A relocatable ELF file of 32 bits for a standard linker, with the code, a symbol for each visible function
/// and each global, and two relocations for each address site.
RvObject RvElfObject(const RvUnit& unit);

/// The map that a loader of the image needs: a line for the data, each global and each visible function.
std::string RvMap(const RvUnit& unit);

/// The two lines that begin a listing.
std::string_view RvListingHead();

/// The code of each visible function, word by word.
std::string RvListing(const RvUnit& unit);

}  // namespace vorc
