#include "output/disk_records.h"

#include <algorithm>

namespace vorc {
namespace {

constexpr DiskField Field(const char* name, uint16_t offset, uint16_t width, DiskType type,
                          DiskTable target) {
  return {name, offset, width, type, target};
}

// An array of none isn't possible: each has one more behind the last, which is never shown.
#define RECORD(id, title, bytes) constexpr DiskField k##id##Fields[] = {
#define FIELD(name, offset, width, type, target) \
  Field(#name, offset, width, DiskType::type, DiskTable::target),
#define END()                                               \
  Field(nullptr, 0, 0, DiskType::kNumber, DiskTable::kNone) \
  }                                                         \
  ;
#include "output/disk_records.def"

template <size_t N>
constexpr std::span<const DiskField> Shown(const DiskField (&fields)[N]) {
  return {fields, N - 1};
}

constexpr DiskRecord kRecords[] = {
#define RECORD(id, title, bytes) {title, bytes, Shown(k##id##Fields)},
#define FIELD(name, offset, width, type, target)
#define END()
#include "output/disk_records.def"
};

// Every field stands inside its record, behind the one before it.
constexpr bool FieldsFit() {
  for (const DiskRecord& record : kRecords) {
    size_t end = 0;
    for (const DiskField& field : record.fields) {
      if (field.offset < end) return false;
      end = size_t{field.offset} + field.width;
    }
    if (end > record.bytes) return false;
  }
  return true;
}
static_assert(FieldsFit());

}  // namespace

const DiskRecord& DiskRecordOf(DiskTable table) {
  return kRecords[static_cast<size_t>(table)];
}

void PutNumber(std::span<uint8_t> bytes, size_t offset, size_t width, uint64_t value) {
  for (size_t i = 0; i < width; ++i) bytes[offset + i] = static_cast<uint8_t>(value >> (8 * i));
}

uint64_t GetUnsigned(std::span<const uint8_t> bytes, size_t offset, size_t width) {
  uint64_t value = 0;
  for (size_t i = width; i-- > 0;) value = value << 8 | bytes[offset + i];
  return value;
}

int64_t GetNumber(std::span<const uint8_t> bytes, const DiskField& field) {
  const auto unused = static_cast<int>(64 - 8 * field.width);
  return static_cast<int64_t>(GetUnsigned(bytes, field.offset, field.width) << unused) >> unused;
}

std::string_view GetText(std::span<const uint8_t> bytes, size_t offset, size_t room) {
  const std::string_view field(reinterpret_cast<const char*>(bytes.data()) + offset, room);
  return field.substr(0, std::min(field.find('\0'), room));
}

}  // namespace vorc
