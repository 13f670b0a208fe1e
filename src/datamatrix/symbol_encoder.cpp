#include "datamatrix/symbol_encoder.h"

#include <stdexcept>
#include <string>

#include "base/number_format.h"
#include "datamatrix/codeword_encoder.h"
#include "datamatrix/error_correction.h"
#include "datamatrix/placement.h"
#include "datamatrix/symbol_attributes.h"

namespace barcode {

void CheckSelection(int selectedSize, std::size_t codewordCount, int sizeOption) {
  if (selectedSize == kNoSize || codewordCount == 0) {
    throw std::runtime_error("Failed to encode data. Data may be empty or contain invalid characters.");
  }
  // SelectSize returns neither of these; the message stays for a selection that would.
  if (selectedSize == kAutomaticSquareSize || selectedSize == kAutomaticRectangularSize) {
    std::string message = "Data too long for specified symbol size. Data requires ";
    AppendInt(message, static_cast<std::int64_t>(codewordCount));
    message += " codewords, but symbol only supports ";
    AppendInt(message, LookUpSymbolAttribute(SymbolAttribute::kDataCodewords, sizeOption));
    message += " codewords. Use 'AUTO' or reduce data length.";
    throw std::runtime_error(message);
  }
}

ModuleMatrix EncodeDataMatrix(std::string_view text, int schemeOption, int sizeOption,
                              EncoderMessages& messages) {
  std::vector<std::uint8_t> codewords = EncodeCodewords(text, schemeOption, sizeOption, messages);
  const int size = SelectSize(codewords.size(), sizeOption);
  CheckSelection(size, codewords.size(), sizeOption);
  PadCodewords(codewords, size, messages);
  if (!AppendErrorCorrection(codewords, size, messages)) {
    return {};
  }
  return FrameRegions(PlaceModules(codewords, MappingRows(size), MappingColumns(size), messages), size);
}

}  // namespace barcode
