#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"
#include "support/capture.h"

namespace barcode::test {
namespace {

constexpr int kModule = 3;

// Pixels of a box that the symbol of the text fits with modules of that size at least. Small pictures are
// read faster.
int BoxFor(const std::string& text) {
  return (text.size() <= 45 ? 40 : 144) * kModule;
}

struct Options {
  const char* size = "AUTO";
  const char* scheme = "AUTO";
  const char* encoding = "utf-8";
  int width = 0;  // of the box; 0: large enough for the text
  int height = 0;
};

// What ZXing reads of the symbol that the shared library draws, at a few pixels a module. ZBar does not read
// Data Matrix.
std::optional<Reading> ReadBack(const std::string& text, const Options& options) {
  const int width = options.width > 0 ? options.width : BoxFor(text);
  const int height = options.height > 0 ? options.height : BoxFor(text);
  std::optional<GreyImage> image;
  (void)Capture([&] {
    image = DrawnSymbol(BARCODE_DATAMATRIX, kModule, [&](BarcodeHandle handle) {
      barcode_set_code_size(handle, options.size);
      barcode_set_encode_scheme(handle, options.scheme);
      barcode_set_string_encoding(handle, options.encoding);
      return barcode_draw_2d_rect(handle, text.c_str(), width, height);
    });
  });
  return image ? ReadWithZxing(*image, "DataMatrix") : std::nullopt;
}

Reading Expected(const std::string& text) {
  return {"DataMatrix", text};
}

struct Scheme {
  const char* keyword;
  std::string alphabet;
};

std::vector<Scheme> Schemes() {
  std::string printable;
  std::string edifact;
  for (char c = 1; c < 127; ++c) {
    printable.push_back(c);
    if (c >= 32 && c <= 94) {
      edifact.push_back(c);
    }
  }
  const std::string upper = " 0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  return {{"ASCII", printable + "01234567890123456789"},
          {"C40", printable + upper + upper},
          {"TEXT", printable + "abcdefghijklmnopqrstuvwxyz"},
          {"X12", "\r*>" + upper},
          {"EDIFACT", edifact},
          {"BASE256", printable},
          {"AUTO", printable + upper + "0123456789"}};
}

class DataMatrixRoundTrip : public ::testing::TestWithParam<std::size_t> {};

TEST_P(DataMatrixRoundTrip, EverySchemeReadsBack) {
  const Scheme scheme = Schemes()[GetParam()];
  RandomText random(GetParam());
  for (int i = 0; i < 150; ++i) {
    const std::string text = random.Of(scheme.alphabet, 1, i % 10 == 0 ? 300 : 40);
    ASSERT_EQ(ReadBack(text, {.scheme = scheme.keyword}), Expected(text)) << scheme.keyword << ' ' << text;
  }
}

INSTANTIATE_TEST_SUITE_P(Schemes, DataMatrixRoundTrip, ::testing::Range<std::size_t>(0, 7));

TEST(DataMatrixRoundTripSizes, EverySizeReadsBack) {
  struct Size {
    std::string keyword;
    int capacity;  // data codewords
  };
  const Size sizes[] = {
      {"10x10", 3},     {"12x12", 5},      {"14x14", 8},      {"16x16", 12},     {"18x18", 18},
      {"20x20", 22},    {"22x22", 30},     {"24x24", 36},     {"26x26", 44},     {"32x32", 62},
      {"36x36", 86},    {"40x40", 114},    {"44x44", 144},    {"48x48", 174},    {"52x52", 204},
      {"64x64", 280},   {"72x72", 368},    {"80x80", 456},    {"88x88", 576},    {"96x96", 696},
      {"104x104", 816}, {"120x120", 1050}, {"132x132", 1304}, {"144x144", 1558}, {"8x18", 5},
      {"8x32", 10},     {"12x26", 16},     {"12x36", 22},     {"16x36", 32},     {"16x48", 49}};
  RandomText random(30);
  for (const Size& size : sizes) {
    const int rows = std::stoi(size.keyword);
    const int columns = std::stoi(size.keyword.substr(size.keyword.find('x') + 1));
    for (const int length : {1, size.capacity - 1, size.capacity}) {
      const std::string text = random.Of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefgh", length, length);
      EXPECT_EQ(
          ReadBack(text,
                   {.size = size.keyword.c_str(), .width = columns * kModule, .height = rows * kModule}),
          Expected(text))
          << size.keyword;
    }
  }
}

// Bytes that are no UTF-8 pass unchanged when the target is Shift-JIS.
TEST(DataMatrixRoundTripBytes, ReadBack) {
  RandomText random(256);
  for (int i = 0; i < 200; ++i) {
    std::string bytes = random.Bytes(0, i % 10 == 0 ? 400 : 30, 1);
    bytes.push_back('\xFF');
    for (const char* const scheme : {"AUTO", "ASCII", "C40", "TEXT", "BASE256"}) {
      ASSERT_EQ(ReadBack(bytes, {.scheme = scheme, .encoding = "shift-jis"}), Expected(bytes)) << scheme;
    }
  }
}

TEST(DataMatrixRoundTripBytes, LongestField) {
  const std::string bytes(1556, '\xFF');
  EXPECT_EQ(ReadBack(bytes, {.encoding = "shift-jis"}), Expected(bytes));
}

TEST(DataMatrixRoundTripEncoding, FollowsTheStringEncoding) {
  const std::string utf8 = "\xE3\x81\x82";
  const std::string shiftJis = "\x82\xA0";
  EXPECT_EQ(ReadBack(utf8, {}), Expected(utf8));
  EXPECT_EQ(ReadBack(shiftJis, {}), Expected(utf8));
  EXPECT_EQ(ReadBack(utf8, {.encoding = "shift-jis"}), Expected(shiftJis));
}

}  // namespace
}  // namespace barcode::test
