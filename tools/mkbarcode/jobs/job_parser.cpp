#include "mkbarcode/jobs/job_parser.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <system_error>

#include "base/ascii.h"
#include "base/line.h"
#include "base/utf8.h"
#include "label/excerpt.h"
#include "label/field_values.h"
#include "label/json_request.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/jobs/json_members.h"
#include "mkbarcode/jobs/table_row.h"

namespace barcode::tool {
namespace {

using label::ErrorCode;
using label::FieldInfo;
using label::FieldKind;
using label::LabelError;

LabelError BadRow(const std::string& message) {
  return {ErrorCode::kBadRequest, "", message};
}

LabelError StandsTwice(std::string_view name) {
  return {ErrorCode::kBadValue, label::Excerpt(name),
          Line("The member \"", label::ExcerptForMessage(name), "\" stands twice; give it once.")};
}

LabelError UnknownMember(const std::string& name) {
  return {
      ErrorCode::kUnknownField, name,
      Line("There is no field \"", name, "\"; leave it out, use it in --name, or give --ignore-unknown.")};
}

std::optional<LabelError> ErrorOf(RowProblem problem) {
  switch (problem) {
    case RowProblem::kNone:
      return std::nullopt;
    case RowProblem::kTooLong:
      return BadRow(Line("The row is longer than ", kLongestRow, " bytes; no label needs that much."));
    case RowProblem::kTooLongInQuote:
      return BadRow(
          Line("The row is longer than ", kLongestRow,
               " bytes and goes on up to its closing quote; if nothing closes it, the rows behind it "
               "are lost, so close it, or write a quote inside a cell twice."));
    case RowProblem::kUnclosedQuote:
      break;
  }
  return BadRow("The row has a quote that nothing closes; close it, or write a quote inside a cell twice.");
}

// The field that a name may mean: "Quiet-Zone" and " quiet zone" are quiet_zone.
const FieldInfo* FieldLike(std::string_view name) {
  std::string plain = ToUpper(name);
  plain.erase(0, plain.find_first_not_of(' '));
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return c == '-' || c == ' '; }, '_');
  const std::span<const FieldInfo> fields = label::AllFields();
  const auto found = std::find_if(fields.begin(), fields.end(),
                                  [&](const FieldInfo& field) { return ToUpper(field.name) == plain; });
  return found == fields.end() ? nullptr : &*found;
}

std::string UnknownColumn(std::string_view name, std::size_t number, bool isAlone) {
  if (isAlone && name.find_first_of(";\t|") != std::string_view::npos) {
    return Line("the header row is one cell, \"", label::ExcerptForMessage(name),
                "\"; cells are separated by commas");
  }
  const std::string what = name.empty()
                               ? Line("column ", number, " has no name")
                               : Line("the column \"", label::ExcerptForMessage(name), "\" is no field");
  const FieldInfo* const meant = FieldLike(name);
  const std::string remedy = meant == nullptr ? std::string("use it in --name, or give --ignore-unknown")
                                              : Line("did you mean \"", meant->name, "\"?");
  return Line(what, "; ", remedy);
}

// A value as JSON has it, if the cell is one that the field takes: a request that is written down can be
// asked for again.
std::string AsJsonValue(const FieldInfo& field, const std::string& cell) {
  const bool mayBeNumber = field.kind == FieldKind::kInteger || field.kind == FieldKind::kNumber ||
                           field.kind == FieldKind::kQuietZone || field.kind == FieldKind::kAngle;
  double number = 0;
  const char* const end = cell.data() + cell.size();
  if (const auto [stop, error] = std::from_chars(cell.data(), end, number);
      mayBeNumber && error == std::errc() && stop == end && std::isfinite(number)) {
    constexpr double kManyDigits = 1e15;
    const bool isWhole = number == std::trunc(number) && std::abs(number) < kManyDigits;
    return isWhole ? Line(static_cast<std::int64_t>(number)) : nlohmann::json(number).dump();
  }
  if (field.kind == FieldKind::kBoolean) {
    const std::string word = ToUpper(std::string_view(cell));
    if (word == "TRUE" || word == "1") {
      return "true";
    }
    if (word == "FALSE" || word == "0") {
      return "false";
    }
  }
  return JsonString(cell);
}

}  // namespace

JobParser::JobParser(const RawRow& header, JobRules rules) : m_rules(std::move(rules)), m_isTable(true) {
  if (header.problem != RowProblem::kNone) {
    throw UsageError(Line("the header row: ", ErrorOf(header.problem)->what()));
  }
  if (!IsUtf8(header.bytes)) {
    throw UsageError("the header row is not in UTF-8; save the table in UTF-8");
  }
  TableRow row = CellsOf(header.bytes);
  if (row.problem) {
    throw UsageError(Line("the header row: ", *row.problem));
  }
  for (std::string& name : row.cells) {
    m_columns.push_back({name, label::FindField(name), FindExtra(name)});
  }
  CheckHeader();
}

void JobParser::CheckHeader() const {
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    const Column& column = m_columns[i];
    const bool isKnown = column.field != nullptr || column.extra;
    if (!isKnown && !m_rules.ignoreUnknown) {
      throw UsageError(UnknownColumn(column.name, i + 1, m_columns.size() == 1));
    }
    const bool isTwice =
        isKnown && std::any_of(m_columns.begin(), m_columns.begin() + static_cast<std::ptrdiff_t>(i),
                               [&](const Column& earlier) { return earlier.name == column.name; });
    if (isTwice) {
      throw UsageError(Line("the column \"", label::ExcerptForMessage(column.name), "\" stands twice"));
    }
  }
  for (std::size_t i = 0; i < m_rules.extraColumns.size(); ++i) {
    if (std::none_of(m_columns.begin(), m_columns.end(),
                     [i](const Column& column) { return column.extra == i; })) {
      throw UsageError(Line("there is no field and no column \"", m_rules.extraColumns[i], "\""));
    }
  }
}

std::optional<std::size_t> JobParser::FindExtra(std::string_view name) const {
  const auto found = std::find(m_rules.extraColumns.begin(), m_rules.extraColumns.end(), name);
  return found == m_rules.extraColumns.end()
             ? std::nullopt
             : std::optional(static_cast<std::size_t>(found - m_rules.extraColumns.begin()));
}

Job JobParser::Parse(const RawRow& row) const {
  Job job{m_rules.defaults, std::vector<std::string>(m_rules.extraColumns.size()), ErrorOf(row.problem)};
  if (job.error) {
    return job;
  }
  try {
    if (m_isTable) {
      ParseTableRow(row.bytes, job);
    } else {
      ParseJson(row.bytes, job);
    }
  } catch (const LabelError& error) {
    job.error = error.Code() == ErrorCode::kUnknownField ? UnknownMember(error.Field()) : error;
  }
  return job;
}

void JobParser::ParseTableRow(std::string_view bytes, Job& job) const {
  if (bytes.find('\0') != std::string_view::npos) {
    throw BadRow("The row has a zero byte; bytes of any value go into \"text_base64\".");
  }
  if (!IsUtf8(bytes)) {
    throw BadRow("The row is not in UTF-8; save the table in UTF-8.");
  }
  TableRow row = CellsOf(bytes);
  if (row.problem) {
    throw BadRow(*row.problem);
  }
  if (row.cells.size() != m_columns.size()) {
    throw BadRow(Line("The row has ", row.cells.size(), row.cells.size() == 1 ? " cell" : " cells",
                      " and the header ", m_columns.size(),
                      "; each column wants one, empty where there is nothing to say."));
  }
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    std::string& cell = row.cells[i];
    if (m_columns[i].extra) {
      job.extraValues[*m_columns[i].extra] = cell;
    }
    if (m_columns[i].field != nullptr && !cell.empty()) {
      label::SetFromText(job.request, *m_columns[i].field, cell);
    }
  }
}

void JobParser::ParseJson(std::string_view row, Job& job) const {
  const bool mayHaveExtras = m_rules.ignoreUnknown || !m_rules.extraColumns.empty();
  job.request = mayHaveExtras ? label::ParseRequest(WithoutExtras(row, job), m_rules.defaults)
                              : label::ParseRequest(row, m_rules.defaults);
}

// The row with its fields alone; the values of the extra columns go into the job. What is no object stays as
// it is, for the parser to say so.
std::string JobParser::WithoutExtras(std::string_view row, Job& job) const {
  const std::optional<std::vector<JsonMember>> members = MembersOf(row);
  if (!members) {
    return std::string(row);
  }
  std::vector<bool> isSeen(m_rules.extraColumns.size());
  std::string fields = "{";
  for (const JsonMember& member : *members) {
    if (const std::optional<std::size_t> extra = FindExtra(member.name)) {
      if (isSeen[*extra]) {
        throw StandsTwice(member.name);
      }
      isSeen[*extra] = true;
      job.extraValues[*extra] = PlainText(member.value);
    } else if (label::FindField(member.name) != nullptr || !m_rules.ignoreUnknown) {
      AppendPieces(fields, fields.size() > 1 ? "," : "", member.nameAsWritten, ':', member.value);
    }
  }
  return fields += '}';
}

std::string JobParser::AsJson(const RawRow& row) const {
  if (row.problem == RowProblem::kNone) {
    if (m_isTable) {
      return TableRowAsJson(row.bytes);
    }
    if (row.bytes.find('\0') == std::string_view::npos && nlohmann::json::accept(row.bytes)) {
      return std::string(row.bytes);
    }
  }
  return JsonString(row.bytes);
}

std::string JobParser::TableRowAsJson(std::string_view bytes) const {
  const TableRow row = CellsOf(bytes);
  if (row.problem || row.cells.size() != m_columns.size()) {
    return JsonString(bytes);
  }
  std::string json;
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    if (row.cells[i].empty()) {
      continue;
    }
    json += json.empty() ? "{" : ",";
    const FieldInfo* const field = m_columns[i].field;
    AppendPieces(json, JsonString(m_columns[i].name), ':',
                 field != nullptr ? AsJsonValue(*field, row.cells[i]) : JsonString(row.cells[i]));
  }
  return json.empty() ? "{}" : json + '}';
}

}  // namespace barcode::tool
