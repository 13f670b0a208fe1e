#include "label/fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "label/json_request.h"
#include "label/json_schema.h"
#include "label/refusal.h"

namespace barcode::label {
namespace {

using nlohmann::json;

const json& Types() {
  static const json types = json::parse(TypesJson());
  return types;
}

const json& Schema() {
  static const json schema = json::parse(RequestSchema());
  return schema;
}

void Validate(const json& request) {
  ValidateRequest(ParseRequest(request.dump()));
}

std::string Refusal(const json& request) {
  return RefusalOf([&] { Validate(request); });
}

std::string CodeAndField(const json& request) {
  return CodeAndFieldOf([&] { Validate(request); });
}

// The option of that name of any type that has it.
std::vector<json> AllOptions() {
  std::vector<json> options;
  for (const json& type : Types()) {
    for (const json& option : type["options"]) {
      const bool isKnown = std::any_of(options.begin(), options.end(),
                                       [&](const json& known) { return known["name"] == option["name"]; });
      if (!isKnown) {
        options.push_back(option);
      }
    }
  }
  return options;
}

const json* OptionOf(const json& type, const std::string& name) {
  for (const json& option : type["options"]) {
    if (option["name"] == name) {
      return &option;
    }
  }
  return nullptr;
}

class Generator {
 public:
  explicit Generator(unsigned seed) : m_engine(seed) {}

  int Below(int bound) { return std::uniform_int_distribution(0, bound - 1)(m_engine); }

  // A value that the option takes, from what the list of types says.
  json ValueOf(const json& option) {
    const std::string kind = option["kind"];
    if (kind == "boolean") {
      return Below(2) == 0;
    }
    if (kind == "string") {
      return std::vector<json>{"", "a", "\xC3\xA9", "x\n"}[static_cast<std::size_t>(Below(4))];
    }
    if (kind == "color" && (!option.contains("values") || Below(4) != 0)) {
      return std::vector<json>{"#123", "#aBcDeF", "#12345678"}[static_cast<std::size_t>(Below(3))];
    }
    if (option.contains("values") && (!option.contains("min") || Below(4) == 0)) {
      return option["values"][static_cast<std::size_t>(Below(static_cast<int>(option["values"].size())))];
    }
    const double low = option["min"];
    const double high = option["max"];
    if (kind == "number") {
      return Below(8) == 0 ? low : Below(8) == 0 ? high : std::uniform_real_distribution(low, high)(m_engine);
    }
    return std::uniform_int_distribution(static_cast<int>(low), static_cast<int>(high))(m_engine);
  }

  // A value that few options take.
  json Anything() {
    static const std::vector<json> values = {
        true, "", "x", "AUTO", "#12", "#ggg", "standard", "stacked",     "row",          "payment",       -1,
        0,    1,  2.5, 90,     91,    1e9,    1e300,      json::array(), json::object(), json::array({1})};
    return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
  }

  // A request of the type, most of them valid ones with few options.
  json Request(const json& type) {
    json request;
    const std::size_t alias = static_cast<std::size_t>(Below(static_cast<int>(type["aliases"].size()) + 1));
    request["type"] = alias == type["aliases"].size() ? type["name"] : type["aliases"][alias];
    const int text = Below(20);
    if (text != 0) {
      request[text < 15 ? "text" : "text_base64"] = "QUJD";
    }
    if (text == 1) {
      request["text_base64"] = Below(2) == 0 ? json("QQ==") : json("QQ=");
    }
    const int count = Below(5);
    static const std::vector<json> foreign = AllOptions();
    for (int i = 0; i < count; ++i) {
      const bool isForeign = Below(20) == 0;
      const auto& options = isForeign ? foreign : type["options"].get_ref<const json::array_t&>();
      const json& option = options[static_cast<std::size_t>(Below(static_cast<int>(options.size())))];
      request[option["name"].get<std::string>()] = Below(16) == 0 ? Anything() : ValueOf(option);
    }
    if (Below(40) == 0) {
      request["colour"] = 1;
    }
    return request;
  }

 private:
  std::mt19937 m_engine;
};

TEST(LabelFields, TheListOfTypesHasTheNineteen) {
  ASSERT_EQ(Types().size(), kTypeCount);
  for (std::size_t i = 0; i < kTypeCount; ++i) {
    const json& type = Types()[i];
    const TypeInfo& info = AllTypes()[i];
    EXPECT_EQ(type["name"], info.name);
    EXPECT_EQ(type["title"], info.title);
    EXPECT_EQ(type["number"], static_cast<int>(i));
    EXPECT_EQ(type["two_dimensional"], info.twoDimensional);
    EXPECT_EQ(type["readers"]["zxing"], info.readers.zxing);
    EXPECT_EQ(type["readers"]["zbar"], info.readers.zbar);
    EXPECT_EQ(type["readers"]["zxing_wasm"], info.readers.zxingWasm);
    std::string aliases;
    for (const json& alias : type["aliases"]) {
      aliases += (aliases.empty() ? "" : " ") + alias.get<std::string>();
    }
    EXPECT_EQ(aliases, info.aliases);
  }
}

TEST(LabelFields, OptionsOfATypeAsTheyAreListed) {
  const json& expanded = Types()[static_cast<std::size_t>(Type::kDataBarExpanded)];
  EXPECT_EQ(*OptionOf(expanded, "module"), json::parse(R"({"name": "module", "kind": "integer", "min": 1,
                                                           "max": 100, "default": 2})"));
  EXPECT_EQ(*OptionOf(expanded, "form"), json::parse(R"({"name": "form", "kind": "keyword",
                                                         "values": ["row", "stacked"], "default": "row"})"));
  EXPECT_EQ(*OptionOf(expanded, "quiet_zone"),
            json::parse(R"({"name": "quiet_zone", "kind": "quiet_zone", "values": ["standard"], "min": 0,
                            "max": 100, "default": "standard"})"));
  EXPECT_EQ(*OptionOf(expanded, "rotate"), json::parse(R"({"name": "rotate", "kind": "integer",
                                                           "values": [0, 90, 180, 270], "default": 0})"));
  EXPECT_EQ(*OptionOf(expanded, "background"),
            json::parse(R"({"name": "background", "kind": "color", "values": ["transparent"],
                            "default": "#ffffff"})"));
  EXPECT_EQ(*OptionOf(expanded, "caption"), json::parse(R"({"name": "caption", "kind": "string"})"));
  EXPECT_EQ(*OptionOf(expanded, "strict"),
            json::parse(R"({"name": "strict", "kind": "boolean", "default": false})"));
  EXPECT_EQ(*OptionOf(expanded, "text_scale"), json::parse(R"({"name": "text_scale", "kind": "number",
                                                               "min": 0.25, "max": 8, "default": 1})"));
  const json& qr = Types()[static_cast<std::size_t>(Type::kQr)];
  EXPECT_EQ((*OptionOf(qr, "module"))["default"], 4);
  const json& gs1 = Types()[static_cast<std::size_t>(Type::kGs1_128)];
  EXPECT_EQ(*OptionOf(gs1, "form"),
            json::parse(R"({"name": "form", "kind": "keyword", "values": ["payment"]})"));
}

TEST(LabelFields, TypesTakeTheirOptionsAndNoOthers) {
  const auto takers = [](const std::string& name) {
    std::string names;
    for (const json& type : Types()) {
      if (OptionOf(type, name) != nullptr) {
        names += (names.empty() ? "" : " ") + type["name"].get<std::string>();
      }
    }
    return names;
  };
  const std::string bars =
      "code39 code93 code128 gs1-128 nw7 matrix2of5 nec2of5 jan8 jan13 upca upce itf databar databar-limited "
      "databar-expanded";
  for (const char* const name : {"show_text", "even_spacing", "height_mm"}) {
    EXPECT_EQ(takers(name), bars) << name;
  }
  for (const char* const name :
       {"format", "module", "height", "width", "dpi", "module_mm", "quiet_zone", "rotate", "foreground",
        "background", "caption", "text_scale", "text_gap", "bar_adjust", "strict"}) {
    EXPECT_EQ(takers(name), bars + " yubin qr datamatrix pdf417") << name;
  }
  EXPECT_EQ(takers("form"), "gs1-128 databar databar-expanded");
  EXPECT_EQ(takers("show_start_stop"), "code39 nw7");
  EXPECT_EQ(takers("extended_guard"), "jan8 jan13 upca upce");
  EXPECT_EQ(takers("code_mode"), "code128");
  EXPECT_EQ(takers("string_encoding"), "qr datamatrix pdf417");
  for (const char* const name : {"qr_version", "error_correction_level", "encode_mode"}) {
    EXPECT_EQ(takers(name), "qr") << name;
  }
  EXPECT_EQ(takers("code_size") + takers("encode_scheme"), "datamatrixdatamatrix");
  EXPECT_EQ(takers("aspect_ratio") + takers("y_height"), "pdf417pdf417");
  EXPECT_EQ(takers("pairs_per_row"), "databar-expanded");
  for (const char* const name : {"type", "text", "text_base64"}) {
    EXPECT_EQ(takers(name), "") << name;
  }
}

// A request that needs what stands beside an option.
json RequestWith(const json& type, const std::string& name, const json& value) {
  json request = {{"type", type["name"]}, {"text", "A"}, {name, value}};
  const bool isFixed = OptionOf(type, "height_mm") == nullptr;
  if (name == "width" || (name == "height" && isFixed)) {
    request[name == "width" ? "height" : "width"] = 100;
  }
  if (name.ends_with("_mm")) {
    request["dpi"] = 300;
  }
  if (name == "pairs_per_row") {
    request["form"] = "stacked";
  }
  return request;
}

TEST(LabelFields, EveryValueThatIsListedIsAcceptedAndEveryOtherRefused) {
  for (const json& type : Types()) {
    for (const json& option : type["options"]) {
      const std::string name = option["name"];
      const auto request = [&](const json& value) { return RequestWith(type, name, value); };
      const std::string refused = "bad_value of " + name;
      if (option.contains("default")) {
        EXPECT_EQ(Refusal(request(option["default"])), "not refused");
      }
      for (const json& value : option.value("values", json::array())) {
        EXPECT_EQ(Refusal(request(value)), "not refused");
      }
      if (option.contains("min")) {
        EXPECT_EQ(Refusal(request(option["min"])), "not refused");
        EXPECT_EQ(Refusal(request(option["max"])), "not refused");
        const double step = option["kind"] == "number" ? 0.001 : 1;
        EXPECT_EQ(CodeAndField(request(option["min"].get<double>() - step)), refused);
        EXPECT_EQ(CodeAndField(request(option["max"].get<double>() + step)), refused);
        EXPECT_EQ(CodeAndField(request(1e300)), refused);
      }
      if (option["kind"] != "number") {
        EXPECT_EQ(CodeAndField(request(1.5)), refused);
      }
      if (option["kind"] != "string") {
        EXPECT_EQ(CodeAndField(request("what no field takes")), refused);
        EXPECT_EQ(CodeAndField(request("")), refused);
      }
      if (option["kind"] != "boolean") {
        EXPECT_EQ(CodeAndField(request(true)), refused);
      }
      EXPECT_EQ(CodeAndField(request(json::array())), refused);
      EXPECT_EQ(CodeAndField(request(json::object())), refused);
    }
  }
}

TEST(LabelFields, AnOptionOfAnotherTypeIsAnUnknownField) {
  Generator random(1);
  for (const json& type : Types()) {
    for (const json& option : AllOptions()) {
      const std::string name = option["name"];
      if (OptionOf(type, name) == nullptr) {
        const json request = {{"type", type["name"]}, {"text", "A"}, {name, random.ValueOf(option)}};
        EXPECT_EQ(CodeAndField(request), "unknown_field of " + name);
      }
    }
  }
}

// The schema and the validation are two readings of one table: whatever the request, they agree.
TEST(LabelFields, TheSchemaAcceptsWhatIsAccepted) {
  Generator random(2020);
  int accepted = 0;
  int refused = 0;
  for (const json& type : Types()) {
    for (int i = 0; i < 1500; ++i) {
      const json request = random.Request(type);
      const std::string refusal = Refusal(request);
      const bool isAccepted = refusal == "not refused";
      ASSERT_EQ(test::IsValid(Schema(), request), isAccepted) << request << '\n' << refusal;
      ++(isAccepted ? accepted : refused);
    }
  }
  EXPECT_GT(accepted, 8000);
  EXPECT_GT(refused, 4000);
}

TEST(LabelFields, TheSchemaHasEveryOptionAndEveryName) {
  const json& properties = Schema()["properties"];
  EXPECT_EQ(Schema()["$schema"], "https://json-schema.org/draft/2020-12/schema");
  for (const json& option : AllOptions()) {
    EXPECT_TRUE(properties.contains(option["name"])) << option["name"];
  }
  EXPECT_EQ(properties.size(), AllOptions().size() + 3);
  const json& names = properties["type"]["enum"];
  for (const json& type : Types()) {
    EXPECT_NE(std::find(names.begin(), names.end(), type["name"]), names.end());
    for (const json& alias : type["aliases"]) {
      EXPECT_NE(std::find(names.begin(), names.end(), alias), names.end());
    }
  }
  for (const auto& [name, property] : properties.items()) {
    EXPECT_TRUE(property["description"].get<std::string>().ends_with('.')) << name;
  }
}

TEST(LabelFields, WhatGoesTogetherAndWhatDoesNot) {
  const auto refusal = [](const std::string& members) {
    return Refusal(json::parse(R"({"type": "code39", "text": "A")" + members + "}"));
  };
  EXPECT_EQ(refusal(""), "not refused");
  EXPECT_EQ(
      refusal(R"(, "text_base64": "QQ==")"),
      "bad_value of text_base64: The field \"text_base64\" must not stand beside \"text\"; leave one of them "
      "out.");
  EXPECT_EQ(refusal(R"(, "width": 300)"),
            "bad_value of width: The field \"width\" needs the field \"height\" beside it.");
  EXPECT_EQ(refusal(R"(, "width": 300, "height": 100)"), "not refused");
  EXPECT_EQ(refusal(R"(, "width": 300, "height": 100, "dpi": 300)"), "not refused");
  EXPECT_EQ(refusal(R"(, "height": 100)"), "not refused");
  EXPECT_EQ(
      refusal(R"(, "width": 300, "height": 100, "module": 2)"),
      "bad_value of module: The field \"module\" must not stand beside \"width\"; leave one of them out.");
  EXPECT_EQ(refusal(R"(, "width": 300, "height": 100, "dpi": 300, "module_mm": 0.3)").substr(0, 22),
            "bad_value of module_mm");
  EXPECT_EQ(refusal(R"(, "width": 300, "height": 100, "dpi": 300, "height_mm": 9)").substr(0, 22),
            "bad_value of height_mm");
  EXPECT_EQ(refusal(R"(, "module": 2, "dpi": 300, "module_mm": 0.3)").substr(0, 22),
            "bad_value of module_mm");
  EXPECT_EQ(refusal(R"(, "height": 20, "dpi": 300, "height_mm": 3)").substr(0, 22), "bad_value of height_mm");
  EXPECT_EQ(refusal(R"(, "module_mm": 0.3)"),
            "bad_value of module_mm: The field \"module_mm\" needs the field \"dpi\" beside it.");
  EXPECT_EQ(refusal(R"(, "height_mm": 3)"),
            "bad_value of height_mm: The field \"height_mm\" needs the field \"dpi\" beside it.");
  EXPECT_EQ(refusal(R"(, "dpi": 300, "module_mm": 0.3, "height_mm": 9)"), "not refused");
}

TEST(LabelFields, TypesWithoutAHeightOfTheirOwnWantTheWidthToo) {
  for (const char* const type : {"yubin", "qr", "datamatrix", "pdf417"}) {
    json request = {{"type", type}, {"text", "1"}, {"height", 100}};
    EXPECT_EQ(Refusal(request),
              "bad_value of height: The field \"height\" needs the field \"width\" beside it; give both: a "
              "symbol of " +
                  std::string(type) + " has no height of its own.");
    request["width"] = 100;
    EXPECT_EQ(Refusal(request), "not refused");
  }
}

TEST(LabelFields, FormsBelongToTheirTypes) {
  const auto refusal = [](const char* type, const char* form) {
    return Refusal({{"type", type}, {"text", "A"}, {"form", form}});
  };
  EXPECT_EQ(refusal("gs1-128", "payment"), "not refused");
  EXPECT_EQ(refusal("gs1-128", "stacked"),
            "bad_value of form: The field \"form\" must be \"payment\" for gs1-128.");
  EXPECT_EQ(refusal("databar", "stacked-omnidirectional"), "not refused");
  EXPECT_EQ(refusal("databar", "row"),
            "bad_value of form: The field \"form\" must be \"omnidirectional\", \"stacked\" or "
            "\"stacked-omnidirectional\" for databar.");
  EXPECT_EQ(refusal("databar-expanded", "stacked"), "not refused");
  EXPECT_EQ(refusal("databar-expanded", "payment"),
            "bad_value of form: The field \"form\" must be \"row\" or \"stacked\" for databar-expanded.");
  EXPECT_EQ(refusal("databar-limited", "stacked").substr(0, 21), "unknown_field of form");
}

TEST(LabelFields, PairsPerRowBelongToTheStackedForm) {
  const json request = {{"type", "databar-expanded"}, {"text", "A"}, {"pairs_per_row", 3}};
  const std::string refusal =
      "unknown_field of pairs_per_row: The field \"pairs_per_row\" belongs to the form \"stacked\"; ask for "
      "that "
      "form, or leave the field out.";
  EXPECT_EQ(Refusal(request), refusal);
  json row = request;
  row["form"] = "row";
  EXPECT_EQ(Refusal(row), refusal);
  json stacked = request;
  stacked["form"] = "stacked";
  EXPECT_EQ(Refusal(stacked), "not refused");
}

TEST(LabelFields, MessagesNameTheFieldAndWhatIsAllowed) {
  const auto refusal = [](const char* type, const char* name, const json& value) {
    return Refusal({{"type", type}, {"text", "A"}, {name, value}});
  };
  EXPECT_EQ(refusal("code39", "module", 101),
            "bad_value of module: The field \"module\" must be a whole number from 1 to 100.");
  EXPECT_EQ(refusal("code39", "width", 0),
            "bad_value of width: The field \"width\" must be a whole number from 1 to 100000.");
  EXPECT_EQ(refusal("code39", "text_scale", 9),
            "bad_value of text_scale: The field \"text_scale\" must be a number from 0.25 to 8.");
  EXPECT_EQ(refusal("code39", "show_text", 1),
            "bad_value of show_text: The field \"show_text\" must be true or false.");
  EXPECT_EQ(refusal("code39", "format", "gif"),
            "bad_value of format: The field \"format\" must be \"png\", \"svg\" or \"pdf\".");
  EXPECT_EQ(refusal("code39", "rotate", 45),
            "bad_value of rotate: The field \"rotate\" must be 0, 90, 180 or 270.");
  EXPECT_EQ(refusal("code39", "quiet_zone", -1),
            "bad_value of quiet_zone: The field \"quiet_zone\" must be \"standard\" or a whole number from 0 "
            "to 100.");
  EXPECT_EQ(refusal("code39", "foreground", "transparent"),
            "bad_value of foreground: The field \"foreground\" must be a colour: \"#rgb\", \"#rrggbb\" or "
            "\"#rrggbbaa\".");
  EXPECT_EQ(refusal("code39", "background", "#12"),
            "bad_value of background: The field \"background\" must be a colour: \"#rgb\", \"#rrggbb\", "
            "\"#rrggbbaa\" or \"transparent\".");
  EXPECT_EQ(refusal("code39", "caption", 5),
            "bad_value of caption: The field \"caption\" must be a string in UTF-8.");
  EXPECT_EQ(
      refusal("code39", "qr_version", 5),
      "unknown_field of qr_version: The field \"qr_version\" is none of code39; leave it out. It belongs to "
      "qr.");
  EXPECT_EQ(Refusal({{"text", "A"}}),
            "bad_value of type: The field \"type\" is missing; it names the symbology.");
  EXPECT_EQ(Refusal({{"type", "qr"}}),
            "bad_value of text: The field \"text\" is missing; give it, or \"text_base64\".");
  EXPECT_EQ(
      Refusal({{"type", "code40"}, {"text", "A"}}),
      "unknown_type of type: There is no type \"code40\"; barcode_label_types() lists the names of all.");
}

// ---- Requests that were no JSON ----

Request Valid() {
  Request request;
  request.type = "databar-expanded";
  request.text = "A";
  return request;
}

TEST(LabelFields, RequestsThatWereBuiltInMemoryAreHeldToTheSameRules) {
  const auto refusal = [](const Request& request) {
    return CodeAndFieldOf([&] { ValidateRequest(request); });
  };
  EXPECT_EQ(refusal(Valid()), "not refused");
  EXPECT_EQ(&ValidateRequest(Valid()), &InfoOf(Type::kDataBarExpanded));
  EXPECT_EQ(refusal({}), "bad_value of type");

  Request request = Valid();
  request.module = 0;
  EXPECT_EQ(refusal(request), "bad_value of module");
  request = Valid();
  request.textScale = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(refusal(request), "bad_value of text_scale");
  request.textScale = std::numeric_limits<double>::infinity();
  EXPECT_EQ(refusal(request), "bad_value of text_scale");
  request = Valid();
  request.form = Form::kPayment;
  EXPECT_EQ(refusal(request), "bad_value of form");
  request = Valid();
  request.caption = "\xFF";
  EXPECT_EQ(refusal(request), "bad_value of caption");
  request = Valid();
  request.text = "\xE3\x81";
  EXPECT_EQ(refusal(request), "bad_value of text");
  request.text.reset();
  request.textBytes = "\xE3\x81";
  EXPECT_EQ(refusal(request), "not refused");
  request = Valid();
  request.type = "qr";
  request.errorCorrectionLevel = "h";  // words are kept as the table writes them
  EXPECT_EQ(refusal(request), "bad_value of error_correction_level");
  request.errorCorrectionLevel = "H";
  EXPECT_EQ(refusal(request), "not refused");
}

}  // namespace
}  // namespace barcode::label
