#include "mkbarcode/cli/suggestion.h"

#include <gtest/gtest.h>

#include <vector>

namespace barcode::tool {
namespace {

const std::vector<std::string> kWords = {"--module", "--module-mm", "--height", "--foreground",
                                         "qr",       "code128",     "code39"};

TEST(Suggestion, IsTheWordThatDiffersLeast) {
  EXPECT_EQ(Nearest("--modul", kWords), "--module");
  EXPECT_EQ(Nearest("--moduel", kWords), "--module");
  EXPECT_EQ(Nearest("--MODULE-M", kWords), "--module-mm");
  EXPECT_EQ(Nearest("--hieght", kWords), "--height");
  EXPECT_EQ(Nearest("code12", kWords), "code128");
  EXPECT_EQ(Nearest("qe", kWords), "qr");
}

TEST(Suggestion, IsTheOnlyWordThatBeginsSo) {
  EXPECT_EQ(Nearest("--fore", kWords), "--foreground");
  EXPECT_EQ(Nearest("--", kWords), std::nullopt);
}

TEST(Suggestion, IsNothingWhereNoWordIsNear) {
  EXPECT_EQ(Nearest("zebra", kWords), std::nullopt);
  EXPECT_EQ(Nearest("", kWords), std::nullopt);
  EXPECT_EQ(Nearest("--module", {}), std::nullopt);
}

TEST(Suggestion, EndsAMessage) {
  EXPECT_EQ(DidYouMean("code12", kWords), "; did you mean \"code128\"?");
  EXPECT_EQ(DidYouMean("zebra", kWords), ".");
}

}  // namespace
}  // namespace barcode::tool
