#include "output/object_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "base/console.h"
#include "base/descriptor.h"
#include "base/format.h"
#include "output/disk_records.h"
#include "output/output_files.h"
#include "output/program_tables.h"
#include "output/symbol_block.h"

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

/// One of the two files while it is written. The header comes twice: until the block stands, its directory
/// tells of nothing.
class TableFileWriter {
 public:
  /// The file is readable for nobody, and so an old one can't be opened again: it makes way.
  TableFileWriter(const DiskFormat& format, const std::string& path, Bytes header)
      : format_(format), header_(std::move(header)) {
    unlink(path.c_str());
    file_ = Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, kOwnerWrites));
    const auto base = static_cast<off_t>(format.header_bytes);
    const bool ready = file_ && WriteHeader() && lseek(file_.get(), base, SEEK_SET) == base;
    status_ = ready ? kVsymOk : kVsymIo;
  }

  bool created() const { return static_cast<bool>(file_); }
  VsymStatus status() const { return status_; }
  void Fail(VsymStatus status) { status_ = status; }
  void Append(std::span<const uint8_t> bytes) {
    if (status_ == kVsymOk) status_ = vsym_put(file_.get(), bytes);
  }
  void Finish(const TableDirectory& directory, uint64_t stored, bool deflated);

 private:
  bool WriteHeader() const {
    const ssize_t written =
        RetryInterrupted([&] { return pwrite(file_.get(), header_.data(), header_.size(), 0); });
    return written == static_cast<ssize_t>(header_.size());
  }

  const DiskFormat& format_;
  Bytes header_;
  Descriptor file_;
  VsymStatus status_ = kVsymOk;
};

void TableFileWriter::Finish(const TableDirectory& directory, uint64_t stored, bool deflated) {
  if (status_ != kVsymOk) return;
  const Bytes placeholder = header_;
  vsym_describe(header_, directory.bytes, stored, deflated);
  constexpr auto kLines = static_cast<size_t>(DiskTable::kLineNumber);
  constexpr auto kRelocations = static_cast<size_t>(DiskTable::kRelocation);
  for (size_t i = 0; i < kDiskTables; ++i) {
    // In symbol files line numbers stand ahead of relocations. Neither are made here, so that only tells on
    // where they would be.
    const bool ahead = i == kLines && format_.version == kSymbolFormat.version;
    const TableEntry& entry = directory.entries[ahead ? kRelocations : i];
    PutNumber(header_, format_.directory + 16 * i, 8, entry.count);
    PutNumber(header_, format_.directory + 16 * i + 8, 8, format_.header_bytes + entry.start);
  }
  if (WriteHeader()) return;
  status_ = kVsymIo;
  header_ = placeholder;
  static_cast<void>(WriteHeader());
}

/// Sends plain tables to both files as they come: a large program has more bytes of records than a machine
/// has memory to spare.
class PlainTables : public TableSink {
 public:
  PlainTables(TableFileWriter& symbols, TableFileWriter& object) : files_{&symbols, &object} {
    buffer_.reserve(kBufferBytes);
  }
  bool Append(std::span<const uint8_t> bytes) override {
    if (buffer_.size() + bytes.size() > kBufferBytes) Flush();
    buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
    return files_[0]->status() == kVsymOk || files_[1]->status() == kVsymOk;
  }
  void Flush() {
    for (TableFileWriter* file : files_) file->Append(buffer_);
    buffer_.clear();
  }

 private:
  static constexpr size_t kBufferBytes = size_t{1} << 18;

  TableFileWriter* files_[2];
  Bytes buffer_;
};

/// Gathers the tables for deflation, which needs them whole.
class GatheredTables : public TableSink {
 public:
  bool Start() { return vsym_builder_init(block_, 0) == kVsymOk; }
  bool Append(std::span<const uint8_t> bytes) override {
    vsym_write(block_, bytes);
    return !block_.failed;
  }
  const VsymBuilder& block() const { return block_; }

 private:
  VsymBuilder block_;
};

void WritePlain(const C_SLOT& slot, TableFileWriter& symbols, TableFileWriter& object) {
  PlainTables tables(symbols, object);
  const TableDirectory directory = EncodeProgram(slot, tables);
  tables.Flush();
  symbols.Finish(directory, 0, false);
  object.Finish(directory, 0, false);
}

bool WriteDeflated(const C_SLOT& slot, TableFileWriter& symbols, TableFileWriter& object) {
  GatheredTables tables;
  if (!tables.Start()) return false;
  const TableDirectory directory = EncodeProgram(slot, tables);
  VsymPacked packed;
  const VsymStatus status = vsym_pack(tables.block(), true, packed);
  for (TableFileWriter* file : {&symbols, &object}) {
    if (status != kVsymOk && file->status() == kVsymOk) file->Fail(status);
    file->Append(packed.bytes);
    file->Finish(directory, packed.bytes.size(), packed.deflated);
  }
  return true;
}

}  // namespace

bool WriteSymbolAndObjectFiles(const C_SLOT& slot, const std::string& source,
                               const VorcReference128& reference) {
  const std::string object_path = SetFileExt(source, "obj");
  Bytes object_header = NewHeader(kObjectFormat, object_path);
  FillObjectHeader(slot.Target, reference, object_header);
  TableFileWriter symbols(kSymbolFormat, SetFileExt(source, "symtab"), NewHeader(kSymbolFormat, source));
  TableFileWriter object(kObjectFormat, object_path, std::move(object_header));
  bool allocated = true;
  if (slot.Target.compress)
    allocated = WriteDeflated(slot, symbols, object);
  else
    WritePlain(slot, symbols, object);
  // A program without its symbol file is still a program: that doesn't stop a compilation.
  if (symbols.status() != kVsymOk)
    WriteOutput(Format("vorc: symbol file not written: %s\n", vsym_strerror(symbols.status())));
  if (!object.created()) {
    WriteOutput(Format("telobj: cannot create object file '%s'\n", object_path.c_str()));
  } else if (!allocated) {
    WriteOutput("vorc: cannot allocate the symbol block buffer\n");
  } else if (object.status() != kVsymOk) {
    WriteOutput(Format("vorc: symbol table not written: %s\n", vsym_strerror(object.status())));
  }
  return allocated && object.status() == kVsymOk;
}

}  // namespace vorc
