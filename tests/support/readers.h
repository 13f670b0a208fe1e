#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "support/image.h"

namespace barcode::test {

// What an independent reader found: the symbology in the reader's own words and the data as bytes.
struct Reading {
  std::string format;
  std::string data;

  bool operator==(const Reading&) const = default;
};

// How failed expectations show a reading.
inline void PrintTo(const Reading& reading, std::ostream* out) {
  *out << reading.format << ' ' << testing::PrintToString(reading.data);
}

// The first symbol that ZXing sees. formats: names as ZXing writes them ("Code39|Code93"), empty for all.
// Start and stop characters of Codabar are part of the data. turns: whether symbols that stand on a side or
// on their head are looked for too.
enum class Turns : std::uint8_t { kNone, kAll };
std::optional<Reading> ReadWithZxing(const GreyImage& image, const std::string& formats = {},
                                     Turns turns = Turns::kNone);

// The first symbol that ZBar sees ("CODE-39", "EAN-13", ...). symbology: the only one to look for, as ZBar's
// configuration names it ("qrcode"), or several with a space between them; empty for all. QR Codes: the bytes
// as they are, not converted to UTF-8.
std::optional<Reading> ReadWithZbar(const GreyImage& image, const std::string& symbology = {});

// The first symbol of each image as a current ZXing sees it ("DataBarLtd", "DataBarStk", ...), which also
// looks for light symbols on dark ground, and for symbols turned by quarters. formats: those to look for,
// with a space between them; empty for all. All images go to one process. Throws std::runtime_error when the
// reader cannot run.
std::vector<std::optional<Reading>> ReadWithWasm(const std::vector<GreyImage>& images,
                                                 const std::string& formats = {});

}  // namespace barcode::test
