#include "same/host.h"

#include <array>

#include "same/quoted.h"

namespace barcode::same {

BarcodeHandle Host::Create(int type) {
  m_journal.Begin("create(" + std::to_string(type) + ")");
  BarcodeHandle const handle = m_library.create(type);
  End({handle == nullptr ? " = NULL" : " = h", ""});
  return handle;
}

void Host::Destroy(BarcodeHandle handle) {
  Begin("destroy", handle);
  m_library.destroy(handle);
  End({});
}

void Host::Fetch(const char* name, const char* (*function)(BarcodeHandle), BarcodeHandle handle) {
  Begin(name, handle);
  m_lastText = function(handle);
  EndText(m_lastText);
}

void Host::FetchImage(BarcodeHandle handle) {
  Begin("get_image_data", handle);
  m_lastImageLength = -1;
  m_lastImage = m_library.getImageData(handle, &m_lastImageLength);
  End({" = " + std::string(m_lastImage == nullptr ? "NULL " : "") + std::to_string(m_lastImageLength),
       LastImage()});
}

void Host::FetchImageWithoutLength(BarcodeHandle handle) {
  Begin("get_image_data", handle, static_cast<const char*>(nullptr));
  m_lastImage = nullptr;
  End({m_library.getImageData(handle, nullptr) == nullptr ? " = NULL" : " = bytes", ""});
}

void Host::CheckDigit(const char* text) {
  m_journal.Begin("calculate_check_digit_14(" + Shown(text) + ")");
  EndText(m_library.calculateCheckDigit14(text));
}

void Host::Again(const char* name, const std::string& bytes) {
  m_journal.Begin(name);
  End({"", bytes});
}

std::string Host::LastImage() const {
  if (m_lastImage == nullptr || m_lastImageLength <= 0) {
    return "";
  }
  return {reinterpret_cast<const char*>(m_lastImage), static_cast<std::size_t>(m_lastImageLength)};
}

void Host::ForgetLast() {
  m_lastText = nullptr;
  m_lastImage = nullptr;
}

std::string Host::Shown(double number) {
  std::array<char, 40> text{};
  (void)std::snprintf(text.data(), text.size(), "%.17g", number);
  return text.data();
}

std::string Host::Shown(const char* text) const {
  return text == nullptr ? "NULL" : Quoted(text, m_journal.TextLimit());
}

void Host::EndText(const char* text) {
  if (text == nullptr) {
    End({" = NULL", ""});
  } else {
    End({*text == '\0' ? " = \"\"" : "", text});
  }
}

void Host::End(const Result& result) {
  const std::string out = m_streams.TakeOut();
  m_journal.End(result, out, m_streams.TakeErr(), m_streams.Joined());
}

}  // namespace barcode::same
