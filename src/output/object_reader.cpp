#include "output/object_reader.h"

#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "base/descriptor.h"
#include "base/format.h"
#include "output/symbol_block.h"
#include "program/target_options.h"

namespace vorc {
namespace {

constexpr size_t kOldHeaderBytes = 960;
constexpr uint32_t kMostSections = 10000;
// Where headers of version 3 and of version 2 keep what the linker asks for.
constexpr size_t kSectionCount = 1488;
constexpr size_t kSectionOffset = 1496;
constexpr size_t kHandle = 1544;
constexpr size_t kOldSectionCount = 920;
constexpr size_t kOldHandle = 936;

constexpr size_t kSectionBytes = 344;
constexpr size_t kSectionName = 12;
constexpr size_t kElementCount = 328;
constexpr size_t kNextSection = 336;
constexpr size_t kElementBytes = 1400;
constexpr size_t kElementName = 16;
constexpr size_t kElementNameRoom = 256;
constexpr size_t kElementValue = 1364;
constexpr size_t kElementLocal = 1372;
constexpr size_t kElementData = 1392;

constexpr uint64_t kNarrow = 32;
constexpr uint64_t kWide = 64;

using Bytes = std::vector<uint8_t>;

bool ReadAt(int fd, uint64_t offset, std::span<uint8_t> bytes) {
  for (size_t got = 0; got < bytes.size();) {
    const auto at = static_cast<off_t>(offset + got);
    if (at < 0) return false;
    const ssize_t more = RetryInterrupted([&] { return pread(fd, &bytes[got], bytes.size() - got, at); });
    if (more <= 0) return false;
    got += static_cast<size_t>(more);
  }
  return true;
}

uint64_t FileSize(int fd) {
  struct stat about {};
  return fstat(fd, &about) == 0 ? static_cast<uint64_t>(about.st_size) : 0;
}

bool IsNamed(std::string_view name, const char* wanted) {
  return name.size() == std::strlen(wanted) && strncasecmp(name.data(), wanted, name.size()) == 0;
}

/// Walks the sections of one object.
class SectionWalk {
 public:
  SectionWalk(int fd, std::vector<SectionSymbol>& symbols)
      : fd_(fd), size_(FileSize(fd)), symbols_(symbols) {}

  bool Run(SectionList list) {
    uint64_t at = list.offset;
    for (uint32_t i = 0; i < list.count; ++i) {
      Bytes section(kSectionBytes);
      if (!ReadAt(fd_, at, section) || !Collect(at, section)) return false;
      at = GetUnsigned(section, kNextSection, 8);
    }
    return true;
  }

 private:
  bool Collect(uint64_t section_at, const Bytes& section) {
    const std::string_view name = GetText(section, kSectionName, kElementCount - kSectionName);
    if (IsNamed(name, "UNRESOLVED")) return true;
    const bool has_data = !IsNamed(name, "bss") && !IsNamed(name, "common");
    const auto count = static_cast<int64_t>(GetUnsigned(section, kElementCount, 8));
    uint64_t at = section_at + kSectionBytes;
    Bytes element(kElementBytes);
    for (int64_t i = 0; i < count; ++i) {
      // Sections that share their elements could make much of a small file.
      if (++visited_ > size_ / kElementBytes || !ReadAt(fd_, at, element)) return false;
      Keep(name, section_at, at, element);
      const uint64_t data = has_data ? GetUnsigned(element, kElementData, 8) : 0;
      if (data > size_) return false;
      at += kElementBytes + data;
    }
    return true;
  }

  void Keep(std::string_view section, uint64_t section_at, uint64_t at, const Bytes& element) {
    const std::string_view name = GetText(element, kElementName, kElementNameRoom);
    if (name.empty() || GetUnsigned(element, kElementLocal, 4) != 0) return;
    const auto value = static_cast<uint32_t>(GetUnsigned(element, kElementValue, 4));
    symbols_.push_back({std::string(name), value, std::string(section), section_at, at});
  }

  int fd_;
  uint64_t size_;
  uint64_t visited_ = 0;
  std::vector<SectionSymbol>& symbols_;
};

// The positions of the directory count from the start of the file, as if nothing were deflated.
std::string ReadDirectory(TableFile& file) {
  const size_t base = file.format.header_bytes;
  for (size_t i = 0; i < kDiskTables; ++i) {
    const DiskRecord& record = DiskRecordOf(static_cast<DiskTable>(i));
    const uint64_t count = GetUnsigned(file.header, file.format.directory + 16 * i, 8);
    const uint64_t position = GetUnsigned(file.header, file.format.directory + 16 * i + 8, 8);
    if (count == 0 && position == 0) continue;
    const auto at = static_cast<unsigned long long>(position);
    if (position < base || position - base > file.block.size())
      return Format("the table of %s stands at %llu, outside of the block", record.title, at);
    const bool trimmed = static_cast<DiskTable>(i) == DiskTable::kSymbol;
    const size_t least = trimmed ? record.bytes - (kSymbolTail - kSymbolHead) : record.bytes;
    if (count > (file.block.size() - (position - base)) / least)
      return Format("the table of %s ends outside of the block", record.title);
    file.tables[i] = {count, position - base};
  }
  return "";
}

}  // namespace

std::string LoadLinkerInputObjectHeader(LinkerInput& input, int fd) {
  const std::string unreadable = Format("Link error: invalid input file '%s'", input.path.c_str());
  input.header.assign(header::kShortBytes, 0);
  if (!ReadAt(fd, 0, input.header)) return unreadable;
  input.version = static_cast<uint16_t>(GetUnsigned(input.header, header::kVersion, 2));
  if (input.version == kLibraryVersion) return "";
  const bool old = input.version == kOldObjectVersion;
  if (!old && input.version != kObjectFormat.version)
    return Format("Link error: invalid input file format'%s'", input.path.c_str());
  input.header.assign(old ? kOldHeaderBytes : kObjectFormat.header_bytes, 0);
  if (!ReadAt(fd, 0, input.header)) return unreadable;
  PutNumber(input.header, old ? kOldHandle : kHandle, 4, static_cast<uint64_t>(fd));
  return "";
}

int GetLifHandle(const LinkerInput& input) {
  const size_t at = input.version == kOldObjectVersion ? kOldHandle : kHandle;
  return input.header.size() < at + 4 ? -1 : static_cast<int>(GetUnsigned(input.header, at, 4));
}

SectionList GetLifSectionListLocation(const LinkerInput& input, std::string* message) {
  const bool old = input.version == kOldObjectVersion;
  if (input.header.size() < (old ? kOldHeaderBytes : kObjectFormat.header_bytes)) return {};
  SectionList list;
  list.count = static_cast<uint32_t>(GetUnsigned(input.header, old ? kOldSectionCount : kSectionCount, 4));
  list.offset = old ? kOldHeaderBytes : GetUnsigned(input.header, kSectionOffset, 8);
  if (list.count <= kMostSections) return list;
  *message = Format(
      "Link error: implausible section_count (%d) reading an object header - treating as corrupt/stale, "
      "skipping. Rebuild this .obj through the current toolchain.",
      static_cast<int>(list.count));
  list.count = 0;
  return list;
}

const std::vector<SectionSymbol>& GetLifSectionSymbols(const LinkerInput& input) {
  return input.symbols;
}

bool LoadSectionSymbols(LinkerInput& input) {
  if (input.symbols_loaded) return true;
  const int fd = GetLifHandle(input);
  if (fd < 1) return false;
  std::string ignored;
  input.symbols_loaded = SectionWalk(fd, input.symbols).Run(GetLifSectionListLocation(input, &ignored));
  if (!input.symbols_loaded) input.symbols.clear();
  return input.symbols_loaded;
}

std::string CannotMix(const LinkerInput& first, const LinkerInput& second) {
  const auto stamp = [](const LinkerInput& input, size_t at) { return GetUnsigned(input.header, at, 8); };
  const auto address_size = [&stamp](const LinkerInput& input) -> uint64_t {
    const uint64_t size = stamp(input, header::kAddressSize);
    if (size != 0) return size;
    return stamp(input, header::kCpuSize) == kNarrow ? kNarrow : kWide;
  };
  const auto differ = [&](size_t at) { return stamp(first, at) != stamp(second, at); };
  const auto number = [](uint64_t value) { return static_cast<long>(value); };
  if (differ(header::kCpuSize)) {
    return Format(
        "vlink: error: cannot mix CPUSIZE %ld and %ld objects in one link - all inputs must be the same word "
        "size",
        number(stamp(first, header::kCpuSize)), number(stamp(second, header::kCpuSize)));
  }
  if (address_size(first) != address_size(second)) {
    return Format(
        "vlink: error: cannot mix ADDRSIZE %ld and %ld objects in one link - all inputs must share one "
        "address bus width",
        number(address_size(first)), number(address_size(second)));
  }
  if (differ(header::kPic)) {
    return "vlink: error: cannot mix position-independent and absolute objects in one link - a PIC object "
           "expects CODEBASE to be set, an absolute one only runs where it was linked";
  }
  if (!differ(header::kExeFormat)) return "";
  return "vlink: error: cannot mix EXEFORMAT " +
         std::string(ExeFormatName(stamp(first, header::kExeFormat))) + " and " +
         std::string(ExeFormatName(stamp(second, header::kExeFormat))) +
         " objects in one link - the output is a single file with a single container";
}

std::string ReadTableFile(int fd, TableFile& file) {
  Bytes start(header::kShortBytes);
  if (!ReadAt(fd, 0, start)) return "too short for a header";
  if (GetText(start, 0, header::kMagic.size()) != header::kMagic) return "no symbol or object file";
  const uint64_t version = GetUnsigned(start, header::kVersion, 2);
  if (version != kObjectFormat.version && version != kSymbolFormat.version)
    return Format("a header of version %d has no tables of the compiler", static_cast<int>(version));
  file.format = version == kObjectFormat.version ? kObjectFormat : kSymbolFormat;
  Bytes bytes(file.format.header_bytes);
  if (!ReadAt(fd, 0, bytes)) return "too short for its header";
  file.header = std::move(bytes);
  if (GetUnsigned(file.header, kVsymLengthAt, 8) != 0) {
    const VsymStatus status = vsym_read_block(fd, file.header, file.block);
    if (status != kVsymOk) return vsym_strerror(status);
  }
  return ReadDirectory(file);
}

bool ForEachRecord(const TableFile& file, DiskTable table,
                   const std::function<void(std::span<const uint8_t>)>& visit) {
  const TableFile::Table& place = file.tables[static_cast<size_t>(table)];
  const size_t bytes = DiskRecordOf(table).bytes;
  if (bytes == 1) return true;
  std::span<const uint8_t> rest(file.block);
  rest = rest.subspan(place.start);
  Bytes whole(disk::SymbolRec::kBytes);
  for (uint64_t i = 0; i < place.count; ++i) {
    if (table != DiskTable::kSymbol) {
      if (rest.size() < bytes) return false;
      visit(rest.first(bytes));
      rest = rest.subspan(bytes);
      continue;
    }
    if (rest.size() < kSymbolHead) return false;
    const auto count = static_cast<int16_t>(GetNumber(rest, disk::SymbolRec::DimensionCount));
    const size_t front = kSymbolHead + StoredDimensions(count) * kDimensionBytes;
    const size_t tail = whole.size() - kSymbolTail;
    if (rest.size() < front + tail) return false;
    std::fill(whole.begin(), whole.end(), uint8_t{0});
    std::copy_n(rest.begin(), front, whole.begin());
    std::copy_n(rest.begin() + static_cast<std::ptrdiff_t>(front), tail,
                whole.begin() + static_cast<std::ptrdiff_t>(kSymbolTail));
    visit(whole);
    rest = rest.subspan(front + tail);
  }
  return true;
}

bool PoolText(const TableFile& file, DiskTable pool, int64_t offset, std::string_view& text) {
  const TableFile::Table& place = file.tables[static_cast<size_t>(pool)];
  if (offset < 0 || static_cast<uint64_t>(offset) >= place.count) return false;
  const auto at = static_cast<uint64_t>(offset);
  text = GetText(file.block, place.start + at, place.count - at);
  return true;
}

}  // namespace vorc
