#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/module_matrix.h"

namespace barcode {

// Encodes one text as a QR Code (ISO/IEC 18004, Model 2) of a single segment, in numeric or in byte mode.
class QREncoder {
 public:
  // Bits that the text takes, without mode indicator and count, in each of three modes; for information.
  struct DataBits {
    std::size_t numeric = 0;
    std::size_t alphanumeric = 0;
    std::size_t byte = 0;
  };

  // mode: "N" is numeric mode, every other letter, "A" and "K" included, byte mode.
  // version: the least version wanted, 1 to 40; any other number leaves the choice to the text.
  // level: 0 = L, 1 = M, 2 = Q, 3 = H; any other number is M.
  QREncoder(std::string_view mode, std::uint32_t version, std::uint32_t level);

  // Fills the matrix; an empty text leaves it empty. Throws std::runtime_error when the text is too long for
  // version 40. In numeric mode the characters are not checked.
  void Encode(std::string_view text);

  const ModuleMatrix& Matrix() const { return m_matrix; }
  int Version() const { return m_version; }  // in use; 0 before the first Encode
  int Level() const { return m_level; }
  int Mask() const { return m_mask; }
  int ModeIndicator() const { return m_modeIndicator; }
  const DataBits& Bits() const { return m_dataBits; }

 private:
  using Codewords = std::vector<std::uint8_t>;

  bool IsNumeric() const { return m_modeIndicator == 1; }
  int CountBits(int version) const;
  std::size_t DataFieldBits() const { return IsNumeric() ? m_dataBits.numeric : m_dataBits.byte; }
  int ChooseVersion() const;
  Codewords DataCodewords(std::string_view text) const;
  Codewords WithErrorCorrection(const Codewords& data) const;
  void Place(const Codewords& codewords);
  void WriteFormat();
  void WriteVersion();

  int m_modeIndicator;
  int m_requestedVersion;
  int m_level;
  int m_version = 0;
  int m_mask = 0;
  DataBits m_dataBits;
  ModuleMatrix m_matrix;
};

}  // namespace barcode
