#include <algorithm>
#include <string_view>
#include <utility>

#include "mkbarcode/cli/help_page.h"
#include "mkbarcode/cli/pages.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

// As text of a line: hyphens that are typed are no dashes, and nothing is taken for a request.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (escaped.empty() && (c == '.' || c == '\'')) {
      escaped += "\\&";
    }
    if (c == '\\') {
      escaped += "\\e";
    } else if (c == '-') {
      escaped += "\\-";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

std::string Heading(std::string_view request, std::string_view text) {
  return Concat({request, " \"", Escaped(text), "\"\n"});
}

std::string Entry(const std::string& written, const std::string& help) {
  return Concat({".TP\n.B ", Escaped(written), "\n", Escaped(help), "\n"});
}

// Lines that are indented stand as they are, the others are filled.
std::string Notes(const std::string& notes) {
  std::string page;
  bool isExample = false;
  std::size_t start = 0;
  while (start <= notes.size()) {
    const std::size_t end = std::min(notes.find('\n', start), notes.size());
    const std::string line = notes.substr(start, end - start);
    start = end + 1;
    const bool wasExample = std::exchange(isExample, line.starts_with("  "));
    if (isExample && !wasExample) {
      page += ".PP\n.nf\n";
    } else if (wasExample && !isExample) {
      page += ".fi\n";
    }
    if (line.empty()) {
      page += wasExample ? "" : ".PP\n";
    } else {
      page += Concat({Escaped(line), "\n"});
    }
  }
  return isExample ? page + ".fi\n" : page;
}

std::string Options(const CommandDescription& command) {
  std::string page;
  std::vector<std::string> groups;
  for (const OptionDescription& option : command.options) {
    if (std::ranges::find(groups, option.group) != groups.end()) {
      continue;
    }
    groups.push_back(option.group);
    page += Concat({".PP\n", Escaped(option.group), ":\n"});
    for (const OptionDescription& other : command.options) {
      if (other.group == option.group) {
        page += Entry(WrittenForm(other), other.help);
      }
    }
  }
  return page;
}

std::string Section(const CommandDescription& command) {
  std::string page =
      Heading(".SS", command.name.empty() ? "One label" : Concat({"mkbarcode ", command.name}));
  page += Concat({Escaped(command.purpose), "\n"});
  for (const ArgumentDescription& argument : command.arguments) {
    page += Entry(argument.name, argument.help);
  }
  page += Options(command);
  return command.notes.empty() ? page : Concat({page, ".PP\n", Notes(command.notes)});
}

}  // namespace

std::string ManualPage(const Commands& commands, const std::string& version) {
  std::string page = Concat({".TH MKBARCODE 1 \"\" \"", Escaped(version), "\" \"User Commands\"\n",
                             ".SH NAME\nmkbarcode \\- make barcode labels that scan\n.SH SYNOPSIS\n"});
  std::string_view separator;
  for (const CommandDescription& command : commands) {
    for (const std::string& usage : command.usage) {
      page += Concat({separator, ".B mkbarcode\n", Escaped(usage), "\n"});
      separator = ".br\n";
    }
  }
  page += ".SH COMMANDS\n";
  for (const CommandDescription& command : commands) {
    page += Section(command);
  }
  return page;
}

}  // namespace barcode::tool
