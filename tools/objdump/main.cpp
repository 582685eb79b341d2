// vorc-objdump: prints what stands in the symbol and object files of the compiler.

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <string>

#include "base/descriptor.h"
#include "output/disk_records.h"
#include "output/object_reader.h"
#include "output/symbol_block.h"

namespace {

using namespace vorc;

constexpr int kExitDamaged = 1;
constexpr int kExitUsage = 2;
constexpr const char* kUsage =
    "usage: vorc-objdump [--headers] file...\n"
    "Prints symbol and object files of vorc as text: the header, the directory, all tables and what the\n"
    "assembler added.\n"
    "\n"
    "  --headers   no tables\n"
    "  --link      only tells why the files can't become one program\n"
    "  --version, --help\n";

// Texts come from a file that may hold anything.
void PrintText(std::string_view text) {
  std::putchar('"');
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\')
      std::printf("\\%c", c);
    else if (byte < ' ' || byte > '~')
      std::printf("\\x%02x", static_cast<unsigned>(byte));
    else
      std::putchar(c);
  }
  std::putchar('"');
}

/// Prints the tables of one file and counts what is wrong with them.
class Dump {
 public:
  explicit Dump(const TableFile& file) : file_(file) {}

  void PrintHeader() const;
  /// How many references lead nowhere and tables end early.
  int PrintTables();

 private:
  uint64_t Word(size_t offset, size_t width) const { return GetUnsigned(file_.header, offset, width); }
  void PrintPool(DiskTable pool) const;
  void PrintFields(std::span<const uint8_t> record, const DiskRecord& kind, const char* indent);
  void PrintField(std::span<const uint8_t> record, const DiskField& field);
  void PrintReference(int64_t index, DiskTable target);
  void PrintPlaceInPool(int64_t offset, DiskTable pool);
  void PrintRow(std::span<const uint8_t> record, const DiskField& field);

  const TableFile& file_;
  int64_t dimensions_ = 0;
  int faults_ = 0;
};

void Dump::PrintHeader() const {
  const bool object = file_.format.version == kObjectFormat.version;
  std::printf("%s file, version %d\n  name ", object ? "object" : "symbol", file_.format.version);
  PrintText(GetText(file_.header, header::kName, header::kNameRoom));
  std::printf("\n  block at %" PRIu64 ", %" PRIu64 " bytes", Word(header::kBlockOffset, 4),
              Word(kVsymLengthAt, 8));
  if (Word(kVsymCompressedAt, 8) != 0) std::printf(", deflated to %" PRIu64, Word(kVsymStoredAt, 8));
  if (object) {
    std::printf("\n  CPUSIZE %" PRIu64 " ADDRSIZE %" PRIu64 " EXEFORMAT %" PRIu64 " PIC %" PRIu64
                " CPU %" PRIu64,
                Word(header::kCpuSize, 8), Word(header::kAddressSize, 8), Word(header::kExeFormat, 8),
                Word(header::kPic, 8), Word(header::kCpuModel, 4));
    std::printf("\n  reference %016" PRIX64 "%016" PRIX64, Word(header::kReference, 8),
                Word(header::kReference + 8, 8));
  }
  std::printf("\n  directory\n");
  for (size_t i = 0; i < kDiskTables; ++i) {
    std::printf("    %-20s %10" PRIu64 " at %" PRIu64 "\n", DiskRecordOf(static_cast<DiskTable>(i)).title,
                Word(file_.format.directory + 16 * i, 8), Word(file_.format.directory + 16 * i + 8, 8));
  }
}

void Dump::PrintPool(DiskTable pool) const {
  std::string_view text;
  for (int64_t at = 0; PoolText(file_, pool, at, text); at += static_cast<int64_t>(text.size()) + 1) {
    std::printf("  %" PRId64 " ", at);
    PrintText(text);
    std::putchar('\n');
  }
}

void Dump::PrintReference(int64_t index, DiskTable target) {
  std::printf("%" PRId64, index);
  if (index >= 0 && static_cast<uint64_t>(index) < file_.tables[static_cast<size_t>(target)].count) return;
  ++faults_;
  std::printf(" (no such record)");
}

void Dump::PrintPlaceInPool(int64_t offset, DiskTable pool) {
  std::string_view text;
  if (PoolText(file_, pool, offset, text)) return PrintText(text);
  ++faults_;
  std::printf("%" PRId64 " (outside of the texts)", offset);
}

void Dump::PrintRow(std::span<const uint8_t> record, const DiskField& field) {
  const size_t width = field.type == DiskType::kBytes ? 1 : kDimensionBytes;
  for (size_t i = 0; i < field.width / width; ++i) {
    const auto value = static_cast<int64_t>(GetUnsigned(record, field.offset + i * width, width));
    if (field.type == DiskType::kDimensions ? static_cast<int64_t>(i) >= dimensions_
                                            : value <= 0 - (width > 1))
      break;
    std::printf("%s", i > 0 ? " " : "");
    if (field.type == DiskType::kReferences)
      PrintReference(value, field.target);
    else
      std::printf("%" PRId64, value);
  }
}

void Dump::PrintField(std::span<const uint8_t> record, const DiskField& field) {
  switch (field.type) {
    case DiskType::kNumber: {
      const bool small = field.width == 1;
      std::printf("%" PRId64, small ? int64_t{record[field.offset]} : GetNumber(record, field));
      break;
    }
    case DiskType::kText: PrintText(GetText(record, field.offset, field.width)); break;
    case DiskType::kName: PrintPlaceInPool(GetNumber(record, field), DiskTable::kStrings); break;
    case DiskType::kTokenName:
      PrintPlaceInPool(static_cast<int64_t>(GetUnsigned(record, field.offset, field.width)),
                       DiskTable::kTokens);
      break;
    case DiskType::kReference: PrintReference(GetNumber(record, field), field.target); break;
    case DiskType::kReferences:
    case DiskType::kBytes:
    case DiskType::kDimensions: PrintRow(record, field); break;
    case DiskType::kScope: break;
  }
}

// What is nothing stays unsaid: a zero, a text or a reference that isn't there.
bool SaysNothing(std::span<const uint8_t> record, const DiskField& field) {
  switch (field.type) {
    case DiskType::kNumber: return GetNumber(record, field) == 0;
    case DiskType::kText: return record[field.offset] == 0;
    case DiskType::kName:
    case DiskType::kReference: return GetNumber(record, field) == -1;
    case DiskType::kReferences: return GetUnsigned(record, field.offset, kDimensionBytes) == UINT64_MAX;
    case DiskType::kBytes: return record[field.offset] == 0;
    default: return false;
  }
}

void Dump::PrintFields(std::span<const uint8_t> record, const DiskRecord& kind, const char* indent) {
  for (const DiskField& field : kind.fields) {
    if (std::strcmp(field.name, "DimensionCount") == 0) dimensions_ = GetNumber(record, field);
    if (field.type == DiskType::kDimensions && dimensions_ <= 0) continue;
    if (SaysNothing(record, field)) continue;
    std::printf("%s%s ", indent, field.name);
    PrintField(record, field);
    std::putchar('\n');
    if (field.type == DiskType::kScope)
      PrintFields(record.subspan(field.offset, field.width), DiskRecordOf(DiskTable::kScope), "      ");
  }
}

int Dump::PrintTables() {
  for (size_t i = 0; i < kDiskTables; ++i) {
    const auto table = static_cast<DiskTable>(i);
    const DiskRecord& kind = DiskRecordOf(table);
    std::printf("%s\n", kind.title);
    if (table == DiskTable::kTokens || table == DiskTable::kStrings) {
      PrintPool(table);
      continue;
    }
    uint64_t number = 0;
    const bool whole = ForEachRecord(file_, table, [&](std::span<const uint8_t> record) {
      std::printf("  [%" PRIu64 "]\n", number++);
      PrintFields(record, kind, "    ");
    });
    if (whole) continue;
    ++faults_;
    std::printf("  (the table ends early)\n");
  }
  return faults_;
}

int Unreadable(const char* path) {
  std::fprintf(stderr, "vorc-objdump: can't read %s: %s\n", path, std::strerror(errno));
  return kExitUsage;
}

// What the assembler put into an object, of whichever version.
int PrintSections(const char* path, int fd) {
  LinkerInput input;
  input.path = path;
  const std::string fault = LoadLinkerInputObjectHeader(input, fd);
  std::string message;
  const SectionList list = GetLifSectionListLocation(input, &message);
  if (!fault.empty() || !message.empty()) {
    std::fprintf(stderr, "%s\n", (fault.empty() ? message : fault).c_str());
    return kExitDamaged;
  }
  std::printf("sections\n  %" PRIu32 " at %" PRIu64 "\n", list.count, list.offset);
  if (!LoadSectionSymbols(input)) {
    std::fprintf(stderr, "vorc-objdump: %s: the list of sections is damaged\n", path);
    return kExitDamaged;
  }
  for (const SectionSymbol& symbol : GetLifSectionSymbols(input)) {
    std::printf("  ");
    PrintText(symbol.section_name);
    std::putchar(' ');
    PrintText(symbol.name);
    std::printf(" value %" PRIu32 " at %" PRIu64 "\n", symbol.value, symbol.element);
  }
  return 0;
}

// Headers that stand for something else than the compiler's tables; none otherwise.
const char* ForeignKind(int fd) {
  LinkerInput input;
  if (!LoadLinkerInputObjectHeader(input, fd).empty()) return nullptr;
  if (input.version == kLibraryVersion) return "library, version 5";
  return input.version == kOldObjectVersion ? "object file, version 2" : nullptr;
}

int DumpFile(const char* path, bool tables) {
  const Descriptor fd(open(path, O_RDONLY | O_CLOEXEC));
  if (!fd) return Unreadable(path);
  TableFile file;
  const std::string fault = ReadTableFile(fd.get(), file);
  const char* foreign = file.header.empty() ? ForeignKind(fd.get()) : nullptr;
  if (foreign != nullptr) {
    std::printf("%s\n", foreign);
    return std::strncmp(foreign, "object", 6) == 0 ? PrintSections(path, fd.get()) : 0;
  }
  Dump dump(file);
  if (!file.header.empty()) dump.PrintHeader();
  if (!fault.empty()) {
    std::fprintf(stderr, "vorc-objdump: %s: %s\n", path, fault.c_str());
    return kExitDamaged;
  }
  const int faults = tables ? dump.PrintTables() : 0;
  if (faults > 0)
    std::fprintf(stderr, "vorc-objdump: %s: %d references or tables are damaged\n", path, faults);
  const bool object = file.format.version == kObjectFormat.version;
  const int sections = tables && object ? PrintSections(path, fd.get()) : 0;
  return faults > 0 ? kExitDamaged : sections;
}

// Holds every file against the first.
int CheckLink(char** paths, int count) {
  LinkerInput first;
  int status = 0;
  for (int i = 0; i < count; ++i) {
    const Descriptor fd(open(paths[i], O_RDONLY | O_CLOEXEC));
    if (!fd) return Unreadable(paths[i]);
    LinkerInput input;
    input.path = paths[i];
    std::string fault = LoadLinkerInputObjectHeader(input, fd.get());
    if (fault.empty() && i > 0) fault = CannotMix(first, input);
    if (i == 0) first = input;
    if (fault.empty()) continue;
    std::fprintf(stderr, "%s\n", fault.c_str());
    status = kExitDamaged;
  }
  return status;
}

struct Options {
  bool tables = true;
  bool link = false;
};

int Run(const Options& options, char** paths, int count) {
  if (options.link) return CheckLink(paths, count);
  int status = 0;
  for (int i = 0; i < count; ++i) status = std::max(status, DumpFile(paths[i], options.tables));
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  std::fputs("vorc-objdump: can't write the result\n", stderr);
  return kExitDamaged;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  int first = 1;
  for (; first < argc && std::strncmp(argv[first], "--", 2) == 0; ++first) {
    if (std::strcmp(argv[first], "--help") == 0) return std::fputs(kUsage, stdout) < 0;
    if (std::strcmp(argv[first], "--version") == 0) return std::puts("vorc-objdump " VORC_VERSION) < 0;
    if (std::strcmp(argv[first], "--headers") == 0)
      options.tables = false;
    else if (std::strcmp(argv[first], "--link") == 0)
      options.link = true;
    else
      break;
  }
  if (first >= argc || std::strncmp(argv[first], "--", 2) == 0) {
    std::fputs(kUsage, stderr);
    return kExitUsage;
  }
  return Run(options, argv + first, argc - first);
}
