#pragma once

#include <string>

#include "same/journal.h"
#include "same/library.h"
#include "same/streams.h"

namespace barcode::same {

// Calls the functions of a library and writes each call down with all that came of it. What is called never
// depends on what came before from the library: two libraries get the same calls.
class Host {
 public:
  Host(const Library& library, const Streams& streams, Journal& journal)
      : m_library(library), m_streams(streams), m_journal(journal) {}

  const Library& Functions() const { return m_library; }

  BarcodeHandle Create(int type);
  void Destroy(BarcodeHandle handle);

  // Setters: name is what the journal shows, with the arguments behind the handle.
  template <class... Arguments>
  void Set(const char* name, void (*function)(BarcodeHandle, Arguments...), BarcodeHandle handle,
           Arguments... arguments) {
    Begin(name, handle, arguments...);
    function(handle, arguments...);
    End({});
  }

  // Draws and queries, which return a number.
  template <class... Arguments>
  void Ask(const char* name, int (*function)(BarcodeHandle, Arguments...), BarcodeHandle handle,
           Arguments... arguments) {
    Begin(name, handle, arguments...);
    EndNumber(function(handle, arguments...));
  }

  // Fetches of a string.
  void Fetch(const char* name, const char* (*function)(BarcodeHandle), BarcodeHandle handle);

  void FetchImage(BarcodeHandle handle);
  void FetchImageWithoutLength(BarcodeHandle handle);
  void CheckDigit(const char* text);

  // Writes down a string fetched earlier once more: it is to be what it was.
  void Again(const char* name, const std::string& bytes);

  const char* LastText() const { return m_lastText; }
  std::string LastImage() const;
  void ForgetLast();

 private:
  template <class... Arguments>
  void Begin(const char* name, BarcodeHandle handle, Arguments... arguments) {
    std::string call = std::string(name) + (handle == nullptr ? "(NULL" : "(h");
    ((call += ", " + Shown(arguments)), ...);
    m_journal.Begin(call + ")");
  }

  static std::string Shown(int number) { return std::to_string(number); }
  static std::string Shown(double number);
  std::string Shown(const char* text) const;

  void EndNumber(int number) { End({" = " + std::to_string(number), ""}); }
  void EndText(const char* text);
  void End(const Result& result);

  const Library& m_library;
  const Streams& m_streams;
  Journal& m_journal;
  const char* m_lastText = nullptr;
  const unsigned char* m_lastImage = nullptr;
  int m_lastImageLength = 0;
};

}  // namespace barcode::same
