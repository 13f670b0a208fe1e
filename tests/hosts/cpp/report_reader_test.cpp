// The members of reports that barcode_label.hpp reads, compared with what another JSON library reads.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "barcode_label.hpp"

namespace barcode::test {
namespace {

using libbarcode::LabelError;
using libbarcode::LabelWarning;
using libbarcode::detail::read_error;
using libbarcode::detail::read_warnings;
using nlohmann::json;

std::string Parts(const LabelError& error) {
  return error.code() + '|' + error.field() + '|' + error.what();
}

std::string Parts(const std::vector<LabelWarning>& warnings) {
  std::string text;
  for (const LabelWarning& warning : warnings) {
    text += warning.code + '|' + warning.message + '\n';
  }
  return text;
}

TEST(ReportReader, ReadsWhatTheLibraryWrites) {
  const std::string_view report =
      R"({"ok":false,"error":{"code":"too_small","field":"width","message":"Say \"29\".","needed":)"
      R"({"width":29,"height":29}},"warnings":[{"code":"small_module","message":"Too small."}],"type":"qr"})";
  EXPECT_EQ(Parts(read_error(report)), R"(too_small|width|Say "29".)");
  EXPECT_EQ(Parts(read_warnings(report)), "small_module|Too small.\n");
}

TEST(ReportReader, TakesMembersInAnyOrderAmongOthers) {
  const std::string_view report = R"( {
    "code": "not this", "later": [1, -2.5e3, {"error": {"code": "nor this"}}, "]}\"", [[]], {}, null, true],
    "warnings" : [ {"hint": {"message": "no"}, "message": "m", "code": "c"}, {} ] ,
    "error": {"hint": {"code": "no", "field": ["no"]}, "message": "M", "field": "F", "code": "C", "x": 0}
  } )";
  EXPECT_EQ(Parts(read_error(report)), "C|F|M");
  EXPECT_EQ(Parts(read_warnings(report)), "c|m\n|\n");
}

TEST(ReportReader, ReadsEveryEscape) {
  const std::string_view report =
      R"({"\u0065rror":{"code":"\"\\\/\b\f\n\r\t","field":"\u00e9\u6f22\uD83D\uDE00A","message":)"
      R"("\ud83d|\ude00|\ud83d\u0041|\ud83d\ud83d\ude00"}})";
  const LabelError error = read_error(report);
  EXPECT_EQ(error.code(), "\"\\/\b\f\n\r\t");
  EXPECT_EQ(error.field(),
            "\xC3\xA9\xE6\xBC\xA2\xF0\x9F\x98\x80"
            "A");
  EXPECT_STREQ(error.what(),
               "\xEF\xBF\xBD|\xEF\xBF\xBD|\xEF\xBF\xBD"
               "A|\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(ReportReader, NeitherFailsNorHangsOnWhatIsNoReport) {
  for (const std::string_view report : {"",
                                        "{",
                                        "}",
                                        "[",
                                        "null",
                                        "\"",
                                        "{\"",
                                        "{\"error",
                                        "{\"error\"",
                                        "{\"error\":",
                                        "{\"error\":{",
                                        "{\"error\":[]}",
                                        "{\"error\":null}",
                                        "{\"error\":{\"code\":5}}",
                                        "{\"error\":{\"code\":\"\\",
                                        "{\"error\":{\"code\":\"\\u12",
                                        "{\"error\":{\"code\":\"\\u+123\"}}",
                                        "{\"error\":{\"code\":\"\\x\"}}",
                                        "{\"a\":}",
                                        "{\"a\":]}",
                                        "{\"a\":,}",
                                        "{,}",
                                        "{\"a\" 1}",
                                        "{\"a\":[}",
                                        "{\"a\":[[[",
                                        "{a:1}",
                                        "{\"a\":1\"error\":{\"code\":\"x\"}}"}) {
    EXPECT_EQ(Parts(read_error(report)), "||") << report;
    EXPECT_EQ(Parts(read_warnings(report)), "") << report;
  }
  // Depth costs no stack.
  const std::string deep =
      "{\"a\":" + std::string(5'000'000, '[') + std::string(5'000'000, ']') + R"(,"error":{"code":"C"}})";
  EXPECT_EQ(read_error(deep).code(), "C");
}

class RandomReport {
 public:
  explicit RandomReport(unsigned seed) : m_random(seed) {}

  json Value(int depth) {
    switch (Below(depth > 3 ? 5 : 7)) {
      case 0:
        return String();
      case 1:
        return static_cast<double>(Below(100'000)) / 7 - 5000;
      case 2:
        return Below(2) == 0;
      case 3:
        return nullptr;
      case 4:
        return Below(1'000'000);
      case 5: {
        json list = json::array();
        for (unsigned i = Below(4); i > 0; --i) {
          list.push_back(Value(depth + 1));
        }
        return list;
      }
      default: {
        json object = json::object();
        for (unsigned i = Below(4); i > 0; --i) {
          object[Name()] = Value(depth + 1);
        }
        return object;
      }
    }
  }

  json Report() {
    json report = json::object();
    for (unsigned i = Below(4); i > 0; --i) {
      report[String()] = Value(0);
    }
    report["error"] = {{"code", String()}, {"field", String()}, {"message", String()}, {"needed", Value(0)}};
    json warnings = json::array();
    for (unsigned i = Below(3); i > 0; --i) {
      warnings.push_back({{"code", String()}, {"message", String()}, {"z", Value(0)}});
    }
    report["warnings"] = warnings;
    return report;
  }

  std::string String() {
    static constexpr std::u32string_view kCharacters =
        U"ab{}[]:,\"\\/ \b\n\t\x01\x1F\x7F\u00E9\u6F22\U0001F600";
    std::string text;
    for (unsigned i = Below(8); i > 0; --i) {
      libbarcode::detail::append_utf8(text, kCharacters[Below(static_cast<unsigned>(kCharacters.size()))]);
    }
    return text;
  }

  unsigned Below(unsigned end) { return static_cast<unsigned>(m_random() % end); }

 private:
  std::string Name() { return Below(2) == 0 ? "code" : String(); }

  std::mt19937 m_random;
};

TEST(ReportReader, ReadsRandomReportsAsAnotherLibraryDoes) {
  RandomReport random(15);
  for (int i = 0; i < 3000; ++i) {
    const json report = random.Report();
    const json& wanted = report["error"];
    std::string warnings;
    for (const json& warning : report["warnings"]) {
      warnings += warning["code"].get<std::string>() + '|' + warning["message"].get<std::string>() + '\n';
    }
    for (const int indent : {-1, 0, 3}) {
      for (const bool onlyAscii : {false, true}) {
        const std::string text = report.dump(indent, ' ', onlyAscii);
        const LabelError error = read_error(text);
        EXPECT_EQ(error.code(), wanted["code"]) << text;
        EXPECT_EQ(error.field(), wanted["field"]) << text;
        EXPECT_EQ(error.what(), wanted["message"]) << text;
        EXPECT_EQ(Parts(read_warnings(text)), warnings) << text;
      }
    }
  }
}

// Bytes that were cut or changed: no crash and no read beyond the end, which the address sanitizer would see.
TEST(ReportReader, SurvivesBrokenReports) {
  RandomReport random(16);
  for (int i = 0; i < 3000; ++i) {
    std::string text = random.Report().dump();
    text.resize(random.Below(static_cast<unsigned>(text.size())));
    for (unsigned changes = random.Below(3); changes > 0 && !text.empty(); --changes) {
      text[random.Below(static_cast<unsigned>(text.size()))] = "{}[]\",:\\u0\xFF"[random.Below(11)];
    }
    // Without the zero byte that a std::string has behind its end.
    const std::vector<char> exact(text.begin(), text.end());
    const std::string_view view(exact.data(), exact.size());
    EXPECT_LE(read_error(view).code().size(), 3 * text.size());
    EXPECT_LE(read_warnings(view).size(), text.size());
  }
}

}  // namespace
}  // namespace barcode::test
