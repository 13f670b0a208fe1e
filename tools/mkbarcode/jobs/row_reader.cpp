#include "mkbarcode/jobs/row_reader.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "mkbarcode/descriptor.h"
#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

// What is read at once. A row that is too long for any label may be one block longer than kLongestRow.
constexpr std::size_t kBlock = std::size_t{1} << 17U;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::array<std::string_view, 2> kUtf16Marks = {"\xFF\xFE", "\xFE\xFF"};

// Of what is too long, enough to find it again.
constexpr std::size_t kExcerpt = 1000;

constexpr bool IsLineEnd(char c) {
  return c == '\n' || c == '\r';
}

bool IsBlank(std::string_view line) {
  return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

RowCutter::RowCutter(InputFormat format) : m_format(format), m_buffer(kBlock) {}

RowCutter::Room RowCutter::RoomForInput() {
  std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
  m_scan -= m_begin;
  m_end -= m_begin;
  if (m_firstLineEnd) {
    *m_firstLineEnd -= m_begin;
  }
  m_begin = 0;
  if (m_buffer.size() < m_end + kBlock) {
    m_buffer.resize(std::max(m_end + kBlock, 2 * m_end));
  }
  return {m_buffer.data() + m_end, m_buffer.size() - m_end};
}

std::optional<RawRow> RowCutter::Next() {
  if (m_isAtStart && !SkipByteOrderMark()) {
    return std::nullopt;
  }
  while (true) {
    const std::optional<RawRow> row = NextPiece();
    const bool isEmpty = row && row->problem == RowProblem::kNone &&
                         (m_format == InputFormat::kCsv ? row->bytes.empty() : IsBlank(row->bytes));
    if (!isEmpty) {
      return row;
    }
  }
}

// False when more has to come before it is known.
bool RowCutter::SkipByteOrderMark() {
  const std::string_view start = Pending();
  if (start.size() < kUtf8Mark.size() && !m_isEnded) {
    const bool mayBeMark = start.empty() || static_cast<unsigned char>(start.front()) >= 0x80;
    if (mayBeMark) {
      return false;
    }
  }
  for (const std::string_view mark : kUtf16Marks) {
    if (start.starts_with(mark)) {
      throw RunError("the jobs are in UTF-16; save them in UTF-8");
    }
  }
  if (start.starts_with(kUtf8Mark)) {
    m_begin += kUtf8Mark.size();
    m_scan = m_begin;
  }
  m_isAtStart = false;
  return true;
}

// The next row, empty ones too.
std::optional<RawRow> RowCutter::NextPiece() {
  SkipLineEnd();
  if (m_isSkipping) {
    const bool isFound = FindLineEnd();
    m_begin = m_scan;
    if (!isFound) {
      return std::nullopt;
    }
    m_isSkipping = false;
    m_mayContinueLineEnd = m_buffer[m_scan] == '\r';
    m_begin = m_scan + 1;
    StartRow();
    SkipLineEnd();
  }
  if (FindLineEnd()) {
    return TakeRow();
  }
  if (m_end - m_begin > kLongestRow) {
    return BeginSkipping();
  }
  if (m_isEnded && m_begin < m_end) {
    return TakeLastRow();
  }
  return std::nullopt;
}

// The LF of a CR LF may come late.
void RowCutter::SkipLineEnd() {
  if (!m_mayContinueLineEnd || m_begin == m_end) {
    return;
  }
  m_mayContinueLineEnd = false;
  if (m_buffer[m_begin] == '\n') {
    ++m_begin;
    StartRow();
  }
}

void RowCutter::StartRow() {
  m_scan = m_begin;
  m_state = State::kCellStart;
  m_firstLineEnd.reset();
}

bool RowCutter::FindLineEnd() {
  return m_format == InputFormat::kCsv ? FindEndOfTableRow() : FindEndOfLine();
}

bool RowCutter::FindEndOfLine() {
  const void* const found = std::memchr(m_buffer.data() + m_scan, '\n', m_end - m_scan);
  m_scan =
      found == nullptr ? m_end : static_cast<std::size_t>(static_cast<const char*>(found) - m_buffer.data());
  return found != nullptr;
}

// Not beyond what a row may have: whether a quote is open there must not depend on how much has been read.
std::size_t RowCutter::EndOfScan() const {
  return m_isSkipping ? m_end : std::min(m_end, m_begin + kLongestRow + 1);
}

bool RowCutter::FindEndOfTableRow() {
  for (const std::size_t end = EndOfScan(); m_scan < end; ++m_scan) {
    const char character = m_buffer[m_scan];
    if (IsLineEnd(character)) {
      if (m_state != State::kQuoted) {
        return true;
      }
      if (!m_isSkipping) {
        m_firstLineEnd = m_firstLineEnd.value_or(m_scan);
      }
    }
    Step(character);
  }
  return false;
}

// A quote opens where a cell starts, and nowhere else.
void RowCutter::Step(char character) {
  switch (m_state) {
    case State::kCellStart:
      m_state = character == '"' ? State::kQuoted : character == ',' ? State::kCellStart : State::kPlain;
      return;
    case State::kPlain:
      m_state = character == ',' ? State::kCellStart : State::kPlain;
      return;
    case State::kQuoted:
      m_state = character == '"' ? State::kQuoteInQuoted : State::kQuoted;
      return;
    case State::kQuoteInQuoted:
      m_state = character == '"' ? State::kQuoted : character == ',' ? State::kCellStart : State::kPlain;
      return;
  }
}

RawRow RowCutter::TakeRow() {
  std::string_view bytes = Pending().substr(0, m_scan - m_begin);
  m_mayContinueLineEnd = m_buffer[m_scan] == '\r';
  m_begin = m_scan + 1;
  StartRow();
  if (m_format == InputFormat::kJsonLines && bytes.ends_with('\r')) {
    bytes.remove_suffix(1);
  }
  return bytes.size() > kLongestRow ? RawRow{bytes.substr(0, kExcerpt), RowProblem::kTooLong}
                                    : RawRow{bytes, RowProblem::kNone};
}

RawRow RowCutter::TakeLastRow() {
  if (m_state == State::kQuoted) {
    return GiveUpQuote();
  }
  const RawRow row = {Pending(), RowProblem::kNone};
  m_begin = m_end;
  StartRow();
  return row;
}

// An open quote stays open: the lines inside it are no rows.
RawRow RowCutter::BeginSkipping() {
  m_isSkipping = true;
  m_firstLineEnd.reset();
  const bool isInQuote =  // a quote at the very end may be the first of two
      m_state == State::kQuoted || m_state == State::kQuoteInQuoted;
  return {Pending().substr(0, kExcerpt), isInQuote ? RowProblem::kTooLongInQuote : RowProblem::kTooLong};
}

// A quote that nothing closes would take all rows behind it along: its row is one line.
RawRow RowCutter::GiveUpQuote() {
  const std::size_t lineEnd = m_firstLineEnd.value_or(m_end);
  const RawRow row = {Pending().substr(0, std::min(kExcerpt, lineEnd - m_begin)), RowProblem::kUnclosedQuote};
  m_mayContinueLineEnd = lineEnd < m_end && m_buffer[lineEnd] == '\r';
  m_begin = std::min(lineEnd + 1, m_end);
  StartRow();
  return row;
}

RowReader::RowReader(int descriptor, std::string name, InputFormat format, int wakeUp)
    : m_descriptor(descriptor), m_name(std::move(name)), m_wakeUp(wakeUp), m_cutter(format) {}

std::optional<RawRow> RowReader::Next() {
  return m_cutter.Next();
}

RowReader::Filled RowReader::Fill() {
  const RowCutter::Room room = m_cutter.RoomForInput();
  while (true) {
    std::array<pollfd, 2> waits = {pollfd{m_descriptor, POLLIN, 0}, pollfd{m_wakeUp, POLLIN, 0}};
    // A negative number is passed over.
    if (poll(waits.data(), waits.size(), -1) < 0 && errno == EINTR) {
      continue;
    }
    if (waits[1].revents != 0) {
      return Filled::kWokenUp;
    }
    const ssize_t count = read(m_descriptor, room.bytes, std::min(room.size, kBlock));
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) {
      continue;
    }
    if (count < 0) {
      FailWithErrno("cannot read " + m_name);
    }
    m_cutter.Add(static_cast<std::size_t>(count));
    m_bytesRead += static_cast<std::uint64_t>(count);
    if (count == 0) {
      m_cutter.AddEnd();
      m_isAtEnd = true;
    }
    return Filled::kSome;
  }
}

}  // namespace barcode::tool
