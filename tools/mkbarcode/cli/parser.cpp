#include "mkbarcode/cli/parser.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <exception>
#include <optional>

#include "mkbarcode/cli/suggestion.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

bool IsFlag(const CLI::Option& option) {
  return option.get_items_expected_max() == 0;
}

// An argument as it is written: --name, --name=value, -n; no text, and not -nVALUE.
struct Written {
  std::string name;
  std::optional<std::string> value;
};

std::optional<Written> ReadOption(const std::string& argument) {
  if (argument.starts_with("--") && argument.size() > 2) {
    const std::size_t sign = argument.find('=');
    if (sign == std::string::npos) {
      return Written{argument, std::nullopt};
    }
    return Written{argument.substr(0, sign), argument.substr(sign + 1)};
  }
  if (argument.size() == 2 && argument.front() == '-' && argument[1] != '-') {
    return Written{argument, std::nullopt};
  }
  return std::nullopt;
}

void RequireTruth(const std::string& name, const std::string& value) {
  try {
    if (!value.empty()) {
      const auto truth = CLI::detail::to_flag_value(value);
      if (truth == 1 || truth == -1) {
        return;
      }
    }
  } catch (const std::exception&) {
    // told below
  }
  throw UsageError(Concat({"The option \"", name, "\" must be true or false."}));
}

// The arguments as the parser takes values of any kind: each option and its value apart.
class Separation {
 public:
  Separation(const CLI::App& app, const std::vector<std::string>& arguments)
      : m_app(app), m_arguments(arguments) {}

  std::vector<std::string> Run() {
    while (m_next < m_arguments.size()) {
      const std::string& argument = m_arguments[m_next++];
      if (argument == "--") {
        m_separated.push_back(argument);
        m_separated.insert(m_separated.end(), At(m_next), m_arguments.end());
        break;
      }
      Take(argument);
    }
    return std::move(m_separated);
  }

 private:
  void Take(const std::string& argument) {
    const std::optional<Written> written = ReadOption(argument);
    const CLI::Option* const option = written ? m_app.get_option_no_throw(written->name) : nullptr;
    if (option == nullptr) {
      m_separated.push_back(argument);
    } else if (HasOptionalValue(*option)) {
      RequireFirst(*option, *written);
      m_separated.push_back(
          Concat({written->name, "=", written->value ? "=" : kNoValue, written->value.value_or("")}));
    } else if (IsFlag(*option)) {
      if (written->value) {
        RequireTruth(written->name, *written->value);
      }
      m_separated.push_back(argument);
    } else {
      TakeValue(*option, *written);
    }
  }

  void TakeValue(const CLI::Option& option, const Written& written) {
    if (!written.value && m_next == m_arguments.size()) {
      throw UsageError(Concat({"The option \"", written.name, "\" needs a value."}));
    }
    if (option.get_multi_option_policy() == CLI::MultiOptionPolicy::Throw) {
      RequireFirst(option, written);
    }
    m_separated.push_back(written.name);
    m_separated.push_back(written.value ? *written.value : m_arguments[m_next++]);
  }

  void RequireFirst(const CLI::Option& option, const Written& written) {
    if (std::ranges::find(m_seen, &option) != m_seen.end()) {
      throw UsageError(Concat({"The option \"", written.name, "\" stands twice; give it once."}));
    }
    m_seen.push_back(&option);
  }

  std::vector<std::string>::const_iterator At(std::size_t place) const {
    return m_arguments.begin() + static_cast<std::ptrdiff_t>(place);
  }

  const CLI::App& m_app;
  const std::vector<std::string>& m_arguments;
  std::size_t m_next = 0;
  std::vector<std::string> m_separated;
  std::vector<const CLI::Option*> m_seen;
};

std::vector<std::string> NamesOfOptions(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) {
      names.push_back(Concat({"--", name}));
    }
  }
  return names;
}

// Of the arguments that are too many, an option is told before a text.
[[noreturn]] void ThrowNotExpected(const CLI::App& app) {
  const std::vector<std::string> extras = app.remaining();
  if (std::ranges::find(extras, "--") != extras.end()) {
    throw UsageError("What follows \"--\" is text: put the options before it.");
  }
  const auto option = std::ranges::find_if(
      extras, [](const std::string& extra) { return extra.starts_with('-') && extra.size() > 1; });
  if (option == extras.end()) {
    throw UsageError(Concat({"\"", extras.empty() ? "" : extras.front(),
                             "\" is one argument too many; put a text with spaces in quotes."}));
  }
  const std::string name = option->substr(0, option->find('='));
  if (!name.starts_with("--")) {
    throw UnknownOption(
        Concat({"There is no option \"", name, "\"; put \"--\" before a text that begins with a dash."}),
        name);
  }
  throw UnknownOption(Concat({"There is no option \"", name, "\"", DidYouMean(name, NamesOfOptions(app))}),
                      name);
}

}  // namespace

// For the parser it is a flag, and its type name tells the difference. A value has "=" in front of it on the
// way, as flags have values of their own that mean something else.
CLI::Option* AddOptionalValue(CLI::App& app, const std::string& name, std::optional<std::string>& value,
                              const std::string& help) {
  return app.add_flag(name, help)->type_name("VALUE")->each([&value](const std::string& given) {
    value = given.starts_with('=') ? given.substr(1) : given;
  });
}

bool HasOptionalValue(const CLI::Option& option) {
  return IsFlag(option) && !option.get_type_name().empty();
}

bool RunParser(CLI::App& app, const std::vector<std::string>& arguments) {
  std::vector<std::string> separated = Separation(app, arguments).Run();
  std::ranges::reverse(separated);  // the parser takes the last one first
  try {
    app.parse(std::move(separated));
  } catch (const CLI::CallForHelp&) {
    return false;
  } catch (const CLI::ExtrasError&) {
    ThrowNotExpected(app);
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  return true;
}

bool WasGiven(const CLI::App& app, const std::string& option) {
  return app.get_option(option)->count() > 0;
}

}  // namespace barcode::tool
