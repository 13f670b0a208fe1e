#pragma once

#include <cstdint>
#include <string>

namespace barcode::tool {

struct Counts {
  std::uint64_t rows = 0;
  std::uint64_t drawn = 0;
  std::uint64_t warned = 0;  // of those drawn
  std::uint64_t failed = 0;
  std::uint64_t skipped = 0;

  void Add(const Counts& more) {
    rows += more.rows;
    drawn += more.drawn;
    warned += more.warned;
    failed += more.failed;
    skipped += more.skipped;
  }
};

// What was made of some rows that stand one behind the other.
struct Parcel {
  std::string bytes;      // for the output
  std::string directory;  // of a zip file: the entries of its directory
  std::string failures;   // JSON lines
  Counts counts;
  std::uint64_t bytesTaken = 0;  // of the input, with the last of these rows
};

}  // namespace barcode::tool
