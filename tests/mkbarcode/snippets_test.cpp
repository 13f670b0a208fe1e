// That the code does what it says is tested where a shell, compilers and interpreters run it: tests/gallery.
#include "mkbarcode/gallery/snippets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace barcode::tool {
namespace {

using testing::HasSubstr;

std::string CodeOf(const std::vector<Snippet>& snippets, Language language) {
  for (const Snippet& snippet : snippets) {
    if (snippet.language == language) {
      return snippet.code;
    }
  }
  return "";
}

std::string LabelCode(const std::string& request, Language language) {
  return CodeOf(LabelSnippets(nlohmann::ordered_json::parse(request), "x.svg"), language);
}

TEST(LabelSnippets, WriteFieldsAsOptions) {
  EXPECT_EQ(
      LabelCode(R"({"type": "code39", "text": "A B", "show_text": false, "strict": true, "text_gap": 1.5,
                          "foreground": "#12305c", "format": "svg"})",
                Language::kShell),
      "mkbarcode code39 'A B' --no-show-text --strict --text-gap 1.5 --foreground '#12305c' -o x.svg\n");
  EXPECT_EQ(LabelCode(R"({"type": "nw7", "text": "-1", "format": "svg"})", Language::kShell),
            "mkbarcode nw7 -o x.svg -- -1\n");
  EXPECT_EQ(LabelCode(R"({"type": "qr", "text_base64": "AP8=", "format": "svg"})", Language::kShell),
            "echo AP8= | base64 -d | mkbarcode qr --input - --keep-newline -o x.svg\n");
}

TEST(LabelSnippets, WriteValuesOfTheLanguage) {
  const std::string request =
      R"({"type": "qr", "text": "a\"b", "show_text": false, "module": 3, "format": "svg"})";
  EXPECT_THAT(
      LabelCode(request, Language::kPython),
      HasSubstr(R"(libbarcode.label("qr", "a\"b", show_text=False, module=3, format="svg").save("x.svg"))"));
  EXPECT_THAT(
      LabelCode(request, Language::kNode),
      HasSubstr(R"(label({ type: "qr", text: "a\"b", show_text: false, module: 3, format: "svg" });)"));
  EXPECT_THAT(LabelCode(request, Language::kC), HasSubstr(R"(\"text\": \"a\\\"b\", \"show_text\": false)"));
}

TEST(LibrarySnippets, CallTheFunctions) {
  DrawRequest request;
  request.type = &TypeOf(BARCODE_CODE39);
  request.text = "A\xC3\x84";
  request.size = {300, 100, false};
  request.settings = {MakeSetting(OptionId::kTextGap, "2"),
                      MakeSetting(OptionId::kForegroundColor, "#010203")};
  const std::vector<Snippet> snippets = LibrarySnippets(request, "x.png");
  EXPECT_THAT(CodeOf(snippets, Language::kShell),
              HasSubstr("--text-gap 2 --foreground-color '#010203' -o x.png\n"));
  const std::string python = CodeOf(snippets, Language::kPython);
  EXPECT_THAT(python, HasSubstr("lib.barcode_set_text_gap(h, ctypes.c_double(2.0))\n"));
  EXPECT_THAT(python, HasSubstr("lib.barcode_set_foreground_color(h, 1, 2, 3, 255)\n"));
  EXPECT_THAT(python, HasSubstr("lib.barcode_draw_1d(h, \"A\xC3\x84\".encode(), 300, 100)\n"));
  EXPECT_THAT(CodeOf(snippets, Language::kNode), HasSubstr("execSync(\"mkbarcode "));
  EXPECT_THAT(CodeOf(snippets, Language::kC), HasSubstr("  barcode_set_text_gap(h, 2);\n"));
}

}  // namespace
}  // namespace barcode::tool
