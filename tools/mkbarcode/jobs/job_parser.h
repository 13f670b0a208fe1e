#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "label/error.h"
#include "label/field_table.h"
#include "label/request.h"
#include "mkbarcode/jobs/row_reader.h"

namespace barcode::tool {

// What the rows may hold.
struct JobRules {
  label::Request defaults = {};  // what a row does not say
  // Names that are no fields and whose values are wanted. Other columns that are no fields are refused.
  std::vector<std::string> extraColumns = {};
  bool ignoreUnknown = false;
};

// What a row asks for.
struct Job {
  label::Request request;
  std::vector<std::string> extraValues;  // of the extra columns, in their order; "" where a row has none
  std::optional<label::LabelError> error;
};

// Understands rows, each for itself: several threads may share one.
class JobParser {
 public:
  // Of JSON lines.
  explicit JobParser(JobRules rules) : m_rules(std::move(rules)) {}
  // Of a table with this header row. Throws UsageError for a header that does not fit the rules.
  JobParser(const RawRow& header, JobRules rules);

  // Throws nothing but std::bad_alloc: what is wrong is in the job.
  Job Parse(const RawRow& row) const;

  // The row as one JSON value, as far as it can be understood: an object, for a table too; else a string.
  std::string AsJson(const RawRow& row) const;

 private:
  // A column is a field, one of the extra columns or nothing that matters.
  struct Column {
    std::string name;
    const label::FieldInfo* field = nullptr;
    std::optional<std::size_t> extra;
  };

  void CheckHeader() const;
  void ParseTableRow(std::string_view row, Job& job) const;
  void ParseJson(std::string_view row, Job& job) const;
  std::string WithoutExtras(std::string_view row, Job& job) const;
  std::optional<std::size_t> FindExtra(std::string_view name) const;
  std::string TableRowAsJson(std::string_view row) const;

  JobRules m_rules;
  std::vector<Column> m_columns;  // of a table
  bool m_isTable = false;
};

}  // namespace barcode::tool
