#include "output/object_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "base/console.h"
#include "base/descriptor.h"
#include "base/format.h"
#include "output/disk_records.h"
#include "output/output_files.h"
#include "output/program_tables.h"

namespace vorc {
namespace {

constexpr mode_t kOwnerWrites = 0200;
constexpr uint64_t kCpuModel = 1;
constexpr uint64_t kFormatWordA = 1;
constexpr uint64_t kFormatWordB = 2;

using Bytes = std::vector<uint8_t>;

// What both kinds of file have in common.
Bytes NewHeader(const DiskFormat& format, const std::string& name) {
  Bytes bytes(format.header_bytes);
  std::memcpy(bytes.data(), header::kMagic.data(), header::kMagic.size());
  PutNumber(bytes, header::kFormatA, 4, kFormatWordA);
  PutNumber(bytes, header::kFormatB, 4, kFormatWordB);
  PutNumber(bytes, header::kVersion, 2, format.version);
  std::memcpy(&bytes[header::kName], name.data(), std::min(name.size(), header::kNameRoom));
  PutNumber(bytes, header::kBlockOffset, 4, format.header_bytes);
  return bytes;
}

void FillObjectHeader(const TargetOptions& target, const VorcReference128& reference, Bytes& bytes) {
  PutNumber(bytes, header::kShortLength, 8, header::kShortBytes);
  PutNumber(bytes, header::kPic, 8, target.pic ? 1 : 0);
  PutNumber(bytes, header::kExeFormat, 8, static_cast<uint64_t>(target.exe_format));
  PutNumber(bytes, header::kAddressSize, 8, static_cast<uint64_t>(target.address_size));
  PutNumber(bytes, header::kCpuSize, 8, static_cast<uint64_t>(target.cpu_size));
  PutNumber(bytes, header::kCpuModel, 4, kCpuModel);
  PutNumber(bytes, header::kBlockOffsetAgain, 8, kObjectFormat.header_bytes);
  PutNumber(bytes, header::kReference, 8, reference.high);
  PutNumber(bytes, header::kReference + 8, 8, reference.low);
}

// The file is readable for nobody, and so an old one can't be opened again: it makes way.
Descriptor Create(const std::string& path) {
  unlink(path.c_str());
  return Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, kOwnerWrites));
}

bool WriteHeader(int fd, const Bytes& bytes) {
  const ssize_t written = RetryInterrupted([&] { return pwrite(fd, bytes.data(), bytes.size(), 0); });
  return written == static_cast<ssize_t>(bytes.size());
}

// The header comes twice: until the block stands, its directory tells of nothing.
VsymStatus WriteFile(int fd, const DiskFormat& format, Bytes& bytes, const ProgramTables& tables,
                     bool compress) {
  const auto base = static_cast<off_t>(format.header_bytes);
  const Bytes placeholder = bytes;
  if (!WriteHeader(fd, bytes) || lseek(fd, base, SEEK_SET) != base) return kVsymIo;
  for (size_t i = 0; i < kDiskTables; ++i) {
    const ProgramTables::Entry& entry = tables.directory[i];
    PutNumber(bytes, format.directory + 16 * i, 8, entry.count);
    PutNumber(bytes, format.directory + 16 * i + 8, 8, format.header_bytes + entry.start);
  }
  const VsymStatus status = vsym_emit(fd, tables.block, bytes, compress);
  if (status != kVsymOk) return status;
  if (WriteHeader(fd, bytes)) return kVsymOk;
  static_cast<void>(WriteHeader(fd, placeholder));
  return kVsymIo;
}

// A program without its symbol file is still a program: nothing here stops a compilation.
void CreateSymbolFile(const C_SLOT& slot, const std::string& source, const ProgramTables& tables) {
  const Descriptor file = Create(SetFileExt(source, "symtab"));
  if (!file) return;
  Bytes bytes = NewHeader(kSymbolFormat, source);
  const VsymStatus status = WriteFile(file.get(), kSymbolFormat, bytes, tables, slot.Target.compress);
  if (status != kVsymOk) WriteOutput(Format("vorc: symbol file not written: %s\n", vsym_strerror(status)));
}

bool CreateObjectFile(const C_SLOT& slot, const std::string& source, const VorcReference128& reference,
                      const ProgramTables& tables) {
  const std::string path = SetFileExt(source, "obj");
  const Descriptor file = Create(path);
  if (!file) {
    WriteOutput(Format("telobj: cannot create object file '%s'\n", path.c_str()));
    return false;
  }
  Bytes bytes = NewHeader(kObjectFormat, path);
  FillObjectHeader(slot.Target, reference, bytes);
  const VsymStatus status = WriteFile(file.get(), kObjectFormat, bytes, tables, slot.Target.compress);
  if (status != kVsymOk) WriteOutput(Format("vorc: symbol table not written: %s\n", vsym_strerror(status)));
  return status == kVsymOk;
}

}  // namespace

bool WriteSymbolAndObjectFiles(const C_SLOT& slot, const std::string& source,
                               const VorcReference128& reference) {
  ProgramTables tables;
  if (!EncodeProgram(slot, tables)) {
    WriteOutput("vorc: cannot allocate the symbol block buffer\n");
    return false;
  }
  CreateSymbolFile(slot, source, tables);
  return CreateObjectFile(slot, source, reference, tables);
}

}  // namespace vorc
