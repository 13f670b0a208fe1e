#include "label_proof/content.h"

#include <gtest/gtest.h>

#include <set>

#include "label_proof/gs1_content.h"
#include "label_proof/look.h"

namespace barcode::test {
namespace {

TEST(LabelProofContent, CheckDigitsOfPublishedNumbers) {
  EXPECT_EQ(Gs1CheckDigit("490123456789"), '4');
  EXPECT_EQ(Gs1CheckDigit("4901234"), '7');
  EXPECT_EQ(Gs1CheckDigit("01234567890"), '5');
  EXPECT_EQ(Gs1CheckDigit("2001234567890"), '9');
}

// One code for each rule of zero suppression.
TEST(LabelProofContent, UpcECodesStandForUpcACodes) {
  EXPECT_EQ(UpcAOfUpcE("01234505"), "012000003455");
  EXPECT_EQ(UpcAOfUpcE("01234525"), "012200003453");
  EXPECT_EQ(UpcAOfUpcE("01234535"), "012300000451");
  EXPECT_EQ(UpcAOfUpcE("01234545"), "012340000053");
  EXPECT_EQ(UpcAOfUpcE("01234565"), "012345000065");
  EXPECT_EQ(UpcAOfUpcE("16543215"), "165100004324");
}

TEST(LabelProofContent, EveryKindOfContentIsSeenOfEachSymbology) {
  for (const SymbologyInfo& info : EverySymbologyInfo()) {
    RandomText random(static_cast<std::uint64_t>(info.symbology));
    std::set<std::string> texts;
    std::set<std::string> options;
    for (int i = 0; i < 500; ++i) {
      const Content content = RandomContent(info.symbology, random);
      EXPECT_FALSE(content.text.empty()) << info.name;
      EXPECT_FALSE(content.data.empty()) << info.name;
      texts.insert(content.text);
      for (const auto& [option, value] : content.options.items()) {
        options.insert(option);
      }
    }
    // A few symbologies have texts of one digit among theirs.
    EXPECT_GT(texts.size(), 400U) << info.name;
    if (info.family == Family::kMatrix) {
      EXPECT_GE(options.size(), 3U) << info.name;
    }
  }
}

TEST(LabelProofContent, ElementStringsKeepTheirSeparators) {
  RandomText random(1);
  for (int i = 0; i < 2000; ++i) {
    const Gs1Content content = RandomGs1(random, 46);
    EXPECT_LE(content.data.size(), 46U) << content.elements;
    EXPECT_NE(content.data.back(), '\x1D') << content.elements;
    EXPECT_EQ(content.elements.front(), '(');
  }
}

TEST(LabelProofContent, TheSameSeedIsTheSameLabel) {
  for (const SymbologyInfo& info : EverySymbologyInfo()) {
    RandomText random(7);
    RandomText again(7);
    const Content content = RandomContent(info.symbology, random);
    const Content contentAgain = RandomContent(info.symbology, again);
    EXPECT_EQ(RequestOf(info.name, content, RandomLook(info, content, random)),
              RequestOf(info.name, contentAgain, RandomLook(info, contentAgain, again)));
  }
}

TEST(LabelProofContent, Base64OfEveryLength) {
  EXPECT_EQ(Base64(""), "");
  EXPECT_EQ(Base64("f"), "Zg==");
  EXPECT_EQ(Base64("fo"), "Zm8=");
  EXPECT_EQ(Base64("foo"), "Zm9v");
  EXPECT_EQ(Base64("\xFF\xFE"), "//4=");
}

}  // namespace
}  // namespace barcode::test
