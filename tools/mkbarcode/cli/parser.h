#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mkbarcode/errors.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace barcode::tool {

// An argument that looks like an option and is none of the command.
class UnknownOption : public UsageError {
 public:
  UnknownOption(const std::string& message, std::string option)
      : UsageError(message), m_option(std::move(option)) {}

  // As it was written, without a value.
  const std::string& Option() const { return m_option; }

 private:
  std::string m_option;
};

// What an option with an optional value holds when it stands alone. It is no name of any file.
inline constexpr std::string_view kNoValue = {"\0", 1};

// Adds an option that stands alone or with a value behind "=": --report[=FILE].
CLI::Option* AddOptionalValue(CLI::App& app, const std::string& name, std::optional<std::string>& value,
                              const std::string& help);

bool HasOptionalValue(const CLI::Option& option);

// Runs the parser of a command. Values are taken as they are, also after "="; an option stands once, unless
// its policy for several is set. False when help was asked for, in which case nothing else is to be done.
// Throws UsageError, UnknownOption among them with a suggestion.
bool RunParser(CLI::App& app, const std::vector<std::string>& arguments);

// Whether the option was among the arguments.
bool WasGiven(const CLI::App& app, const std::string& option);

}  // namespace barcode::tool
