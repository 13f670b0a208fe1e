#include "label/pdf_file.h"

#include <zlib.h>

#include <limits>
#include <new>
#include <utility>

#include "base/line.h"
#include "label/title.h"

namespace barcode::label {
namespace {

// Readers of old have room for 8,191 elements in an array.
constexpr std::size_t kMostKids = 1000;

constexpr int kDecimals = 5;

// Bytes of the table of objects that are written at once.
constexpr std::size_t kBlock = 65'536;

// The second line tells programs that carry files about that this one is no text.
constexpr std::string_view kHeader = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";

void AppendUtf16Unit(std::string& out, unsigned unit) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (int shift = 12; shift >= 0; shift -= 4) {
    out += kDigits[unit >> static_cast<unsigned>(shift) & 0xFU];
  }
}

// A text in UTF-16, as hexadecimal digits.
std::string TextString(std::string_view text) {
  std::string out = "<FEFF";
  while (!text.empty()) {
    const char32_t character = TakeDocumentCharacter(text);
    constexpr char32_t kFirstPair = 0x10000;
    if (character < kFirstPair) {
      AppendUtf16Unit(out, character);
    } else {
      AppendUtf16Unit(out, 0xD800U + ((character - kFirstPair) >> 10U));
      AppendUtf16Unit(out, 0xDC00U + ((character - kFirstPair) & 0x3FFU));
    }
  }
  return out + '>';
}

// Whatever wrote it in which year: the same drawings make the same bytes.
std::string Info(std::string_view title) {
  std::string info = "<< /Producer (libbarcode)";
  if (!title.empty()) {
    AppendPieces(info, " /Title ", TextString(title));
  }
  return info + " >>";
}

// An entry of the table of objects: 20 bytes.
void AppendOffset(std::string& out, std::uint64_t offset) {
  constexpr int kDigits = 10;
  const std::string digits = Line(offset);
  out.append(kDigits - digits.size(), '0');
  AppendPieces(out, digits, " 00000 n \n");
}

}  // namespace

std::string Deflated(std::string_view bytes) {
  if (bytes.size() > std::numeric_limits<uLong>::max() / 2) {
    throw std::bad_alloc();
  }
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::string deflated(size, '\0');
  // Nothing but memory can fail.
  if (compress(reinterpret_cast<Bytef*>(deflated.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
               static_cast<uLong>(bytes.size())) != Z_OK) {
    throw std::bad_alloc();
  }
  deflated.resize(size);
  return deflated;
}

PdfFile::PdfFile(Sink sink, std::string_view title) : m_sink(std::move(sink)), m_info(Info(title)) {
  Write(kHeader);
}

void PdfFile::AddPage(double width, double height, const PdfContent& content) {
  if (m_leaves.size() == kMostKids) {
    EndBranch();
  }
  if (m_leaves.empty()) {
    m_branch = NewNumber();
  }
  const int stream = NewNumber();
  const std::string deflated = Deflated(content.Operators());
  Begin(stream);
  m_scratch.clear();
  AppendPieces(m_scratch, "<< /Length ", deflated.size(), " /Filter /FlateDecode >>\nstream\n", deflated,
               "\nendstream\nendobj\n");
  Write(m_scratch);

  const int page = NewNumber();
  Begin(page);
  m_scratch.clear();
  AppendPieces(m_scratch, "<< /Type /Page /Parent ", m_branch, " 0 R /MediaBox [ 0 0 ",
               Decimal{width, kDecimals}, ' ', Decimal{height, kDecimals}, " ] /Resources ",
               content.Resources(), " /Contents ", stream, " 0 R >>\nendobj\n");
  Write(m_scratch);
  m_leaves.push_back(page);
  ++m_pages;
}

void PdfFile::Finish() {
  if (m_branches.empty()) {
    m_root = m_branch;
    WriteNode(m_root, 0, m_leaves, m_pages);
  } else {
    EndBranch();
    WriteNode(m_root, 0, m_branches, m_pages);
  }
  WriteCrossReferences();
}

int PdfFile::NewNumber() {
  m_offsets.push_back(0);
  return static_cast<int>(m_offsets.size());
}

void PdfFile::Begin(int number) {
  m_offsets[static_cast<std::size_t>(number) - 1] = m_written;
  Write(Line(number, " 0 obj\n"));
}

void PdfFile::Write(std::string_view bytes) {
  m_sink(bytes);
  m_written += bytes.size();
}

void PdfFile::WriteNode(int number, int parent, const std::vector<int>& kids, std::int64_t pages) {
  Begin(number);
  m_scratch.clear();
  AppendPieces(m_scratch, "<< /Type /Pages /Count ", pages);
  if (parent != 0) {
    AppendPieces(m_scratch, " /Parent ", parent, " 0 R");
  }
  m_scratch += " /Kids [";
  for (const int kid : kids) {
    AppendPieces(m_scratch, ' ', kid, " 0 R");
  }
  m_scratch += " ] >>\nendobj\n";
  Write(m_scratch);
}

void PdfFile::EndBranch() {
  if (m_root == 0) {
    m_root = NewNumber();
  }
  WriteNode(m_branch, m_root, m_leaves, static_cast<std::int64_t>(m_leaves.size()));
  m_branches.push_back(m_branch);
  m_leaves.clear();
}

void PdfFile::WriteCrossReferences() {
  const int info = NewNumber();
  Begin(info);
  Write(Line(m_info, "\nendobj\n"));
  const int catalog = NewNumber();
  Begin(catalog);
  Write(Line("<< /Type /Catalog /Pages ", m_root, " 0 R >>\nendobj\n"));

  const std::uint64_t start = m_written;
  const std::size_t count = m_offsets.size() + 1;
  Write(Line("xref\n0 ", count, "\n0000000000 65535 f \n"));
  m_scratch.clear();
  for (const std::uint64_t offset : m_offsets) {
    AppendOffset(m_scratch, offset);
    if (m_scratch.size() >= kBlock) {
      Write(m_scratch);
      m_scratch.clear();
    }
  }
  Write(m_scratch);
  Write(Line("trailer\n<< /Size ", count, " /Root ", catalog, " 0 R /Info ", info, " 0 R >>\nstartxref\n",
             start, "\n%%EOF\n"));
}

}  // namespace barcode::label
