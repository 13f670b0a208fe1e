#include "mkbarcode/gallery/label_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "label/fields.h"
#include "label/label.h"

namespace barcode::tool {
namespace {

using nlohmann::json;

json RequestOf(const LabelSample& sample) {
  return json::parse(RequestText(sample, "png"));
}

TEST(LabelSamples, AreInTheOrderOfTheTypesAndAllDifferent) {
  const std::vector<LabelSample> samples = LabelSamples();
  EXPECT_TRUE(
      std::is_sorted(samples.begin(), samples.end(), [](const LabelSample& left, const LabelSample& right) {
        return left.type->number < right.type->number;
      }));
  std::set<json> requests;
  for (const LabelSample& sample : samples) {
    EXPECT_NE(sample.caption, "");
    EXPECT_TRUE(requests.insert(RequestOf(sample)).second) << sample.caption;
  }
}

// The label library's own list of types, forms and fields is the measure.
TEST(LabelSamples, ShowEveryTypeEveryFormAndEveryField) {
  std::map<std::string, int> delivered;
  std::map<std::string, std::set<std::string>> forms;
  std::set<std::string> fields;
  for (const LabelSample& sample : LabelSamples()) {
    if (sample.isRefused) {
      continue;
    }
    const json request = RequestOf(sample);
    ++delivered[request["type"]];
    forms[request["type"]].insert(request.value("form", ""));
    for (const auto& [name, value] : request.items()) {
      fields.insert(name);
    }
  }
  EXPECT_TRUE(fields.contains("text_base64"));
  std::size_t formsShown = 0;
  const json types = json::parse(label::TypesJson());
  for (const json& type : types) {
    EXPECT_GE(delivered[type["name"]], 2) << type["name"];
    for (const json& option : type["options"]) {
      const std::string name = option["name"];
      EXPECT_TRUE(fields.contains(name) || name == "strict") << name;
      if (name != "form") {
        continue;
      }
      for (const json& form : option["values"]) {
        const bool isPlain = form == option.value("default", "");
        EXPECT_TRUE(forms[type["name"]].contains(isPlain ? "" : form.get<std::string>()))
            << type["name"] << ' ' << form;
        ++formsShown;
      }
    }
  }
  EXPECT_EQ(formsShown, 6U);
}

TEST(LabelSamples, ComeOutAsTheySay) {
  std::set<std::string> errors;
  std::set<std::string> warnings;
  for (const LabelSample& sample : LabelSamples()) {
    const json report = json::parse(label::MakeFromJson(RequestText(sample, "png")).report);
    EXPECT_EQ(report["ok"], !sample.isRefused) << sample.caption << ": " << report;
    EXPECT_EQ(sample.caption.starts_with("Refused: "), sample.isRefused) << sample.caption;
    for (const json& warning : report["warnings"]) {
      warnings.insert(warning["code"]);
    }
    if (sample.isRefused) {
      errors.insert(report["error"]["code"]);
    }
  }
  EXPECT_EQ(warnings, (std::set<std::string>{"gs1_association", "light_on_dark", "missing_glyph", "no_reader",
                                             "quiet_zone", "small_module", "text_left_out", "text_shrunk"}));
  EXPECT_EQ(errors, (std::set<std::string>{"bad_text", "low_contrast", "text_left_out", "too_long",
                                           "too_small", "unknown_field"}));
}

}  // namespace
}  // namespace barcode::tool
