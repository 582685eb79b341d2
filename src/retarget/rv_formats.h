#pragma once

#include <cstdint>

namespace vorc {

enum RvOpcode : uint32_t {
  kOpLoad = 0x03,
  kOpFence = 0x0F,
  kOpImm = 0x13,
  kOpAuipc = 0x17,
  kOpImm32 = 0x1B,
  kOpStore = 0x23,
  kOpReg = 0x33,
  kOpLui = 0x37,
  kOpReg32 = 0x3B,
  kOpBranch = 0x63,
  kOpJalr = 0x67,
  kOpJal = 0x6F,
  kOpSystem = 0x73,
};

enum RvBranch : uint32_t { kBeq = 0, kBne = 1, kBlt = 4, kBge = 5, kBltu = 6, kBgeu = 7 };

enum RvRegister : uint32_t { kX0 = 0, kRa = 1, kSp = 2 };

inline constexpr uint32_t kRvRegisters = 32;

// The immediates of the formats B and J lie scattered over the word.
inline constexpr uint32_t kRvBranchKept = 0x01FFF07F;
inline constexpr uint32_t kRvJumpKept = 0x00000FFF;

constexpr bool FitsImm12(int64_t value) {
  return value >= -2048 && value <= 2047;
}
constexpr bool FitsBranch(int64_t distance) {
  return distance >= -4096 && distance <= 4094 && distance % 2 == 0;
}
constexpr bool FitsJump(int64_t distance) {
  return distance >= -1048576 && distance <= 1048574 && distance % 2 == 0;
}

/// `count` bits of a word from bit `low` up.
constexpr uint32_t Bits(uint32_t word, int low, int count) {
  return word >> low & ((1U << count) - 1);
}

/// The low `bits` bits of a word as a signed number.
constexpr int32_t SignExtend(uint32_t word, int bits) {
  return static_cast<int32_t>(word << (32 - bits)) >> (32 - bits);
}

constexpr uint32_t RvBranchBits(uint32_t distance) {
  return Bits(distance, 12, 1) << 31 | Bits(distance, 5, 6) << 25 | Bits(distance, 1, 4) << 8 |
         Bits(distance, 11, 1) << 7;
}

constexpr int32_t RvBranchDistance(uint32_t word) {
  return SignExtend(
      Bits(word, 31, 1) << 12 | Bits(word, 7, 1) << 11 | Bits(word, 25, 6) << 5 | Bits(word, 8, 4) << 1, 13);
}

constexpr uint32_t RvJumpBits(uint32_t distance) {
  return Bits(distance, 20, 1) << 31 | Bits(distance, 1, 10) << 21 | Bits(distance, 11, 1) << 20 |
         Bits(distance, 12, 8) << 12;
}

constexpr int32_t RvJumpDistance(uint32_t word) {
  return SignExtend(
      Bits(word, 31, 1) << 20 | Bits(word, 12, 8) << 12 | Bits(word, 20, 1) << 11 | Bits(word, 21, 10) << 1,
      21);
}

constexpr uint32_t RvIWord(uint32_t opcode, uint32_t rd, uint32_t funct3, uint32_t rs1, uint32_t imm) {
  return imm << 20 | rs1 << 15 | funct3 << 12 | rd << 7 | opcode;
}

constexpr uint32_t RvSWord(uint32_t opcode, uint32_t funct3, uint32_t rs1, uint32_t rs2, uint32_t imm) {
  return Bits(imm, 5, 7) << 25 | rs2 << 20 | rs1 << 15 | funct3 << 12 | Bits(imm, 0, 5) << 7 | opcode;
}

constexpr uint32_t RvRWord(uint32_t opcode, uint32_t rd, uint32_t funct3, uint32_t rs1, uint32_t rs2,
                           uint32_t funct7) {
  return funct7 << 25 | rs2 << 20 | rs1 << 15 | funct3 << 12 | rd << 7 | opcode;
}

}  // namespace vorc
