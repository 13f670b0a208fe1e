#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "support/readers.h"
#include "support/scratch_folder.h"

namespace barcode::test {
namespace {

void WriteNumber(std::ostream& out, int number) {
  for (int shift = 0; shift < 32; shift += 8) {
    out.put(static_cast<char>(static_cast<std::uint32_t>(number) >> shift & 0xFFU));
  }
}

void WriteImages(const std::string& path, const std::vector<GreyImage>& images) {
  std::ofstream out(path, std::ios::binary);
  for (const GreyImage& image : images) {
    WriteNumber(out, image.width);
    WriteNumber(out, image.height);
    out.write(reinterpret_cast<const char*>(image.pixels.data()),
              static_cast<std::streamsize>(image.pixels.size()));
  }
}

// "format hex", or "-".
std::optional<Reading> ParseReading(const std::string& line) {
  if (line == "-") {
    return std::nullopt;
  }
  Reading reading;
  std::string hex;
  std::istringstream(line) >> reading.format >> hex;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    reading.data += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return reading;
}

}  // namespace

std::vector<std::optional<Reading>> ReadWithWasm(const std::vector<GreyImage>& images,
                                                 const std::string& formats) {
  const ScratchFolder folder;
  WriteImages(folder.File("images"), images);
  const std::string command = std::string("'") + TEST_NODE + "' '" + TEST_WASM_READER + "' " + formats +
                              " < '" + folder.File("images") + "' > '" + folder.File("readings") + "'";
  if (std::system(command.c_str()) != 0) {  // NOLINT(cert-env33-c): paths of this build, nothing from outside
    throw std::runtime_error("the reader from npm did not run; scripts/install-deps.sh installs it");
  }
  std::vector<std::optional<Reading>> readings;
  std::ifstream in(folder.File("readings"));
  for (std::string line; std::getline(in, line);) {
    readings.push_back(ParseReading(line));
  }
  if (readings.size() != images.size()) {
    throw std::runtime_error("the reader from npm did not answer for every image");
  }
  return readings;
}

}  // namespace barcode::test
