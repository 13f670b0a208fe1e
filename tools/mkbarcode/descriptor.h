#pragma once

#include <string>
#include <string_view>

namespace barcode::tool {

// A descriptor that is closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int number) : m_number(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  // Negative when nothing was opened.
  int Number() const { return m_number; }

  // False when the close reports that earlier writes were lost.
  bool Close();

 private:
  int m_number;
};

// Throws a RunError of these words and those for errno.
[[noreturn]] void FailWithErrno(const std::string& what);

// Everything up to the end. Throws RunError with the name.
std::string ReadDescriptor(int descriptor, const std::string& name);

// Waits for a reader that is behind, where the descriptor does not by itself. False, with the reason in
// errno, when not every byte was accepted.
bool WriteDescriptor(int descriptor, std::string_view bytes);

}  // namespace barcode::tool
