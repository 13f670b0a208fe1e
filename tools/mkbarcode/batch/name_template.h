#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "label/field_table.h"
#include "mkbarcode/jobs/job_parser.h"

namespace barcode::tool {

inline constexpr std::string_view kDefaultName = "{n:06}.{format}";

// The name of a row's file below the directory or inside the archive: a text with placeholders. {n} is the
// number of the row, {n:06} the same with zeros in front; {module} and so on are fields, any other name is a
// column. Two braces are one.
class NameTemplate {
 public:
  // Throws UsageError for one that is malformed, or would lead above the directory.
  explicit NameTemplate(std::string_view text);

  // The placeholders that are no fields, each once.
  const std::vector<std::string>& ExtraColumns() const { return m_extraColumns; }

  // Whether the name tells the row: no two rows have the same.
  bool IsUnique() const;

  // Throws LabelError when the row has no value for a placeholder. Whatever the values hold, each stays
  // inside its part of the name, and the name is one that FAT takes.
  std::string NameOf(std::uint64_t row, const Job& job) const;

 private:
  struct Number {
    std::size_t digits = 1;  // at least
  };
  struct Extra {
    std::size_t index;
  };
  // A plain text, or what stands between braces.
  using Piece = std::variant<std::string, Number, const label::FieldInfo*, Extra>;

  void AddLiteral(char character);
  void AddPlaceholder(std::string_view placeholder);
  void CheckParts() const;
  void AppendValue(std::string& name, const label::FieldInfo& field, const Job& job) const;
  void AppendValue(std::string& name, Extra extra, const Job& job) const;

  std::vector<Piece> m_pieces;
  std::vector<std::string> m_extraColumns;
};

// The name with a number before its suffix: "a/b.png" and 2 make "a/b-2.png".
std::string WithNumber(std::string_view name, std::uint64_t number);

// The value of a field as text; "" where the request has none. "format" always has one.
std::string TextOfField(const label::Request& request, const label::FieldInfo& field);

}  // namespace barcode::tool
