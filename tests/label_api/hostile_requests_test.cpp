// Whatever a request holds: a label comes back, its report is JSON, and a picture is there exactly when the
// report says so.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "label_api/made_label.h"
#include "label_api/valid_requests.h"

namespace barcode::test {
namespace {

using nlohmann::json;

// True when it was delivered.
bool IsHonest(std::string_view request) {
  const MadeLabel label(request);
  EXPECT_NE(label.Get(), nullptr);
  const json report = label.Report();
  EXPECT_EQ(report["ok"], label.Ok()) << request;
  EXPECT_EQ(label.Data().empty(), !label.Ok()) << request;
  EXPECT_EQ(label.MediaType().empty(), !label.Ok()) << request;
  EXPECT_EQ(report.contains("error"), !label.Ok()) << request;
  EXPECT_TRUE(report["warnings"].is_array());
  if (!label.Ok()) {
    EXPECT_TRUE(report["error"]["message"].get<std::string>().ends_with('.')) << label.ReportText();
  }
  return label.Ok();
}

TEST(HostileRequests, DepthWithoutEnd) {
  for (const char* const piece : {"[", "{\"text\":", "{\"a\":[", "[[", "{", "\""}) {
    std::string request;
    while (request.size() < 100'000) {
      request += piece;
    }
    EXPECT_FALSE(IsHonest(request));
    EXPECT_FALSE(IsHonest("{\"type\":\"qr\",\"text\":" + request));
  }
}

TEST(HostileRequests, LongTextsAndNames) {
  const std::string text(2'000'000, 'A');
  for (const json& type : json::parse(barcode_label_types())) {
    EXPECT_FALSE(IsHonest(json({{"type", type["name"]}, {"text", text}}).dump())) << type["name"];
  }
  EXPECT_FALSE(IsHonest(json({{"type", text}, {"text", "A"}}).dump()));
  EXPECT_FALSE(IsHonest("{\"" + text + "\":1}"));
  EXPECT_LT(MadeLabel(json({{"type", text}, {"text", "A"}})).ReportText().size(), 1000U);
  EXPECT_LT(MadeLabel(std::string_view("{\"" + text + "\":1}")).ReportText().size(), 1000U);
}

TEST(HostileRequests, LongCaptions) {
  const json request = {
      {"type", "qr"}, {"text", "A"}, {"caption", std::string(200'000, 'W')}, {"format", "svg"}};
  EXPECT_TRUE(IsHonest(request.dump()));
}

// The requests of all types, cut, with bytes changed, put in and left out.
TEST(HostileRequests, DamagedOnes) {
  std::mt19937 random(20);
  int delivered = 0;
  for (const json& request : ValidRequests()) {
    const std::string whole = request.dump();
    for (std::size_t length = 0; length < whole.size(); ++length) {
      EXPECT_FALSE(IsHonest(whole.substr(0, length)));
    }
    for (int i = 0; i < 400; ++i) {
      std::string damaged = whole;
      for (std::size_t changes = 1 + random() % 3; changes > 0; --changes) {
        const auto at = static_cast<std::ptrdiff_t>(random() % damaged.size());
        switch (random() % 3) {
          case 0:
            damaged[static_cast<std::size_t>(at)] = static_cast<char>(random());
            break;
          case 1:
            damaged.insert(damaged.begin() + at, "\"{}[],:0eE+-.\\u\x7F\xC3"[random() % 17]);
            break;
          default:
            damaged.erase(damaged.begin() + at);
        }
      }
      delivered += IsHonest(damaged) ? 1 : 0;
    }
  }
  EXPECT_GT(delivered, 100);
}

// Every option at its bounds, two at a time.
TEST(HostileRequests, OptionsAtTheirBounds) {
  int delivered = 0;
  for (const json& type : json::parse(barcode_label_types())) {
    const std::string name = type["name"];
    std::vector<std::pair<std::string, json>> settings;
    for (const json& option : type["options"]) {
      for (const json& value : {option.value("min", json()), option.value("max", json())}) {
        // Large pictures take their time, and are tried below.
        const bool isLarge = option["name"] == "width" || (option["name"] == "module" && value == 100);
        if (!value.is_null() && !isLarge) {
          settings.emplace_back(option["name"], value);
        }
      }
    }
    for (const auto& [first, firstValue] : settings) {
      for (const auto& [second, secondValue] : settings) {
        json request = {{"type", name}, {"text", TextFor(name)}, {"format", "svg"}, {"dpi", 300}};
        request[first] = firstValue;
        request[second] = secondValue;
        delivered += IsHonest(request.dump()) ? 1 : 0;
      }
    }
  }
  EXPECT_GT(delivered, 1000);
}

TEST(HostileRequests, LargePictures) {
  const auto outcome = [](const json& more) {
    json request = {{"type", "qr"}, {"text", "A"}};
    request.update(more);
    return MadeLabel(request).Outcome();
  };
  EXPECT_EQ(outcome({{"width", 100'000}, {"height", 10'000}}), "too_large of width");
  EXPECT_EQ(outcome({{"width", 10'000}, {"height", 10'000}}), "delivered");
  EXPECT_EQ(
      outcome({{"type", "pdf417"}, {"text", std::string(1000, 'A')}, {"module", 100}, {"y_height", 1000}}),
      "too_large of module");
  EXPECT_EQ(
      outcome({{"module", 100}, {"quiet_zone", 100}, {"qr_version", 40}, {"format", "pdf"}}).substr(0, 9),
      "too_large");
}

}  // namespace
}  // namespace barcode::test
