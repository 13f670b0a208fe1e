#include "mkbarcode/gallery/snippets.h"

#include <algorithm>
#include <type_traits>
#include <variant>

#include "mkbarcode/gallery/json_text.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using nlohmann::ordered_json;

// The suffix of the file says the format, the first words what is encoded.
bool IsOption(std::string_view field) {
  return field != "type" && field != "text" && field != "text_base64" && field != "format";
}

std::string OptionText(std::string_view field, const ordered_json& value) {
  std::string name(field);
  std::replace(name.begin(), name.end(), '_', '-');
  if (value.is_boolean()) {
    return Concat({value.get<bool>() ? " --" : " --no-", name});
  }
  const std::string word = value.is_string() ? value.get<std::string>() : value.dump();
  return Concat({" --", name, " ", ShellQuoted(word)});
}

std::string LabelShell(const ordered_json& request, std::string_view file) {
  std::string options;
  for (const auto& [field, value] : request.items()) {
    if (IsOption(field)) {
      options += OptionText(field, value);
    }
  }
  options += Concat({" -o ", ShellQuoted(file)});
  const std::string command = Concat({"mkbarcode ", request["type"].get<std::string>()});
  if (request.contains("text_base64")) {
    return Concat({"echo ", ShellQuoted(request["text_base64"].get<std::string>()), " | base64 -d | ",
                   command, " --input - --keep-newline", options});
  }
  const auto text = request["text"].get<std::string>();
  return text.starts_with('-') ? Concat({command, options, " -- ", ShellQuoted(text)})
                               : Concat({command, " ", ShellQuoted(text), options});
}

std::string PythonValue(const ordered_json& value) {
  if (value.is_boolean()) {
    return value.get<bool>() ? "True" : "False";
  }
  return value.dump();  // JSON's strings and numbers are Python's too
}

std::string LabelPython(const ordered_json& request, std::string_view file) {
  std::string arguments = PythonValue(request["type"]);
  if (request.contains("text")) {
    arguments += Concat({", ", PythonValue(request["text"])});
  }
  for (const auto& [field, value] : request.items()) {
    if (field != "type" && field != "text") {
      arguments += Concat({", ", field, "=", PythonValue(value)});
    }
  }
  return Concat(
      {"import libbarcode\n\nlibbarcode.label(", arguments, ").save(", ordered_json(file).dump(), ")\n"});
}

// An object literal; the fields are identifiers.
std::string NodeObject(const ordered_json& request) {
  std::string members;
  for (const auto& [field, value] : request.items()) {
    members += Concat({members.empty() ? " " : ", ", field, ": ", value.dump()});
  }
  return Concat({"{", members, " }"});
}

std::string LabelNode(const ordered_json& request, std::string_view file) {
  return Concat(
      {"import { writeFileSync } from \"node:fs\";\nimport { label } from \"libbarcode\";\n\n"
       "const { data } = label(",
       NodeObject(request), ");\nwriteFileSync(", ordered_json(file).dump(), ", data);\n"});
}

std::string LabelC(const ordered_json& request, std::string_view file) {
  return Concat({R"(#include <barcode_label.h>
#include <stdio.h>
#include <string.h>

int main(void) {
  const char* request = )",
                 CLiteral(SpacedJson(request)), R"(;
  BarcodeLabel* label = barcode_label_make(request, strlen(request));
  if (!barcode_label_ok(label)) {
    fprintf(stderr, "%s\n", barcode_label_report(label));
    return 1;
  }
  size_t length = 0;
  const unsigned char* data = barcode_label_data(label, &length);
  FILE* file = fopen()",
                 CLiteral(file), R"(, "wb");
  fwrite(data, 1, length, file);
  barcode_label_free(label);
  return fclose(file);
}
)"});
}

std::string PythonBytes(std::string_view text) {
  const std::string literal = ordered_json(text).dump();
  const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; });
  return isAscii ? Concat({"b", literal}) : Concat({literal, ".encode()"});
}

// The arguments of a call as it stands in C, ctypes' way: texts are bytes, and real numbers have their type.
std::string PythonArguments(const Setting& setting) {
  if (const auto* const real = std::get_if<double>(&setting.value)) {
    return Concat({"ctypes.c_double(", ordered_json(*real).dump(), ")"});
  }
  if (const auto* const number = std::get_if<int>(&setting.value)) {
    return std::to_string(*number);
  }
  if (const auto* const word = std::get_if<std::string_view>(&setting.value)) {
    return PythonBytes(*word);
  }
  const auto& color = std::get<Color>(setting.value);
  return Concat({std::to_string(color.red), ", ", std::to_string(color.green), ", ",
                 std::to_string(color.blue), ", ", std::to_string(color.alpha)});
}

std::string LibraryPython(const DrawRequest& request, std::string_view file) {
  std::string code = Concat({R"(import ctypes

lib = ctypes.CDLL("libbarcode.so.1")
lib.barcode_create.restype = ctypes.c_void_p
lib.barcode_get_image_data.restype = ctypes.c_void_p
h = ctypes.c_void_p(lib.barcode_create()",
                             std::to_string(static_cast<int>(request.type->number)), "))  # ",
                             request.type->constant, "\n"});
  for (const Setting& setting : request.settings) {
    code += Concat({"lib.", OptionOf(setting.option).SetterName(), "(h, ", PythonArguments(setting), ")\n"});
  }
  const DrawFunction& draw = ChooseDrawFunction(request);
  const bool hasBox = std::holds_alternative<BoxDraw>(draw);
  code += Concat({"lib.", NameOf(draw), "(h, ", PythonBytes(request.text), ", ",
                  hasBox ? Concat({std::to_string(request.size.width), ", "}) : std::string(),
                  std::to_string(request.size.height), R"()
length = ctypes.c_int()
png = lib.barcode_get_image_data(h, ctypes.byref(length))
with open()",
                  ordered_json(file).dump(), R"(, "wb") as file:
    file.write(ctypes.string_at(png, length.value))
lib.barcode_destroy(h)
)"});
  return code;
}

std::string LibraryNode(const DrawRequest& request, std::string_view file) {
  return Concat({"import { execSync } from \"node:child_process\";\n\nexecSync(",
                 ordered_json(CommandText(request, file)).dump(), ");\n"});
}

std::string LibraryC(const DrawRequest& request, std::string_view file) {
  constexpr std::string_view kLast = "barcode_destroy(h);\n";
  std::string calls = CallsText(request);
  calls.insert(calls.size() - kLast.size(), Concat({"FILE* file = fopen(", CLiteral(file), R"(, "wb");
fwrite(png, 1, (size_t)length, file);
)"}));
  std::string body;
  for (std::size_t begin = 0; begin < calls.size();) {
    const std::size_t end = calls.find('\n', begin) + 1;
    body += Concat({"  ", std::string_view(calls).substr(begin, end - begin)});
    begin = end;
  }
  return Concat({"#include <barcode.h>\n#include <stdio.h>\n\nint main(void) {\n", body,
                 "  return fclose(file);\n}\n"});
}

}  // namespace

std::vector<Snippet> LabelSnippets(const ordered_json& request, std::string_view file) {
  return {{Language::kShell, Concat({LabelShell(request, file), "\n"})},
          {Language::kPython, LabelPython(request, file)},
          {Language::kNode, LabelNode(request, file)},
          {Language::kC, LabelC(request, file)}};
}

std::vector<Snippet> LibrarySnippets(const DrawRequest& request, std::string_view file) {
  return {{Language::kShell, Concat({CommandText(request, file), "\n"})},
          {Language::kPython, LibraryPython(request, file)},
          {Language::kNode, LibraryNode(request, file)},
          {Language::kC, LibraryC(request, file)}};
}

std::string_view TitleOf(Language language) {
  switch (language) {
    case Language::kShell:
      return "Shell";
    case Language::kPython:
      return "Python";
    case Language::kNode:
      return "Node";
    case Language::kC:
      return "C";
  }
  return "";
}

std::string_view WordOf(Language language) {
  switch (language) {
    case Language::kShell:
      return "shell";
    case Language::kPython:
      return "python";
    case Language::kNode:
      return "node";
    case Language::kC:
      return "c";
  }
  return "";
}

}  // namespace barcode::tool
