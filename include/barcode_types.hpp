// What barcode.hpp and barcode_label.hpp share: texts as they are handed in, bytes as they are handed out,
// and a function that writes these to a file. Either header includes this one.
//
// C++17 or later, header-only. Everything is in the namespace libbarcode; no macro is defined. Compiled with
// -fno-exceptions, a function that would throw calls std::abort instead.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace libbarcode {

namespace detail {

// Throws an Error made from the arguments.
template <class Error, class... Arguments>
[[noreturn]] inline void raise([[maybe_unused]] Arguments&&... arguments) {
#if defined(__cpp_exceptions)
  throw Error(std::forward<Arguments>(arguments)...);
#else
  std::abort();
#endif
}

}  // namespace detail

// A text as an argument: a literal, a const char*, a std::string or a std::string_view, not copied. Whatever
// it was made from has to live until the call returns, as temporaries do. A null pointer is not the empty
// text: every function says what it makes of it. Never throws.
class Text {
 public:
  Text(const char* text) noexcept
      : m_view(text == nullptr ? std::string_view() : std::string_view(text)),
        m_isNull(text == nullptr),
        m_isZeroEnded(true) {}
  Text(const std::string& text) noexcept : m_view(text), m_isZeroEnded(true) {}
  constexpr Text(std::string_view text) noexcept : m_view(text) {}

  [[nodiscard]] constexpr std::string_view view() const noexcept { return m_view; }
  // Made from a null pointer.
  [[nodiscard]] constexpr bool is_null() const noexcept { return m_isNull; }
  // A zero byte is known to follow the last one. (There may be others before.)
  [[nodiscard]] constexpr bool is_zero_ended() const noexcept { return m_isZeroEnded; }

 private:
  std::string_view m_view;
  bool m_isNull = false;
  bool m_isZeroEnded = false;
};

// Bytes that belong to somebody else: the function that returns them says until when they stay. A contiguous
// range: from C++20 on, std::span<const unsigned char> and std::as_bytes take it as it is. Copying one copies
// no bytes. Never throws.
class Bytes {
 public:
  using value_type = unsigned char;
  using const_iterator = const unsigned char*;
  using iterator = const_iterator;

  constexpr Bytes() noexcept = default;
  // Null with any size is empty.
  constexpr Bytes(const unsigned char* data, std::size_t size) noexcept
      : m_data(data), m_size(data == nullptr ? 0 : size) {}
  // The bytes of a text, of an SVG document for example.
  Bytes(std::string_view text) noexcept
      : Bytes(reinterpret_cast<const unsigned char*>(text.data()), text.size()) {}

  [[nodiscard]] constexpr const unsigned char* data() const noexcept { return m_data; }
  [[nodiscard]] constexpr std::size_t size() const noexcept { return m_size; }
  [[nodiscard]] constexpr bool empty() const noexcept { return m_size == 0; }
  [[nodiscard]] constexpr const_iterator begin() const noexcept { return m_data; }
  [[nodiscard]] constexpr const_iterator end() const noexcept {
    return m_data == nullptr ? nullptr : m_data + m_size;
  }
  // The same bytes as characters, for streams and strings.
  [[nodiscard]] std::string_view chars() const noexcept {
    return m_data == nullptr ? std::string_view()
                             : std::string_view(reinterpret_cast<const char*>(m_data), m_size);
  }

 private:
  const unsigned char* m_data = nullptr;
  std::size_t m_size = 0;
};

// Writes a picture to a file, which is made or replaced.
// picture: at least one byte.
// path: as the system names files, without a zero byte.
// Throws std::invalid_argument when there is nothing to write, and then no file is touched; std::system_error
// with the system's error when the file cannot be made or written: then what there is of it may be
// incomplete.
inline void save(Bytes picture, const std::string& path) {
  if (picture.empty()) {
    detail::raise<std::invalid_argument>("There is no picture to write");
  }
  if (path.find('\0') != std::string::npos) {
    detail::raise<std::system_error>(std::make_error_code(std::errc::invalid_argument),
                                     "A file's name with a zero byte");
  }
  errno = 0;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  const std::string_view bytes = picture.chars();
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) {
    const int error = errno == 0 ? EIO : errno;
    detail::raise<std::system_error>(error, std::generic_category(), "Cannot write " + path);
  }
}

}  // namespace libbarcode
