#include "base/picture.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>

#include "base/jpeg_tables.h"

namespace vorc {

namespace {

// What one piece of memory may measure while a picture is decoded on this thread. A compressed
// stream may unfold into far more than the picture of its header can use.
thread_local size_t allocation_limit = 0;

// Zeroed, since some decoders leave what a cut file lacks as it was.
void* LimitedMalloc(size_t size) {
  return size <= allocation_limit ? std::calloc(1, size) : nullptr;
}

void* LimitedRealloc(void* memory, size_t size) {
  return size <= allocation_limit ? std::realloc(memory, size) : nullptr;
}

}  // namespace

}  // namespace vorc

#define STBI_MALLOC(size) vorc::LimitedMalloc(size)
#define STBI_REALLOC(memory, size) vorc::LimitedRealloc(memory, size)
#define STBI_FREE(memory) std::free(memory)
#define STBI_NO_STDIO
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>

namespace vorc {

namespace {

constexpr size_t kDecoderState = size_t{1} << 20;
constexpr size_t kBytesPerPixel = 16;  // RGBA of 16 bits, twice

struct PixelsFree {
  void operator()(stbi_uc* pixels) const { stbi_image_free(pixels); }
};

size_t AllocationLimit(size_t file_size, size_t pixels) {
  return std::max(2 * file_size, kBytesPerPixel * pixels) + kDecoderState;
}

/// False for a PNM file with fewer bytes of pixels than its header tells, which the decoder would pass.
bool HasAllPnmPixels(const stbi_uc* data, int size) {
  stbi__context context;
  stbi__start_mem(&context, data, size);
  if (stbi__pnm_test(&context) == 0) return true;
  int width = 0, height = 0, channels = 0;
  const int bits = stbi__pnm_info(&context, &width, &height, &channels);
  const auto left = context.img_buffer_end - context.img_buffer;
  return left >= static_cast<int64_t>(width) * height * channels * (bits / 8);
}

}  // namespace

std::optional<GrayPicture> DecodeGrayPicture(std::string_view bytes, int64_t max_pixels) {
  if (bytes.size() > static_cast<size_t>(std::numeric_limits<int>::max()) || !JpegTablesFit(bytes))
    return std::nullopt;
  const auto* data = reinterpret_cast<const stbi_uc*>(bytes.data());
  const int size = static_cast<int>(bytes.size());
  int width = 0, height = 0, channels = 0;
  allocation_limit = AllocationLimit(bytes.size(), 0);
  if (stbi_info_from_memory(data, size, &width, &height, &channels) == 0) return std::nullopt;
  if (width < 1 || height < 1 || static_cast<int64_t>(width) * height > max_pixels) return std::nullopt;
  if (!HasAllPnmPixels(data, size)) return std::nullopt;
  const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
  allocation_limit = AllocationLimit(bytes.size(), count);

  int loaded_width = 0, loaded_height = 0;
  const std::unique_ptr<stbi_uc, PixelsFree> pixels(
      stbi_load_from_memory(data, size, &loaded_width, &loaded_height, &channels, STBI_grey));
  if (pixels == nullptr || loaded_width != width || loaded_height != height) return std::nullopt;
  GrayPicture picture{width, height, {}};
  try {
    picture.pixels.assign(pixels.get(), pixels.get() + count);
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
  return picture;
}

}  // namespace vorc
