// The header for authors of runtimes tells what the program calls.
#include <vorc/vlang.h>

#include <type_traits>

#include "net/language_runtimes.h"

namespace vorc {
namespace {

#define SAME(entry) static_assert(std::is_same_v<decltype(VLangEntries::entry), decltype(&::entry)>)
SAME(VLangRunSource);
SAME(VLangRunFile);
SAME(VLangOpen);
SAME(VLangRunIn);
SAME(VLangGetText);
SAME(VLangGetNumber);
SAME(VLangGetKind);
SAME(VLangSetLimitMs);
SAME(VLangSetText);
SAME(VLangSetNumber);
SAME(VLangVarCount);
SAME(VLangVarName);
SAME(VLangClose);
#undef SAME

}  // namespace
}  // namespace vorc
