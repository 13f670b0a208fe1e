#include "datamatrix/error_correction.h"

#include <cstddef>

#include "datamatrix/schemes.h"

namespace barcode::datamatrix {
namespace {

constexpr std::size_t kFirstRoot = 1;
constexpr std::size_t kLongestBlock = 255;

}  // namespace

void PadCodewords(std::vector<std::uint8_t>& codewords, const SymbolSize& size) {
  if (codewords.size() < size.dataCodewords) {
    codewords.push_back(kPadCodeword);
  }
  while (codewords.size() < size.dataCodewords) {
    codewords.push_back(Randomize253State(kPadCodeword, codewords.size() + 1));
  }
}

bool CorrectBlock(const Divider& divider, std::span<const std::uint8_t> data, std::span<std::uint8_t> out,
                  EncoderLines& lines) {
  if (data.size() + out.size() > kLongestBlock) {
    lines.Add("Error generation reed solomon error correction");
    return false;
  }
  divider.Remainder(data, out);
  return true;
}

// Position p of the whole stream belongs to block p mod blocks. In 144x144 the last two blocks are one data
// codeword short, so the error-correction codewords begin with the ninth block: the order that deployed
// readers agree on.
bool AppendErrorCorrection(std::vector<std::uint8_t>& codewords, const SymbolSize& size,
                           EncoderLines& lines) {
  if (codewords.size() != size.dataCodewords) {
    lines.Add("Error generation error correction code!");
    return false;
  }
  const Divider divider(GeneratorPolynomial<kPrimitive>(size.blockErrorCodewords, kFirstRoot));
  codewords.resize(size.Codewords());
  std::vector<std::uint8_t> blockData;
  std::vector<std::uint8_t> blockError(size.blockErrorCodewords);
  for (std::size_t block = 0; block < size.blocks; ++block) {
    blockData.clear();
    std::size_t position = block;
    for (; position < size.dataCodewords; position += size.blocks) {
      blockData.push_back(codewords[position]);
    }
    if (!CorrectBlock(divider, blockData, blockError, lines)) {
      return false;
    }
    for (const std::uint8_t codeword : blockError) {
      codewords[position] = codeword;
      position += size.blocks;
    }
  }
  return true;
}

}  // namespace barcode::datamatrix
