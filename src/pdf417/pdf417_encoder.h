#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/module_matrix.h"
#include "pdf417/pdf417_layout.h"
#include "pdf417/pdf417_options.h"

namespace barcode {

// Appends the symbol of the codewords to `diagnostics` and returns its modules: (17 x columns + 69) columns
// and one row of modules for each row of codewords. What lies beyond the codewords or is no codeword is left
// blank.
ModuleMatrix BuildPDF417Modules(std::span<const int> codewords, const PDF417Layout& layout,
                                std::string& diagnostics);

// Turns a text into the modules of a PDF417 symbol. One encoder serves one draw. It writes to no stream: what
// is to be printed is collected in Diagnostics(), also when an encode throws.
class PDF417Encoder {
 public:
  explicit PDF417Encoder(PDF417Options options) : m_options(std::move(options)) {}

  // Throws a standard exception with the message for the user when the text has no symbol.
  void Encode(std::string_view text);

  // Takes ready data codewords, the first of which is their number.
  void EncodeRaw(std::span<const int> codewords);

  const PDF417Layout& Layout() const { return m_layout; }
  // Data, padding and error correction.
  const std::vector<int>& Codewords() const { return m_codewords; }
  const ModuleMatrix& Modules() const { return m_modules; }
  const std::string& Diagnostics() const { return m_diagnostics; }

 private:
  void Begin();
  void LayOut();
  template <class Error>
  [[noreturn]] void Refuse(const char* message);

  PDF417Options m_options;
  PDF417Layout m_layout;
  std::vector<int> m_codewords;
  ModuleMatrix m_modules;
  std::string m_diagnostics;
};

}  // namespace barcode
