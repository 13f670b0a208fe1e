#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "label_proof/content.h"
#include "support/readers.h"

namespace barcode::test {

enum class ReaderId : std::uint8_t { kZxing, kZbar, kWasm, kOwn };
inline constexpr std::size_t kReaders = 4;

std::string_view NameOf(ReaderId reader);

// How a reader is asked for a symbology.
struct ReaderRule {
  std::string formats;                // to look for, in the reader's words
  std::vector<std::string> accepted;  // what it may call the symbology
};

// Nothing when the reader does not know the symbology, or this form of it.
std::optional<ReaderRule> RuleOf(ReaderId reader, Symbology symbology, const Content& content);

// What the reader writes for a symbol with this content.
std::string ExpectedData(ReaderId reader, Symbology symbology, const Content& content);

// What a reader that knows the symbology cannot do with some symbols though they are right.
struct ReaderLimit {
  std::string_view reason;
  bool misreads = false;  // it may report something else; otherwise it reports nothing
  // Where given, the same label with this change has to be read, or not to be seen if the text is beyond the
  // reader: the proof that the content is right and that it is this that the reader cannot do.
  Json (*remedy)(Json request) = nullptr;
};

// The limits that apply to a request with such a content. Each has been found by experiment with symbols of
// other origin too, or in the reader's documentation.
std::vector<ReaderLimit> LimitsOf(ReaderId reader, Symbology symbology, const Content& content,
                                  const Json& request);

// Whether there is any limit of the reader on the symbology.
bool HasLimits(ReaderId reader, Symbology symbology);

// Whether the reader's lines are too coarse for one dot a module, so that it may even report something else.
// Enlarged, the picture has to be read.
bool MisreadsSingleDots(ReaderId reader, Symbology symbology);

}  // namespace barcode::test
