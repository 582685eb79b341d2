#include <array>

#include "base/format.h"
#include "retarget/rv_unit.h"

// The System V ABI's object file format, and the relocations of the RISC-V ELF psABI.
namespace vorc {
namespace {

constexpr uint32_t kHeaderSize = 52;
constexpr uint32_t kSectionHeaderSize = 40;
constexpr uint32_t kSymbolSize = 16;
constexpr uint32_t kRelocationSize = 12;
constexpr uint16_t kRelocatable = 1;
constexpr uint16_t kMachineRiscv = 243;
constexpr uint32_t kRelocPcrelHi20 = 23;
constexpr uint32_t kRelocPcrelLo12I = 24;
constexpr uint8_t kGlobalFunction = 18;
constexpr uint8_t kGlobalObject = 17;
// The labels of address sites are told apart by three digits only; nothing looks them up by name.
constexpr size_t kSiteNames = 1000;

enum Section : uint16_t { kNone, kText, kBss, kRelaText, kSymtab, kStrtab, kShstrtab, kSections };

constexpr std::array<std::string_view, kSections> RV32_SECNAMES = {
    "", ".text", ".bss", ".rela.text", ".symtab", ".strtab", ".shstrtab"};

struct SectionHeader {
  uint32_t type = 0, flags = 0, offset = 0, size = 0, link = 0, info = 0, addralign = 0, entsize = 0;
};

class ObjectWriter {
 public:
  explicit ObjectWriter(const RvUnit& unit) : unit_(unit) {}

  RvObject Write() {
    out_.assign(kHeaderSize, '\0');
    PutText();
    PutRelocations();
    PutSymbols();
    Begin(kStrtab, {.type = 3, .addralign = 1});
    out_ += strings_;
    End(kStrtab);
    PutSectionNames();
    sections_[kBss] = {.type = 8, .flags = 3, .offset = Size(), .size = unit_.data_size, .addralign = 4};
    Align();
    PutHeader(Size());
    PutSectionHeaders();
    return {std::move(out_), static_cast<int>(symbols_), static_cast<int>(2 * unit_.sites.size())};
  }

 private:
  void PutText() {
    Begin(kText, {.type = 1, .flags = 6, .addralign = 4});
    out_.append(reinterpret_cast<const char*>(unit_.image.bytes().data()), unit_.code_size);
    End(kText);
    Align();
  }

  void PutRelocations() {
    const auto sites = static_cast<uint32_t>(unit_.sites.size());
    Begin(kRelaText, {.type = 4, .link = kSymtab, .info = kText, .addralign = 4, .entsize = kRelocationSize});
    for (uint32_t i = 0; i < sites; ++i) {
      const RvAddressSite& site = unit_.sites[i];
      if (site.global < 0) {
        out_.append(size_t{2} * kRelocationSize, '\0');
        continue;
      }
      const uint32_t global = 1 + sites + VisibleFunctions() + static_cast<uint32_t>(site.global);
      PutRelocation(site.offset, global, kRelocPcrelHi20);
      // The lower half is told by the place of the upper one.
      PutRelocation(site.offset + 4, 1 + i, kRelocPcrelLo12I);
    }
    End(kRelaText);
  }

  void PutRelocation(uint32_t offset, uint32_t symbol, uint32_t type) {
    Put32(offset);
    Put32(symbol << 8 | type);
    Put32(0);
  }

  void PutSymbols() {
    const auto locals = static_cast<uint32_t>(1 + unit_.sites.size());
    Begin(kSymtab, {.type = 2, .link = kStrtab, .info = locals, .addralign = 4, .entsize = kSymbolSize});
    PutSymbol("", 0, 0, 0, kNone);
    for (size_t i = 0; i < unit_.sites.size(); ++i) {
      PutSymbol(Format(".Lpcrel_%03d", static_cast<int>(i % kSiteNames)), unit_.sites[i].offset, 0, 0, kText);
    }
    for (const RvFunction& function : unit_.functions) {
      if (function.Visible()) PutSymbol(function.name, function.start, function.size, kGlobalFunction, kText);
    }
    for (const RvGlobal& global : unit_.globals) {
      PutSymbol(global.name, global.offset, global.size, kGlobalObject, kBss);
    }
    End(kSymtab);
  }

  void PutSymbol(const std::string& name, uint32_t value, uint32_t size, uint8_t info, uint16_t section) {
    Put32(static_cast<uint32_t>(strings_.size()));
    Put32(value);
    Put32(size);
    Put8(info);
    Put8(0);
    Put16(section);
    strings_ += name;
    strings_ += '\0';
    ++symbols_;
  }

  void PutSectionNames() {
    Begin(kShstrtab, {.type = 3, .addralign = 1});
    for (const std::string_view name : RV32_SECNAMES) {
      out_ += name;
      out_ += '\0';
    }
    End(kShstrtab);
  }

  void PutSectionHeaders() {
    uint32_t name = 0;
    for (size_t i = 0; i < kSections; ++i) {
      const SectionHeader& s = sections_[i];
      Put32(name);
      for (const uint32_t field :
           {s.type, s.flags, uint32_t{0}, s.offset, s.size, s.link, s.info, s.addralign, s.entsize}) {
        Put32(field);
      }
      name += static_cast<uint32_t>(RV32_SECNAMES[i].size() + 1);
    }
  }

  /// Fills in the room left for it at the start.
  void PutHeader(uint32_t section_headers) {
    std::string rest;
    rest.swap(out_);
    out_ = {
        "\x7F"
        "ELF\1\1\1",
        7};
    out_.append(9, '\0');
    Put16(kRelocatable);
    Put16(kMachineRiscv);
    Put32(1);
    Put32(0);
    Put32(0);
    Put32(section_headers);
    Put32(0);
    for (const uint32_t field : {kHeaderSize, 0U, 0U, kSectionHeaderSize, 0U + kSections, 0U + kShstrtab}) {
      Put16(static_cast<uint16_t>(field));
    }
    rest.replace(0, kHeaderSize, out_);
    out_.swap(rest);
  }

  uint32_t VisibleFunctions() const {
    uint32_t count = 0;
    for (const RvFunction& function : unit_.functions) count += function.Visible() ? 1 : 0;
    return count;
  }

  void Begin(Section section, SectionHeader header) {
    header.offset = Size();
    sections_[section] = header;
  }

  void End(Section section) { sections_[section].size = Size() - sections_[section].offset; }

  uint32_t Size() const { return static_cast<uint32_t>(out_.size()); }
  void Align() { out_.resize((out_.size() + 3) & ~size_t{3}); }
  void Put8(uint8_t value) { out_ += static_cast<char>(value); }
  void Put16(uint16_t value) {
    Put8(static_cast<uint8_t>(value));
    Put8(static_cast<uint8_t>(value >> 8));
  }
  void Put32(uint32_t value) {
    Put16(static_cast<uint16_t>(value));
    Put16(static_cast<uint16_t>(value >> 16));
  }

  const RvUnit& unit_;
  std::string out_;
  std::string strings_;
  uint32_t symbols_ = 0;
  std::array<SectionHeader, kSections> sections_;
};

}  // namespace

RvObject RvElfObject(const RvUnit& unit) {
  return ObjectWriter(unit).Write();
}

}  // namespace vorc
