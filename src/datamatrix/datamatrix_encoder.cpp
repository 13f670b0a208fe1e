#include "datamatrix/datamatrix_encoder.h"

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "datamatrix/codeword_encoder.h"
#include "datamatrix/error_correction.h"
#include "datamatrix/placement.h"
#include "datamatrix/symbol_sizes.h"

namespace barcode::datamatrix {

ModuleMatrix EncodeDataMatrix(std::string_view text, const Options& options, EncoderLines& lines) {
  std::vector<std::uint8_t> codewords = EncodeCodewords(text, options, lines);
  const SymbolSize* const size = FindSize(AdmittedSizes(options.size), codewords.size());
  if (size == nullptr) {
    throw std::runtime_error("Failed to encode data. Data may be empty or contain invalid characters.");
  }
  PadCodewords(codewords, *size);
  if (!AppendErrorCorrection(codewords, *size, lines)) {
    return {};
  }
  return FrameRegions(PlaceModules(codewords, *size, lines), *size);
}

}  // namespace barcode::datamatrix
