// Makes one label and writes it to a file.
//
//     label TYPE TEXT FILE [FIELD=VALUE...]        label qr "Grüße" label.svg caption=Grüße module=6
//
// TYPE is a name that libbarcode::label_types lists, FILE ends in .png, .svg or .pdf, FIELD is one of
// docs/labels.md. A VALUE that reads as a number, true or false is one, unless it stands in quotes. Exit
// status: 0 written, 1 refused or not written, 2 wrong usage.
#include <barcode_label.hpp>
#include <charconv>
#include <cmath>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using libbarcode::Label;
using libbarcode::LabelError;
using libbarcode::LabelRequest;

void SetField(LabelRequest& request, std::string_view field, std::string_view value) {
  double number = 0;
  const char* const end = value.data() + value.size();
  const std::from_chars_result result = std::from_chars(value.data(), end, number);
  if (result.ec == std::errc() && result.ptr == end && std::isfinite(number)) {
    request.set(field, number);
  } else if (value == "true" || value == "false") {
    request.set(field, value == "true");
  } else if (value.size() > 1 && value.front() == '"' && value.back() == '"') {
    request.set(field, value.substr(1, value.size() - 2));
  } else {
    request.set(field, value);
  }
}

int MakeLabel(const std::vector<std::string>& arguments) {
  LabelRequest request(arguments[0], arguments[1]);
  const std::string& path = arguments[2];
  const std::size_t suffix = path.rfind('.');
  request.set("format", suffix == std::string::npos ? "png" : path.substr(suffix + 1));
  for (std::size_t i = 3; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    const std::size_t sign = argument.find('=');
    if (sign == std::string_view::npos) {
      std::cerr << "label: " << argument << " is not FIELD=VALUE\n";
      return 2;
    }
    SetField(request, argument.substr(0, sign), argument.substr(sign + 1));
  }
  const Label label(request);
  for (const libbarcode::LabelWarning& warning : label.warnings()) {
    std::cerr << "label: warning " << warning.code << ": " << warning.message << '\n';
  }
  label.save(path);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    if (argc < 4) {
      std::cerr << "Usage: label TYPE TEXT FILE [FIELD=VALUE...]\n";
      return 2;
    }
    return MakeLabel({argv + 1, argv + argc});
  } catch (const LabelError& error) {
    std::cerr << "label: " << error.code() << ' ' << error.field() << ": " << error.what() << '\n';
  } catch (const std::exception& error) {
    std::cerr << "label: " << error.what() << '\n';
  }
  return 1;
}
