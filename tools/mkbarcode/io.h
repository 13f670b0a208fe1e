#pragma once

#include <string>
#include <string_view>

namespace barcode::tool {

// Opens what is closed among the three standard descriptors, in a way that reading finds nothing and writing
// fails, so that no file opened later takes their numbers and with them what is meant for the standard
// streams.
void ReserveStandardDescriptors();

// All bytes of a file, or of standard input for "-". Throws RunError.
std::string ReadAll(const std::string& file);

// The same as a text: one line end at the end is dropped unless it is to be kept.
std::string ReadText(const std::string& file, bool keepNewline);

// Writes standard output for "-", else a file (see ReplaceFile). Throws RunError when not every byte was
// accepted.
void WriteAll(const std::string& file, std::string_view bytes);

// Makes the directory and those above it where they are missing. Throws RunError.
void MakeDirectory(const std::string& directory);

// Writes to standard error as far as it goes.
void WriteToStandardError(std::string_view text);

// While it lives, a standard descriptor leads elsewhere; the destructor leads it back.
class Redirection {
 public:
  // Both take what descriptor (1 or 2) will lead to: another descriptor, or a new nameless file.
  static Redirection ToDescriptor(int descriptor, int target);
  static Redirection ToNothing(int descriptor);
  static Redirection ToBuffer(int descriptor);

  Redirection(Redirection&& other) noexcept;
  Redirection(const Redirection&) = delete;
  Redirection& operator=(const Redirection&) = delete;
  Redirection& operator=(Redirection&&) = delete;
  ~Redirection();

  // What was written so far; only after ToBuffer.
  std::string Contents() const;

 private:
  Redirection(int descriptor, int target);

  int m_descriptor;
  int m_saved;   // the descriptor's former meaning
  int m_target;  // owned, -1 when not
};

}  // namespace barcode::tool
