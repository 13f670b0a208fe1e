// The eight functions as a host calls them.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <set>
#include <string>

#include "label_api/made_label.h"
#include "label_api/valid_requests.h"
#include "support/capture.h"

namespace barcode::test {
namespace {

using nlohmann::json;

TEST(LabelFunctions, NullIsHarmless) {
  EXPECT_EQ(barcode_label_ok(nullptr), 0);
  std::size_t length = 17;
  EXPECT_EQ(barcode_label_data(nullptr, &length), nullptr);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(barcode_label_data(nullptr, nullptr), nullptr);
  EXPECT_STREQ(barcode_label_media_type(nullptr), "");
  EXPECT_STREQ(barcode_label_report(nullptr), "");
  barcode_label_free(nullptr);
}

TEST(LabelFunctions, ANullRequestIsAnEmptyOne) {
  for (const std::size_t length : {std::size_t{0}, std::size_t{1}, ~std::size_t{0}}) {
    BarcodeLabel* const label = barcode_label_make(nullptr, length);
    ASSERT_NE(label, nullptr);
    const json report = json::parse(barcode_label_report(label));
    EXPECT_EQ(report["error"]["code"], "bad_request");
    EXPECT_EQ(report["error"]["field"], "");
    barcode_label_free(label);
  }
  EXPECT_EQ(MadeLabel(std::string_view()).ReportText(), [] {
    BarcodeLabel* const label = barcode_label_make(nullptr, 0);
    std::string report = barcode_label_report(label);
    barcode_label_free(label);
    return report;
  }());
}

TEST(LabelFunctions, ARequestNeedsNoZeroAtItsEnd) {
  const std::string request = R"({"type":"qr","text":"A"}garbage)";
  const MadeLabel label(std::string_view(request).substr(0, request.find("garbage")));
  EXPECT_TRUE(label.Ok());
}

TEST(LabelFunctions, ADeliveredLabelHasPictureMediaTypeAndReport) {
  const MadeLabel label({{"type", "jan13"}, {"text", "490123456789"}});
  EXPECT_TRUE(label.Ok());
  EXPECT_EQ(label.MediaType(), "image/png");
  EXPECT_TRUE(label.Data().starts_with("\x89PNG\r\n\x1a\n"));
  EXPECT_NE(barcode_label_data(label.Get(), nullptr), nullptr);
  const json report = label.Report();
  EXPECT_EQ(report["ok"], true);
  EXPECT_EQ(report["type"], "jan13");
  EXPECT_EQ(report["text"], "4901234567894");
  EXPECT_EQ(report["bytes"], label.Data().size());
  EXPECT_EQ(report["modules"], json::parse(R"({"columns": 95, "rows": 1})"));
  EXPECT_EQ(report["quiet_zone"], json::parse(R"({"left": 11, "right": 7, "top": 0, "bottom": 0})"));
}

TEST(LabelFunctions, ARefusedLabelHasAReportAlone) {
  const MadeLabel label({{"type", "jan13"}, {"text", "4901234567890"}});
  EXPECT_FALSE(label.Ok());
  EXPECT_EQ(label.MediaType(), "");
  std::size_t length = 17;
  EXPECT_EQ(barcode_label_data(label.Get(), &length), nullptr);
  EXPECT_EQ(length, 0);
  const json report = label.Report();
  EXPECT_EQ(report["ok"], false);
  EXPECT_EQ(report["error"]["code"], "bad_text");
  EXPECT_EQ(report["error"]["field"], "text");
  EXPECT_EQ(report["type"], "jan13");
  EXPECT_EQ(report["warnings"], json::array());
  EXPECT_FALSE(report.contains("bytes"));
}

TEST(LabelFunctions, EveryTypeAndFormIsDeliveredInEveryFormat) {
  const std::pair<const char*, const char*> kBeginnings[] = {
      {"image/png", "\x89PNG\r\n\x1a\n"}, {"image/svg+xml", "<"}, {"application/pdf", "%PDF-"}};
  const std::vector<json> requests = ValidRequests();
  EXPECT_EQ(requests.size(), 19U + 6U);
  for (json request : requests) {
    std::set<std::pair<int, int>> sizes;
    for (std::size_t i = 0; i < std::size(kFormats); ++i) {
      request["format"] = kFormats[i];
      const MadeLabel label(request);
      ASSERT_EQ(label.Outcome(), "delivered") << request << label.ReportText();
      EXPECT_EQ(label.MediaType(), kBeginnings[i].first);
      EXPECT_TRUE(label.Data().starts_with(kBeginnings[i].second)) << request;
      const json report = label.Report();
      EXPECT_EQ(report["format"], kFormats[i]);
      EXPECT_EQ(report["bytes"], label.Data().size());
      sizes.insert({report["width"].get<int>(), report["height"].get<int>()});
    }
    EXPECT_EQ(sizes.size(), 1U) << request;
  }
}

// With dots of 1/300 inch.
TEST(LabelFunctions, PhysicalSizesAreReported) {
  const json report = MadeLabel({{"type", "qr"}, {"text", "A"}, {"dpi", 300}, {"module_mm", 0.5}}).Report();
  EXPECT_EQ(report["module"], 6);
  EXPECT_EQ(report["width"], 29 * 6);
  EXPECT_EQ(report["width_mm"], 14.732);
  EXPECT_EQ(report["height_mm"], 14.732);
}

TEST(LabelFunctions, AWarningIsAnErrorWhenItIsAskedFor) {
  json request = {{"type", "qr"}, {"text", "A"}, {"quiet_zone", 1}, {"foreground", "#eee"}};
  const json report = MadeLabel(request).Report();
  ASSERT_EQ(report["warnings"].size(), 2U);
  EXPECT_EQ(report["warnings"][0]["code"], "quiet_zone");
  EXPECT_EQ(report["warnings"][1]["code"], "low_contrast");
  request["strict"] = true;
  const MadeLabel strict(request);
  EXPECT_EQ(strict.Outcome(), "quiet_zone of ");
  EXPECT_EQ(strict.Report()["error"]["message"], report["warnings"][0]["message"]);
  EXPECT_TRUE(strict.Data().empty());
  request = {{"type", "qr"}, {"text", "A"}, {"strict", true}};
  EXPECT_EQ(MadeLabel(request).Outcome(), "delivered");
}

TEST(LabelFunctions, EveryWarningIsToldOnce) {
  const json report = MadeLabel({{"type", "gs1-128"},
                                 {"text", "(8020)ABC"},
                                 {"caption", "\xE6\x97\xA5"},
                                 {"foreground", "#eee"},
                                 {"quiet_zone", 1}})
                          .Report();
  std::vector<std::string> codes;
  for (const json& warning : report["warnings"]) {
    codes.push_back(warning["code"]);
  }
  EXPECT_EQ(codes,
            (std::vector<std::string>{"quiet_zone", "low_contrast", "gs1_association", "missing_glyph"}));
}

TEST(LabelFunctions, ABoxThatIsTooSmallIsToldWithOneThatWouldDo) {
  json request = {{"type", "code128"}, {"text", "ABC"}, {"width", 20}, {"height", 20}};
  const json needed = MadeLabel(request).Report()["error"]["needed"];
  request["width"] = needed["width"];
  request["height"] = needed["height"];
  EXPECT_EQ(MadeLabel(request).Outcome(), "delivered");
  request["width"] = needed["width"].get<int>() - 1;
  EXPECT_EQ(MadeLabel(request).Outcome(), "too_small of width");
}

TEST(LabelFunctions, TheTypesAreConstant) {
  const char* const types = barcode_label_types();
  EXPECT_EQ(barcode_label_types(), types);
  EXPECT_EQ(json::parse(types).size(), 19U);
}

TEST(LabelFunctions, TheVersionIsThatOfTheHeader) {
  EXPECT_STREQ(barcode_label_version(), BARCODE_LABEL_VERSION_STRING);
  const std::string version = std::to_string(BARCODE_LABEL_VERSION_MAJOR) + "." +
                              std::to_string(BARCODE_LABEL_VERSION_MINOR) + "." +
                              std::to_string(BARCODE_LABEL_VERSION_PATCH);
  EXPECT_EQ(version, BARCODE_LABEL_VERSION_STRING);
  EXPECT_TRUE(BARCODE_LABEL_VERSION_AT_LEAST(1, 0, 0));
  EXPECT_FALSE(BARCODE_LABEL_VERSION_AT_LEAST(BARCODE_LABEL_VERSION_MAJOR + 1, 0, 0));
}

TEST(LabelFunctions, NothingIsWrittenToTheStreams) {
  const Captured captured = Capture([] {
    for (json request : ValidRequests()) {
      for (const char* const format : kFormats) {
        request["format"] = format;
        const MadeLabel label(request);
      }
      request["text"] = std::string(10'000, '\x01');
      const MadeLabel refused(request);
    }
    const MadeLabel large({{"type", "qr"}, {"text", "A"}, {"width", 100'000}, {"height", 10'000}});
    const MadeLabel bad(std::string_view("{"));
    barcode_label_types();
  });
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(captured.err, "");
}

// In a locale with a decimal comma.
TEST(LabelFunctions, NumbersFollowNoLocale) {
  std::vector<json> requests = ValidRequests();
  std::vector<std::string> results;
  const auto make = [&](const json& request) {
    const MadeLabel label(request);
    EXPECT_EQ(label.Outcome(), "delivered");
    return std::string(label.Data()) + std::string(label.ReportText());
  };
  for (json& request : requests) {
    request.update(
        {{"dpi", 300}, {"module_mm", 0.35}, {"format", "svg"}, {"caption", "A"}, {"text_scale", 1.25}});
    results.push_back(make(request));
    request["format"] = "pdf";
    results.push_back(make(request));
  }
  ASSERT_EQ(setenv("LOCPATH", TEST_LOCALE_PATH, 1), 0);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
  ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  std::size_t i = 0;
  for (json& request : requests) {
    request["format"] = "svg";
    EXPECT_EQ(make(request), results[i++]);
    request["format"] = "pdf";
    EXPECT_EQ(make(request), results[i++]);
  }
  std::setlocale(LC_ALL, "C");
  unsetenv("LOCPATH");
}

}  // namespace
}  // namespace barcode::test
