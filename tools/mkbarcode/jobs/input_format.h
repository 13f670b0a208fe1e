#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace barcode::tool {

enum class InputFormat : std::uint8_t { kCsv, kJsonLines };

inline constexpr std::string_view kStandardInput = "-";

// How JOBS are written: as the word says ("csv", "jsonl"), else as the suffix of the file does; standard
// input has JSON lines. Throws UsageError.
InputFormat FormatOfJobs(const std::string& file, const std::optional<std::string>& word);

}  // namespace barcode::tool
