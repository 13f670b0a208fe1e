#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "label/pdf_content.h"

namespace barcode::label {

// A PDF that is written while its pages are made, from front to back. It keeps nothing of a page but where
// in the file it begins: 16 bytes and its number.
class PdfFile {
 public:
  // Takes the next bytes of the file. What it throws comes out of the function that had something to write.
  using Sink = std::function<void(std::string_view)>;

  // title: UTF-8; "" for none. Throws std::bad_alloc, as all of these.
  PdfFile(Sink sink, std::string_view title);

  // Size in points.
  void AddPage(double width, double height, const PdfContent& content);

  // After the last page; there is to be one.
  void Finish();

 private:
  int NewNumber();
  void Begin(int number);
  void Write(std::string_view bytes);
  void WriteNode(int number, int parent, const std::vector<int>& kids, std::int64_t pages);
  void EndBranch();
  void WriteCrossReferences();

  Sink m_sink;
  std::string m_info;
  std::string m_scratch;
  std::uint64_t m_written = 0;
  std::vector<std::uint64_t> m_offsets;  // of the objects, numbered from 1
  std::int64_t m_pages = 0;
  // The pages hang on branches, and those, if there are several, on the root.
  int m_root = 0;
  int m_branch = 0;
  std::vector<int> m_branches;
  std::vector<int> m_leaves;  // of the last branch
};

// The bytes in zlib's form.
std::string Deflated(std::string_view bytes);

}  // namespace barcode::label
