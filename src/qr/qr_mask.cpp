#include "qr/qr_mask.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "qr/qr_tables.h"

namespace barcode {
namespace {

// Eight cells of one column, the topmost in byte 0: 64 lanes, one for each cell and mask.
using Lanes = std::uint64_t;
constexpr int kCellsPerWord = 8;
constexpr Lanes kAllLanes = ~Lanes{0};
constexpr Lanes kOneMask = 0x0101010101010101;

constexpr bool Inverts(std::size_t mask, unsigned i, unsigned j) {
  switch (mask) {
    case 0:
      return (i + j) % 2 == 0;
    case 1:
      return i % 2 == 0;
    case 2:
      return j % 3 == 0;
    case 3:
      return (i + j) % 3 == 0;
    case 4:
      return (i / 2 + j / 3) % 2 == 0;
    case 5:
      return i * j % 2 + i * j % 3 == 0;
    case 6:
      return (i * j % 2 + i * j % 3) % 2 == 0;
    default:
      return ((i + j) % 2 + i * j % 3) % 2 == 0;
  }
}

constexpr std::size_t kConditionsPeriod = 12;
constexpr auto kMaxSize = static_cast<std::size_t>(QrSize(kQrMaxVersion));
using MaskColumns = std::array<std::array<std::uint8_t, kMaxSize>, kConditionsPeriod>;

// All conditions repeat after twelve columns.
constexpr MaskColumns MakeMaskColumns() {
  MaskColumns columns{};
  for (std::size_t x = 0; x < columns.size(); ++x) {
    for (std::size_t y = 0; y < kMaxSize; ++y) {
      for (std::size_t mask = 0; mask < kQrMasks; ++mask) {
        const bool inverts = Inverts(mask, static_cast<unsigned>(y), static_cast<unsigned>(x));
        columns[x][y] |= static_cast<std::uint8_t>((inverts ? 1U : 0U) << mask);
      }
    }
  }
  return columns;
}
constexpr MaskColumns kMaskColumns = MakeMaskColumns();

struct BitSum {
  Lanes sum;
  Lanes carry;
};

constexpr BitSum AddBits(Lanes a, Lanes b, Lanes c) {
  return {.sum = a ^ b ^ c, .carry = (a & b) | (c & (a ^ b))};
}

// A number in each of the 64 lanes, as the words of its binary digits, the lowest first.
template <std::size_t Digits>
using LaneNumbers = std::array<Lanes, Digits>;

// The sum of such numbers for every mask. Largest: the largest number that is added.
template <std::size_t Digits, unsigned Largest>
class MaskSums {
 public:
  void Add(const LaneNumbers<Digits>& numbers) {
    Lanes carry = 0;
    for (std::size_t digit = 0; digit < kSumDigits; ++digit) {
      const BitSum result = AddBits(m_sums[digit], digit < Digits ? numbers[digit] : 0, carry);
      m_sums[digit] = result.sum;
      carry = result.carry;
    }
    if (++m_count == kMaxSum / Largest) {
      Collect();
    }
  }

  std::array<unsigned, kQrMasks> Totals() {
    Collect();
    return m_totals;
  }

 private:
  static constexpr std::size_t kSumDigits = 8;
  static constexpr unsigned kMaxSum = 255;

  // Adds the lanes of each mask to its total and starts again from zero.
  void Collect() {
    for (std::size_t mask = 0; mask < kQrMasks; ++mask) {
      Lanes bytes = 0;  // the mask's sum of each cell
      for (std::size_t digit = 0; digit < kSumDigits; ++digit) {
        bytes |= (m_sums[digit] >> mask & kOneMask) << digit;
      }
      constexpr Lanes kEvenBytes = 0x00FF00FF00FF00FF;
      const Lanes pairs = (bytes & kEvenBytes) + (bytes >> 8U & kEvenBytes);
      m_totals[mask] += static_cast<unsigned>(pairs * 0x0001000100010001U >> 48U);
    }
    m_sums = {};
    m_count = 0;
  }

  LaneNumbers<kSumDigits> m_sums{};
  unsigned m_count = 0;
  std::array<unsigned, kQrMasks> m_totals{};
};

Lanes Load(const std::uint8_t* cells) {
  Lanes lanes = 0;
  std::memcpy(&lanes, cells, sizeof(lanes));
  if constexpr (std::endian::native == std::endian::big) {
    return __builtin_bswap64(lanes);
  }
  return lanes;
}

// The lanes of the cells first..last-1 of a word.
constexpr Lanes CellLanes(int first, int last) {
  const auto from = [](int cell) {
    return cell >= kCellsPerWord ? Lanes{0} : kAllLanes << static_cast<unsigned>(8 * std::max(cell, 0));
  };
  return from(first) & ~from(last);
}

// Which lanes have at least that many modules before them on their line.
struct Reach {
  Lanes one;
  Lanes four;
  Lanes five;
  Lanes six;
};

struct LinePenalties {
  Lanes equal;     // same colour as the module before
  Lanes run;       // the last five modules are of one colour
  Lanes runStart;  // and these are the first five of their run
  Lanes finder;    // the last seven modules are 1011101
};

// Looks at the modules of eight cells and, `step` cells apart, at the six modules before each.
LinePenalties ScoreLine(const std::uint8_t* cells, std::size_t step, const Reach& reach) {
  std::array<Lanes, 7> m;
  for (std::size_t i = 0; i < m.size(); ++i) {
    m[i] = Load(cells - i * step);
  }
  const Lanes equal = ~(m[0] ^ m[1]);
  const Lanes three = ~((m[1] ^ m[2]) | (m[2] ^ m[3]) | (m[3] ^ m[4]));
  const Lanes before = ~(m[4] ^ m[5]);
  const Lanes run = equal & three & reach.four;
  return {.equal = equal & reach.one,
          .run = run,
          .runStart = run & ~(before & reach.five),
          .finder = m[0] & ~m[1] & m[2] & m[3] & m[4] & ~m[5] & m[6] & reach.six};
}

// 1 for the fifth and every further module of a run, 2 more for the fifth, 3 for a block of four; nine
// at most.
LaneNumbers<4> RunAndBlockPenalties(const LinePenalties& down, const LinePenalties& across, Lanes block) {
  const BitSum ones = AddBits(down.run, across.run, block);
  const BitSum twos = AddBits(down.runStart, across.runStart, block);
  const Lanes carry = twos.sum & ones.carry;
  return {ones.sum, twos.sum ^ ones.carry, twos.carry ^ carry, twos.carry & carry};
}

constexpr Reach ReachAlong(int firstCell, int size) {
  const auto lanes = [=](int before) { return CellLanes(before - firstCell, size - firstCell); };
  return {.one = lanes(1), .four = lanes(4), .five = lanes(5), .six = lanes(6)};
}

constexpr Reach ReachAcross(int x, int firstCell, int size) {
  const Lanes cells = CellLanes(0, size - firstCell);
  const auto lanes = [=](int before) { return x >= before ? cells : Lanes{0}; };
  return {.one = lanes(1), .four = lanes(4), .five = lanes(5), .six = lanes(6)};
}

// By k = round(20 * dark modules / data bits).
constexpr std::array<unsigned, 21> kBalancePenalties = {90, 80, 70, 60, 50, 40, 30, 20, 10, 0, 0,
                                                        10, 20, 30, 40, 50, 60, 70, 80, 90, 90};

unsigned BalancePenalty(unsigned darkModules, unsigned dataBits) {
  const std::size_t twice = std::size_t{2} * dataBits;
  const std::size_t k = (std::size_t{40} * darkModules + dataBits) / twice;  // rounded
  return kBalancePenalties[std::min(k, kBalancePenalties.size() - 1)];
}

}  // namespace

MaskCells::MaskCells(int size)
    : m_size(size),
      m_cells((kBorderColumns + static_cast<std::size_t>(size)) * static_cast<std::size_t>(size) +
              kCellsPerWord) {}

std::span<const std::uint8_t> MaskConditions(int x) {
  return kMaskColumns[static_cast<std::size_t>(x) % kConditionsPeriod];
}

std::array<unsigned, kQrMasks> MaskPenalties(const MaskCells& cells, int dataBits) {
  MaskSums<4, 9> runsAndBlocks;
  MaskSums<2, 2> finders;
  MaskSums<1, 1> dark;
  const int size = cells.Size();
  const auto pitch = static_cast<std::size_t>(size);
  for (int x = 0; x < size; ++x) {
    const std::uint8_t* column = cells.Column(x);
    for (int y = 0; y < size; y += kCellsPerWord) {
      const std::uint8_t* word = column + y;
      const LinePenalties down = ScoreLine(word, 1, ReachAlong(y, size));
      const LinePenalties across = ScoreLine(word, pitch, ReachAcross(x, y, size));
      const Lanes equalLeft = ~(Load(word - pitch) ^ Load(word - pitch - 1));
      runsAndBlocks.Add(RunAndBlockPenalties(down, across, down.equal & across.equal & equalLeft));
      finders.Add({down.finder ^ across.finder, down.finder & across.finder});
      dark.Add({Load(word) & CellLanes(0, size - y)});
    }
  }
  constexpr unsigned kFinderPenalty = 40;
  std::array<unsigned, kQrMasks> penalties = runsAndBlocks.Totals();
  const auto finderCounts = finders.Totals();
  const auto darkCounts = dark.Totals();
  for (std::size_t mask = 0; mask < kQrMasks; ++mask) {
    penalties[mask] += kFinderPenalty * finderCounts[mask] +
                       BalancePenalty(darkCounts[mask], static_cast<unsigned>(dataBits));
  }
  return penalties;
}

int BestMask(const std::array<unsigned, kQrMasks>& penalties) {
  return static_cast<int>(std::min_element(penalties.begin(), penalties.end()) - penalties.begin());
}

}  // namespace barcode
