#include "datamatrix/error_correction.h"

#include <cstddef>

#include "datamatrix/encodation.h"
#include "datamatrix/symbol_attributes.h"

namespace barcode {
namespace {

constexpr std::size_t kFirstRoot = 1;
constexpr std::size_t kLongestBlock = 255;

std::size_t Attribute(SymbolAttribute attribute, int sizeIndex) {
  return static_cast<std::size_t>(LookUpSymbolAttribute(attribute, sizeIndex));
}

}  // namespace

void PadCodewords(std::vector<std::uint8_t>& codewords, int sizeIndex, EncoderMessages& messages) {
  const int capacity = LookUpSymbolAttribute(SymbolAttribute::kDataCodewords, sizeIndex);
  if (capacity < 0 || codewords.size() >= static_cast<std::size_t>(capacity)) {
    return;
  }
  codewords.push_back(kPadCodeword);
  while (codewords.size() < static_cast<std::size_t>(capacity)) {
    codewords.push_back(Randomize253State(kPadCodeword, codewords.size() + 1, messages));
  }
}

bool CorrectBlock(const DataMatrixDivider& divider, std::span<const std::uint8_t> data,
                  std::span<std::uint8_t> out, EncoderMessages& messages) {
  if (data.size() + out.size() > kLongestBlock) {
    messages.emplace_back("Error generation reed solomon error correction\n");
    return false;
  }
  divider.Remainder(data, out);
  return true;
}

// Position p of the whole stream belongs to block p mod blocks. In 144x144 the last two blocks are one data
// codeword short, so the error-correction codewords begin with the ninth block: the order that deployed
// readers agree on.
bool AppendErrorCorrection(std::vector<std::uint8_t>& codewords, int sizeIndex, EncoderMessages& messages) {
  const int capacity = LookUpSymbolAttribute(SymbolAttribute::kDataCodewords, sizeIndex);
  if (capacity < 0 || codewords.size() != static_cast<std::size_t>(capacity)) {
    messages.emplace_back("Error generation error correction code!\n");
    return false;
  }
  const std::size_t dataSize = codewords.size();
  const std::size_t blocks = Attribute(SymbolAttribute::kInterleavedBlocks, sizeIndex);
  const std::size_t blockErrorSize = Attribute(SymbolAttribute::kBlockErrorCodewords, sizeIndex);
  const DataMatrixDivider divider(GeneratorPolynomial<kDataMatrixPrimitive>(blockErrorSize, kFirstRoot));
  codewords.resize(dataSize + blocks * blockErrorSize);
  std::vector<std::uint8_t> blockData;
  std::vector<std::uint8_t> blockError(blockErrorSize);
  for (std::size_t block = 0; block < blocks; ++block) {
    blockData.clear();
    std::size_t position = block;
    for (; position < dataSize; position += blocks) {
      blockData.push_back(codewords[position]);
    }
    if (!CorrectBlock(divider, blockData, blockError, messages)) {
      return false;
    }
    for (const std::uint8_t codeword : blockError) {
      codewords[position] = codeword;
      position += blocks;
    }
  }
  return true;
}

}  // namespace barcode
