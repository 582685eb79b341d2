#include <cstdio>
#include <utility>

#include "builtins/bindings.h"

namespace vorc {

namespace {

// The picture built-ins of this edition are placeholders, which tell so and give an empty answer.
enum class Answer { kZero, kMinusOne, kEmptyText };

struct Placeholder {
  const char* name;
  Answer answer;
};

constexpr Placeholder kPlaceholders[] = {
    {"morv_img_new", Answer::kZero},
    {"morv_img_set", Answer::kZero},
    {"morv_img_get", Answer::kZero},
    {"morv_img_line", Answer::kZero},
    {"morv_img_rect", Answer::kZero},
    {"morv_img_fill_rect", Answer::kZero},
    {"morv_img_save_png", Answer::kZero},
    {"morv_image_crop", Answer::kZero},
    {"morv_phash_similarity", Answer::kMinusOne},
    {"morv_fingerprint_match", Answer::kMinusOne},
    {"morv_image_phash", Answer::kEmptyText},
    {"morv_ocr_extract", Answer::kEmptyText},
};
constexpr size_t kPlaceholderCount = std::size(kPlaceholders);

struct CoreNotice {
  bool given = false;
};

void TellOfCoreBuild(BuiltinCall& call, const char* name) {
  bool& given = call.runtime().State<CoreNotice>().given;
  if (!std::exchange(given, true))
    std::fputs(
        "morv: this is the CORE build - image, OCR and fingerprint\n"
        "      builtins are not included, because they depend on\n"
        "      third-party libraries that are not distributed with it.\n",
        stderr);
  std::fprintf(stderr, "morv: '%s' is not available in the core build\n", name);
}

template <size_t kIndex>
void PlaceholderBuiltin(BuiltinCall& call) {
  constexpr Placeholder kThis = kPlaceholders[kIndex];
  TellOfCoreBuild(call, kThis.name);
  switch (kThis.answer) {
    case Answer::kZero: return call.ReturnInt(0);
    case Answer::kMinusOne: return call.ReturnInt(-1);
    case Answer::kEmptyText: return call.ReturnText("");
  }
}

void MorvImgFreeBuiltin(BuiltinCall&) {}

struct Table {
  BuiltinBinding rows[kPlaceholderCount + 1];
};

template <size_t... kIndex>
constexpr Table MakeTable(std::index_sequence<kIndex...>) {
  return {
      {{kPlaceholders[kIndex].name, PlaceholderBuiltin<kIndex>}..., {"morv_img_free", MorvImgFreeBuiltin}}};
}

constexpr Table kBuiltins = MakeTable(std::make_index_sequence<kPlaceholderCount>());

}  // namespace

std::span<const BuiltinBinding> PictureBuiltins() {
  return kBuiltins.rows;
}

}  // namespace vorc
