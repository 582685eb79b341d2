#include "codes/galois.h"

#include <algorithm>
#include <array>

namespace vorc::codes {

namespace {

constexpr int kFieldPolynomial = 285;
constexpr int kOrder = 255;
constexpr size_t kMaxLocator = 64;

struct Field {
  std::array<uint8_t, 2 * kOrder> exp{};  // twice round, so that sums of two logarithms need no modulus
  std::array<uint8_t, 256> log{};
};

constexpr Field MakeField() {
  Field field;
  int value = 1;
  for (int i = 0; i < kOrder; ++i) {
    field.exp[static_cast<size_t>(i)] = field.exp[static_cast<size_t>(i + kOrder)] =
        static_cast<uint8_t>(value);
    field.log[static_cast<size_t>(value)] = static_cast<uint8_t>(i);
    value <<= 1;
    if (value > 255) value ^= kFieldPolynomial;
  }
  return field;
}

constexpr Field kField = MakeField();

uint8_t Quotient(uint8_t a, uint8_t b) {
  return a == 0 ? uint8_t{0} : kField.exp[static_cast<size_t>(kField.log[a] + kOrder - kField.log[b])];
}

// Coefficients from the lowest power up.
using Polynomial = std::array<uint8_t, kMaxLocator>;

uint8_t Evaluate(std::span<const uint8_t> polynomial, uint8_t x) {
  uint8_t sum = 0;
  for (size_t i = polynomial.size(); i-- > 0;) sum = static_cast<uint8_t>(gf_mul(sum, x) ^ polynomial[i]);
  return sum;
}

// True if all syndromes are zero.
bool ComputeSyndromes(std::span<const uint8_t> block, std::span<uint8_t> syndromes) {
  uint8_t any = 0;
  for (size_t i = 0; i < syndromes.size(); ++i) {
    uint8_t sum = 0;
    for (const uint8_t symbol : block) sum = static_cast<uint8_t>(gf_mul(sum, kField.exp[i]) ^ symbol);
    syndromes[i] = sum;
    any |= sum;
  }
  return any == 0;
}

struct Locator {
  Polynomial sigma{};
  size_t degree = 0;
};

// Berlekamp-Massey: the shortest shift register that makes the syndromes.
Locator FindLocator(std::span<const uint8_t> syndromes) {
  Locator locator;
  Polynomial previous{};
  locator.sigma[0] = previous[0] = 1;
  uint8_t previous_discrepancy = 1;
  size_t shift = 1;
  for (size_t i = 0; i < syndromes.size(); ++i) {
    uint8_t discrepancy = syndromes[i];
    for (size_t j = 1; j <= locator.degree; ++j) discrepancy ^= gf_mul(locator.sigma[j], syndromes[i - j]);
    if (discrepancy == 0) {
      ++shift;
      continue;
    }
    const Polynomial before = locator.sigma;
    const uint8_t factor = Quotient(discrepancy, previous_discrepancy);
    for (size_t j = 0; j + shift < kMaxLocator; ++j) locator.sigma[j + shift] ^= gf_mul(factor, previous[j]);
    if (2 * locator.degree > i) {
      ++shift;
      continue;
    }
    locator.degree = i + 1 - locator.degree;
    previous = before;
    previous_discrepancy = discrepancy;
    shift = 1;
  }
  return locator;
}

// Forney's magnitude of the error at the root `inverse` of the locator; 0 if there is none.
uint8_t ErrorMagnitude(const Locator& locator, std::span<const uint8_t> syndromes, uint8_t inverse) {
  uint8_t denominator = 0;  // the formal derivative: odd coefficients at even powers
  uint8_t power = 1;
  const uint8_t square = gf_mul(inverse, inverse);
  for (size_t i = 1; i <= locator.degree; i += 2) {
    denominator ^= gf_mul(locator.sigma[i], power);
    power = gf_mul(power, square);
  }
  if (denominator == 0) return 0;
  uint8_t numerator = 0;
  power = 1;
  for (size_t i = 0; i < locator.degree; ++i) {
    uint8_t coefficient = 0;
    for (size_t j = 0; j <= i; ++j) coefficient ^= gf_mul(locator.sigma[j], syndromes[i - j]);
    numerator ^= gf_mul(coefficient, power);
    power = gf_mul(power, inverse);
  }
  return Quotient(Quotient(numerator, denominator), inverse);
}

}  // namespace

uint8_t gf_mul(uint8_t a, uint8_t b) {
  if (a == 0 || b == 0) return 0;
  return kField.exp[static_cast<size_t>(kField.log[a] + kField.log[b])];
}

std::vector<uint8_t> ReedSolomonGenerator(size_t degree) {
  std::vector<uint8_t> generator(degree, 0);
  if (degree == 0) return generator;
  generator.back() = 1;
  uint8_t root = 1;
  for (size_t i = 0; i < degree; ++i) {
    for (size_t j = 0; j < degree; ++j) {
      generator[j] = gf_mul(generator[j], root);
      if (j + 1 < degree) generator[j] ^= generator[j + 1];
    }
    root = gf_mul(root, 2);
  }
  return generator;
}

void ReedSolomonRemainder(std::span<const uint8_t> data, std::span<const uint8_t> generator,
                          std::span<uint8_t> remainder) {
  std::fill(remainder.begin(), remainder.end(), uint8_t{0});
  if (remainder.empty()) return;
  for (const uint8_t symbol : data) {
    const uint8_t factor = symbol ^ remainder.front();
    std::copy(remainder.begin() + 1, remainder.end(), remainder.begin());
    remainder.back() = 0;
    for (size_t i = 0; i < remainder.size(); ++i) remainder[i] ^= gf_mul(generator[i], factor);
  }
}

bool RepairBlock(std::span<uint8_t> block, size_t ecc_length) {
  if (ecc_length > kMaxLocator - 2 || ecc_length > block.size() || block.size() > kOrder) return false;
  std::array<uint8_t, kMaxLocator> storage{};
  const std::span<uint8_t> syndromes = std::span(storage).first(ecc_length);
  if (ComputeSyndromes(block, syndromes)) return true;
  const Locator locator = FindLocator(syndromes);
  if (2 * locator.degree > ecc_length) return false;

  struct Error {
    size_t position;
    uint8_t magnitude;
  };
  std::array<Error, kMaxLocator> errors;
  size_t count = 0;
  const auto sigma = std::span(locator.sigma).first(locator.degree + 1);
  for (size_t power = 0; power < block.size(); ++power) {
    const uint8_t inverse = kField.exp[kOrder - power];
    if (Evaluate(sigma, inverse) != 0) continue;
    const uint8_t magnitude = ErrorMagnitude(locator, syndromes, inverse);
    if (magnitude == 0 || count == locator.degree) return false;
    errors[count++] = {block.size() - 1 - power, magnitude};
  }
  if (count != locator.degree) return false;
  for (size_t i = 0; i < count; ++i) block[errors[i].position] ^= errors[i].magnitude;
  return true;
}

}  // namespace vorc::codes
