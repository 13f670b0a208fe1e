#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "qr/qr_options.h"

namespace barcode {

// Numbers of ISO/IEC 18004, QR Code Model 2. Versions count from 1 to 40. Only the error-correction blocks
// and the alignment coordinates are typed in; all else follows from them.

inline constexpr int kQrMaxVersion = 40;
inline constexpr std::size_t kQrLevels = 4;

constexpr int QrSize(int version) {
  return 4 * version + 17;
}

inline constexpr int kQrModeBits = 4;

constexpr unsigned QrModeIndicator(QrMode mode) {
  return mode == QrMode::kNumeric ? 0b0001 : 0b0100;
}

// Width of the character count.
constexpr int QrCountBits(QrMode mode, int version) {
  if (mode == QrMode::kNumeric) {
    return version < 10 ? 10 : version < 27 ? 12 : 14;
  }
  return version < 10 ? 8 : 16;
}

struct QrBlocks {
  int blocks;
  int ecPerBlock;  // error-correction codewords
};

// Error-correction characteristics of every version and level.
inline constexpr std::array<std::array<QrBlocks, kQrMaxVersion>, kQrLevels> kQrBlocks = {{
    // L
    {{{1, 7},   {1, 10},  {1, 15},  {1, 20},  {1, 26},  {2, 18},  {2, 20},  {2, 24},  {2, 30},  {4, 18},
      {4, 20},  {4, 24},  {4, 26},  {4, 30},  {6, 22},  {6, 24},  {6, 28},  {6, 30},  {7, 28},  {8, 28},
      {8, 28},  {9, 28},  {9, 30},  {10, 30}, {12, 26}, {12, 28}, {12, 30}, {13, 30}, {14, 30}, {15, 30},
      {16, 30}, {17, 30}, {18, 30}, {19, 30}, {19, 30}, {20, 30}, {21, 30}, {22, 30}, {24, 30}, {25, 30}}},
    // M
    {{{1, 10},  {1, 16},  {1, 26},  {2, 18},  {2, 24},  {4, 16},  {4, 18},  {4, 22},  {5, 22},  {5, 26},
      {5, 30},  {8, 22},  {9, 22},  {9, 24},  {10, 24}, {10, 28}, {11, 28}, {13, 26}, {14, 26}, {16, 26},
      {17, 26}, {17, 28}, {18, 28}, {20, 28}, {21, 28}, {23, 28}, {25, 28}, {26, 28}, {28, 28}, {29, 28},
      {31, 28}, {33, 28}, {35, 28}, {37, 28}, {38, 28}, {40, 28}, {43, 28}, {45, 28}, {47, 28}, {49, 28}}},
    // Q
    {{{1, 13},  {1, 22},  {2, 18},  {2, 26},  {4, 18},  {4, 24},  {6, 18},  {6, 22},  {8, 20},  {8, 24},
      {8, 28},  {10, 26}, {12, 24}, {16, 20}, {12, 30}, {17, 24}, {16, 28}, {18, 28}, {21, 26}, {20, 30},
      {23, 28}, {23, 30}, {25, 30}, {27, 30}, {29, 30}, {34, 28}, {34, 30}, {35, 30}, {38, 30}, {40, 30},
      {43, 30}, {45, 30}, {48, 30}, {51, 30}, {53, 30}, {56, 30}, {59, 30}, {62, 30}, {65, 30}, {68, 30}}},
    // H
    {{{1, 17},  {1, 28},  {2, 22},  {4, 16},  {4, 22},  {4, 28},  {5, 26},  {6, 26},  {8, 24},  {8, 28},
      {11, 24}, {11, 28}, {16, 22}, {16, 24}, {18, 24}, {16, 30}, {19, 28}, {21, 28}, {25, 26}, {25, 28},
      {25, 30}, {34, 24}, {30, 30}, {32, 30}, {35, 30}, {37, 30}, {40, 30}, {42, 30}, {45, 30}, {48, 30},
      {51, 30}, {54, 30}, {57, 30}, {60, 30}, {63, 30}, {66, 30}, {70, 30}, {74, 30}, {77, 30}, {81, 30}}},
}};

constexpr QrBlocks QrBlocksOf(QrLevel level, int version) {
  return kQrBlocks[static_cast<std::size_t>(level)][static_cast<std::size_t>(version - 1)];
}

// Rows and columns of the alignment pattern centres; 0 ends the list.
using QrCentres = std::array<std::uint8_t, 7>;
inline constexpr std::array<QrCentres, kQrMaxVersion> kQrAlignmentCentres = {
    {{0, 0, 0, 0, 0, 0, 0},          {6, 18, 0, 0, 0, 0, 0},         {6, 22, 0, 0, 0, 0, 0},
     {6, 26, 0, 0, 0, 0, 0},         {6, 30, 0, 0, 0, 0, 0},         {6, 34, 0, 0, 0, 0, 0},
     {6, 22, 38, 0, 0, 0, 0},        {6, 24, 42, 0, 0, 0, 0},        {6, 26, 46, 0, 0, 0, 0},
     {6, 28, 50, 0, 0, 0, 0},        {6, 30, 54, 0, 0, 0, 0},        {6, 32, 58, 0, 0, 0, 0},
     {6, 34, 62, 0, 0, 0, 0},        {6, 26, 46, 66, 0, 0, 0},       {6, 26, 48, 70, 0, 0, 0},
     {6, 26, 50, 74, 0, 0, 0},       {6, 30, 54, 78, 0, 0, 0},       {6, 30, 56, 82, 0, 0, 0},
     {6, 30, 58, 86, 0, 0, 0},       {6, 34, 62, 90, 0, 0, 0},       {6, 28, 50, 72, 94, 0, 0},
     {6, 26, 50, 74, 98, 0, 0},      {6, 30, 54, 78, 102, 0, 0},     {6, 28, 54, 80, 106, 0, 0},
     {6, 32, 58, 84, 110, 0, 0},     {6, 30, 58, 86, 114, 0, 0},     {6, 34, 62, 90, 118, 0, 0},
     {6, 26, 50, 74, 98, 122, 0},    {6, 30, 54, 78, 102, 126, 0},   {6, 26, 52, 78, 104, 130, 0},
     {6, 30, 56, 82, 108, 134, 0},   {6, 34, 60, 86, 112, 138, 0},   {6, 30, 58, 86, 114, 142, 0},
     {6, 34, 62, 90, 118, 146, 0},   {6, 30, 54, 78, 102, 126, 150}, {6, 24, 50, 76, 102, 128, 154},
     {6, 28, 54, 80, 106, 132, 158}, {6, 32, 58, 84, 110, 136, 162}, {6, 26, 54, 82, 110, 138, 166},
     {6, 30, 58, 86, 114, 142, 170}}};

constexpr const QrCentres& QrAlignmentCentres(int version) {
  return kQrAlignmentCentres[static_cast<std::size_t>(version - 1)];
}

constexpr int QrAlignmentCentreCount(int version) {
  int count = 0;
  for (const std::uint8_t centre : QrAlignmentCentres(version)) {
    count += centre != 0 ? 1 : 0;
  }
  return count;
}

// The format and version informations are each placed twice.
inline constexpr int kQrFormatLength = 15;
inline constexpr int kQrVersionLength = 18;

// Smaller symbols tell their version by their size alone.
constexpr bool QrHasVersionInformation(int version) {
  return version >= 7;
}

// Modules that are left for codewords and remainder bits.
constexpr int QrDataModules(int version) {
  const int size = QrSize(version);
  const int centres = QrAlignmentCentreCount(version);
  const int patterns = centres == 0 ? 0 : centres * centres - 3;  // three corners are finder patterns
  const int onTiming =
      centres == 0 ? 0 : 2 * (centres - 2);  // these share five modules with a timing pattern
  const int finders = 3 * 8 * 8;
  const int timing = 2 * (size - 16);
  const int format = 2 * kQrFormatLength + 1;  // with the dark module
  const int versionAreas = QrHasVersionInformation(version) ? 2 * kQrVersionLength : 0;
  return size * size - finders - timing - 25 * patterns + 5 * onTiming - format - versionAreas;
}

constexpr int QrTotalCodewords(int version) {
  return QrDataModules(version) / 8;
}

constexpr int QrDataCodewords(QrLevel level, int version) {
  const QrBlocks blocks = QrBlocksOf(level, version);
  return QrTotalCodewords(version) - blocks.blocks * blocks.ecPerBlock;
}

constexpr int QrCapacityBits(QrLevel level, int version) {
  return 8 * QrDataCodewords(level, version);
}

// Appends the remainder of value * x^degree divided by the generator, a polynomial over GF(2) of that degree.
constexpr std::uint32_t AppendBch(std::uint32_t value, std::uint32_t generator, unsigned degree) {
  std::uint32_t remainder = value;
  for (unsigned i = 0; i < degree; ++i) {
    remainder = remainder << 1U ^ ((remainder >> (degree - 1)) & 1U) * generator;
  }
  return value << degree | (remainder & ((1U << degree) - 1));
}

// kQrFormatLength bits, masked.
constexpr std::uint32_t QrFormatBits(QrLevel level, int mask) {
  const auto levelIndicator = static_cast<std::uint32_t>(level) ^ 1U;  // L 01, M 00, Q 11, H 10
  return AppendBch(levelIndicator << 3U | static_cast<std::uint32_t>(mask), 0b10100110111, 10) ^
         0b101010000010010U;
}

// kQrVersionLength bits.
constexpr std::uint32_t QrVersionBits(int version) {
  return AppendBch(static_cast<std::uint32_t>(version), 0b1111100100101, 12);
}

static_assert(QrFormatBits(QrLevel::kM, 5) == 0b100000011001110);
static_assert(QrVersionBits(7) == 0b000111110010010100);
static_assert(QrDataModules(1) == 208 && QrDataModules(2) == 359 && QrDataModules(40) == 29648);

}  // namespace barcode
