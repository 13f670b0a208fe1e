#pragma once

#include <functional>
#include <string>

namespace barcode::test {

// What a call wrote to the descriptors of standard output and standard error.
struct Captured {
  std::string out;
  std::string err;
};

// Runs the call with both descriptors redirected. Nothing is flushed on its behalf: output that the library
// has not handed to the operating system by its return is missing, as it would be for a host.
Captured Capture(const std::function<void()>& call);

// The same for calls below the exported functions, whose output is still to be flushed.
Captured CaptureInternal(const std::function<void()>& call);

// Runs the call with the descriptor of standard output led to nothing. Standard error stays, where a
// sanitizer reports. What the call expects in vain goes to standard output: it is to be expected afterwards.
void WithoutOutput(const std::function<void()>& call);

}  // namespace barcode::test
