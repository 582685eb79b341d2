#include "tensor/tensor.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "base/file.h"

namespace vorc {

namespace {

// Fresh memory costs nothing before it is written, so the host grants more than it has. A run that
// then fills it would be killed; counting turns that into an operation that fails.
std::atomic<size_t> bytes_in_use = 0;

// What the group of processes may use that this one belongs to; a container is one.
size_t MemoryOfTheGroup() {
  const File file(std::fopen("/sys/fs/cgroup/memory.max", "r"));
  unsigned long bytes = 0;
  return file && std::fscanf(file.get(), "%lu", &bytes) == 1 ? bytes : std::numeric_limits<size_t>::max();
}

size_t MemoryOfTheMachine() {
  static const size_t bytes =
      std::min(static_cast<size_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<size_t>(sysconf(_SC_PAGESIZE)),
               MemoryOfTheGroup());
  return bytes;
}

bool Claim(size_t bytes) {
  if (bytes_in_use.fetch_add(bytes) + bytes <= MemoryOfTheMachine()) return true;
  bytes_in_use -= bytes;
  return false;
}

bool Inside(const MorvTensorRec& t, int32_t row, int32_t col) {
  return row >= 0 && row < t.rows() && col >= 0 && col < t.cols();
}

}  // namespace

MorvTensorRec::~MorvTensorRec() {
  bytes_in_use -= values().size_bytes();
  std::free(data_);
}

size_t MorvTensorRec::BytesInUse() {
  return bytes_in_use;
}

TensorPtr MorvTensorNew(int32_t rows, int32_t cols) {
  if (rows < 1 || cols < 1) return nullptr;
  const size_t count = static_cast<size_t>(rows) * static_cast<size_t>(cols);
  if (count > MemoryOfTheMachine() / sizeof(double) || !Claim(count * sizeof(double))) return nullptr;
  auto* data = static_cast<double*>(std::calloc(count, sizeof(double)));
  if (data == nullptr) {
    bytes_in_use -= count * sizeof(double);
    return nullptr;
  }
  return TensorPtr(new MorvTensorRec(rows, cols, data));
}

double MorvTensorGet(const MorvTensorRec& t, int32_t row, int32_t col) {
  return Inside(t, row, col) ? t.Row(static_cast<size_t>(row))[static_cast<size_t>(col)] : 0.0;
}

bool MorvTensorSet(MorvTensorRec& t, int32_t row, int32_t col, double value) {
  if (!Inside(t, row, col)) return false;
  t.Row(static_cast<size_t>(row))[static_cast<size_t>(col)] = value;
  return true;
}

void MorvTensorInitSpread(MorvTensorRec& t, int32_t seed) {
  constexpr uint32_t kLevels = 17;
  constexpr double kStep = 0.02;
  for (size_t row = 0; row < t.RowCount(); ++row) {
    uint32_t v = 13 * static_cast<uint32_t>(row) + 7 * static_cast<uint32_t>(seed);
    for (double& value : t.Row(row)) {
      value = (static_cast<int32_t>(v % kLevels) - 8) * kStep;
      v += 29;
    }
  }
}

}  // namespace vorc
