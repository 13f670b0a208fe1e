#pragma once

#include <stdexcept>

namespace barcode::tool {

enum ExitStatus { kExitDone = 0, kExitFailed = 1, kExitUsage = 2 };

// The command line asks for something that cannot be: exit status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The command line is fine, yet the drawing, the reading or the writing failed: exit status 1.
class RunError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace barcode::tool
