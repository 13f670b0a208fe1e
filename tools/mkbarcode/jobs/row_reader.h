#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mkbarcode/jobs/input_format.h"

namespace barcode::tool {

// No request that makes a label is near it; what has no end must not fill the memory.
inline constexpr std::size_t kLongestRow = std::size_t{1} << 20U;

enum class RowProblem : std::uint8_t {
  kNone,
  kTooLong,         // above kLongestRow
  kTooLongInQuote,  // the same; the quote that is open there may be one that nothing closes
  kUnclosedQuote,   // up to the end of the input
};

// One row as it stands in the input.
struct RawRow {
  std::string_view bytes;  // without its line end; with a problem only its beginning
  RowProblem problem = RowProblem::kNone;
};

// Cuts bytes into rows: lines, or in a table what stands between line ends outside quotes. Line ends are LF
// and CR LF, in a table a lone CR too. Empty lines are no rows; nor is a byte order mark a part of one.
class RowCutter {
 public:
  explicit RowCutter(InputFormat format);

  // Room for more input, at least a block of it. Takes the bytes of earlier rows away.
  struct Room {
    char* bytes = nullptr;
    std::size_t size = 0;
  };
  Room RoomForInput();
  void Add(std::size_t count) { m_end += count; }
  // Bytes that belong to no row yet that was taken.
  std::size_t BytesPending() const { return m_end - m_begin; }
  // No more will come: what is left is the last row.
  void AddEnd() { m_isEnded = true; }

  // The next row, if all of it is there; its bytes stand until there is more input. Throws RunError for
  // UTF-16.
  std::optional<RawRow> Next();

 private:
  enum class State : std::uint8_t { kCellStart, kPlain, kQuoted, kQuoteInQuoted };

  std::string_view Pending() const { return {m_buffer.data() + m_begin, m_end - m_begin}; }
  bool SkipByteOrderMark();
  std::optional<RawRow> NextPiece();
  // Moves m_scan to the line end of the row at m_begin; false when it has not come yet.
  bool FindLineEnd();
  bool FindEndOfTableRow();
  std::size_t EndOfScan() const;
  bool FindEndOfLine();
  void Step(char character);
  // Takes the row up to m_scan, and its line end.
  RawRow TakeRow();
  RawRow TakeLastRow();
  RawRow BeginSkipping();
  RawRow GiveUpQuote();
  void SkipLineEnd();
  void StartRow();

  InputFormat m_format;
  std::vector<char> m_buffer;
  std::size_t m_begin = 0;  // of the row that is being looked for
  std::size_t m_scan = 0;   // everything before was looked at
  std::size_t m_end = 0;    // of what has been read
  State m_state = State::kCellStart;
  std::optional<std::size_t> m_firstLineEnd;  // inside the quotes of this row, unless it is skipped
  bool m_isAtStart = true;
  bool m_isSkipping = false;          // the rest of a row that is too long
  bool m_mayContinueLineEnd = false;  // a CR ended the last row: an LF belongs to it
  bool m_isEnded = false;
};

// Cuts what a descriptor has to say.
class RowReader {
 public:
  // name: for messages. wakeUp: another descriptor; Fill returns without input as soon as it can be read.
  RowReader(int descriptor, std::string name, InputFormat format, int wakeUp = -1);

  // The next row that is here already; its bytes stand until Fill. Throws RunError.
  std::optional<RawRow> Next();

  enum class Filled : std::uint8_t { kSome, kWokenUp };
  // Waits for more input, of which the end is a part: Next may find a row now. Not at the end. Throws
  // RunError.
  Filled Fill();

  // All input has been read: when Next finds no row, there is none.
  bool IsAtEnd() const { return m_isAtEnd; }

  // Of the rows that were taken.
  std::uint64_t BytesTaken() const { return m_bytesRead - m_cutter.BytesPending(); }

 private:
  int m_descriptor;
  std::string m_name;
  int m_wakeUp;
  RowCutter m_cutter;
  std::uint64_t m_bytesRead = 0;
  bool m_isAtEnd = false;
};

}  // namespace barcode::tool
