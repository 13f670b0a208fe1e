#pragma once

#include <memory>
#include <optional>

#include "support/image.h"
#include "support/readers.h"

namespace barcode::test {

// ZBar as a till has it: one scanner that sees one picture after the other, and remembers parts of symbols.
class ZbarAtATill {
 public:
  ZbarAtATill();
  ~ZbarAtATill();
  ZbarAtATill(const ZbarAtATill&) = delete;
  ZbarAtATill& operator=(const ZbarAtATill&) = delete;

  std::optional<Reading> Read(const GreyImage& image);

 private:
  class Scanner;
  std::unique_ptr<Scanner> m_scanner;
};

}  // namespace barcode::test
