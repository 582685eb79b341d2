#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tensor/tensor_file.h"

namespace {

std::string Saved(const vorc::MorvTensorRec& t) {
  std::string text;
  vorc::MorvTensorSave(t, [&](std::string_view piece) {
    text += piece;
    return true;
  });
  return text;
}

}  // namespace

// What can be read must come back unchanged once it has been written.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto t = vorc::MorvTensorLoad({reinterpret_cast<const char*>(data), size});
  if (!t) return 0;
  const std::string text = Saved(*t);
  const auto again = vorc::MorvTensorLoad(text);
  if (!again || Saved(*again) != text) std::abort();
  return 0;
}
