#include "label/composition.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <variant>

#include "label/font.h"

namespace barcode::label {
namespace {

TypeInfo LinearType() {
  TypeInfo type{};
  type.type = Type::kCode128;
  type.quietZone = {10, 10, 0, 0};
  type.defaultModule = 2;
  return type;
}

TypeInfo RetailType() {
  TypeInfo type{};
  type.type = Type::kJan13;
  type.quietZone = {11, 7, 0, 0};
  type.defaultModule = 2;
  type.standardHeight = 69.24;
  return type;
}

TypeInfo MatrixType() {
  TypeInfo type{};
  type.type = Type::kQr;
  type.twoDimensional = true;
  type.quietZone = {4, 4, 4, 4};
  type.defaultModule = 4;
  return type;
}

// Twelve modules: a bar of two, a space of three, and so on.
Symbol LinearOf(const std::string& text) {
  return {LinearSymbol{{2, 3, 1, 3, 3}, nullptr}, text, {text}, {}};
}

// The shape of an EAN-13 symbol: 59 runs of 95 modules.
Symbol RetailSymbol() {
  RunVector pattern = {1, 1, 1};
  const auto addDigits = [&] {
    for (int digit = 0; digit < 6; ++digit) {
      pattern.insert(pattern.end(), {3, 2, 1, 1});
    }
  };
  addDigits();
  pattern.insert(pattern.end(), {1, 1, 1, 1, 1});
  addDigits();
  pattern.insert(pattern.end(), {1, 1, 1});
  return {LinearSymbol{pattern, &kJan13Style}, "4901234567894", {"4901234567894"}, {}};
}

Symbol MatrixOf(int columns, int rows, int rowHeight) {
  ModuleMatrix matrix(columns, rows);
  for (int x = 0; x < columns; ++x) {
    for (int y = 0; y < rows; ++y) {
      matrix.Set(x, y, (x + y) % 2 == 0);
    }
  }
  return {MatrixSymbol{matrix, rowHeight}, "text", {}, {}};
}

Symbol StackedOf(std::vector<StackedRow> rows, int defaultHeight) {
  return {StackedSymbol{std::move(rows), defaultHeight}, "(01)", {}, {}};
}

Symbol PostalSymbol() {
  FourStateBars bars;
  bars.bars.assign(67, FourState::kTiming);
  bars.bars[1] = FourState::kLong;
  bars.bars[2] = FourState::kUpperSemiLong;
  bars.bars[3] = FourState::kLowerSemiLong;
  return {bars, "1234567", {}, {}};
}

TypeInfo PostalType() {
  TypeInfo type{};
  type.type = Type::kYubinCustomer;
  type.quietZone = {4, 4, 4, 4};
  type.defaultModule = 2;
  return type;
}

// Everything dark or written lies in the picture.
void ExpectInside(const Drawing& drawing) {
  for (const DotRect& rect : drawing.dark) {
    EXPECT_GE(rect.x, 0);
    EXPECT_GE(rect.y, 0);
    EXPECT_GE(rect.width, 1);
    EXPECT_GE(rect.height, 1);
    EXPECT_LE(rect.x + rect.width, drawing.width);
    EXPECT_LE(rect.y + rect.height, drawing.height);
  }
  const Font font;
  for (const PlacedText& text : drawing.texts) {
    for (const PlacedGlyph& glyph : text.glyphs) {
      const double advance = font.Advance(glyph.glyph) * text.size / kUnitsPerEm;
      const bool across = text.rotation == Rotation::kQuarter || text.rotation == Rotation::kThreeQuarters;
      const bool backwards = text.rotation == Rotation::kHalf || text.rotation == Rotation::kThreeQuarters;
      const double from = across ? glyph.y : glyph.x;
      const double to = backwards ? from - advance : from + advance;
      EXPECT_GE(std::min(from, to), 0.0);
      EXPECT_LE(std::max(from, to), across ? drawing.height : drawing.width);
    }
  }
}

bool Has(const Composition& composition, ErrorCode code) {
  return std::any_of(composition.warnings.begin(), composition.warnings.end(),
                     [code](const Warning& warning) { return warning.code == code; });
}

LabelError Refusal(const TypeInfo& type, const Request& request, const Symbol& symbol,
                   long long most = kMaxPixels) {
  try {
    Compose(type, request, symbol, most);
  } catch (const LabelError& error) {
    return error;
  }
  ADD_FAILURE() << "was not refused";
  return {ErrorCode::kBadRequest, "", ""};
}

Request WithoutText() {
  Request request;
  request.showText = false;
  return request;
}

TEST(Composition, NaturalSizeIsWholeModulesWithQuietZones) {
  const Composition label = Compose(LinearType(), WithoutText(), LinearOf("AB"));
  EXPECT_EQ(label.drawing.width, (10 + 12 + 10) * 2);
  EXPECT_EQ(label.drawing.height, 60);
  EXPECT_EQ(label.module, 2);
  EXPECT_EQ(label.columns, 12);
  EXPECT_EQ(label.rows, 1);
  EXPECT_EQ(label.quietZone, (QuietZone{10, 10, 0, 0}));
  EXPECT_EQ(label.displayText, "");
  EXPECT_TRUE(label.warnings.empty());
  EXPECT_EQ(label.drawing.dark, (std::vector<DotRect>{{20, 0, 4, 60}, {30, 0, 2, 60}, {38, 0, 6, 60}}));
}

TEST(Composition, WideSymbolsAreHigher) {
  Symbol symbol = LinearOf("AB");
  std::get<LinearSymbol>(symbol.modules).pattern = RunVector(399, 1);
  const Composition label = Compose(LinearType(), WithoutText(), symbol);
  EXPECT_EQ(label.drawing.height, 120);  // 15% of 798, rounded
}

TEST(Composition, TextStandsBelowTheBarsAndNeverWidens) {
  const Composition label = Compose(LinearType(), {}, LinearOf("AB"));
  EXPECT_EQ(label.drawing.width, 64);
  EXPECT_GT(label.drawing.height, 60 + 12);
  EXPECT_EQ(label.displayText, "AB");
  ASSERT_EQ(label.drawing.texts.size(), 1U);
  EXPECT_EQ(label.drawing.texts[0].size, 12);
  for (const PlacedGlyph& glyph : label.drawing.texts[0].glyphs) {
    EXPECT_GT(glyph.y, 60 + 6);
    EXPECT_LT(glyph.y, label.drawing.height);
  }
  EXPECT_TRUE(label.warnings.empty());
  ExpectInside(label.drawing);
}

TEST(Composition, LongTextShrinksThenIsLeftOut) {
  const Composition shrunk = Compose(LinearType(), {}, LinearOf("ABCDEFGHIJ"));
  EXPECT_TRUE(Has(shrunk, ErrorCode::kTextShrunk));
  ASSERT_EQ(shrunk.drawing.texts.size(), 1U);
  EXPECT_LT(shrunk.drawing.texts[0].size, 12);
  EXPECT_GE(shrunk.drawing.texts[0].size, 6);
  EXPECT_EQ(shrunk.drawing.width, 64);
  ExpectInside(shrunk.drawing);

  const Composition leftOut = Compose(LinearType(), {}, LinearOf(std::string(100, 'W')));
  EXPECT_TRUE(Has(leftOut, ErrorCode::kTextLeftOut));
  EXPECT_FALSE(Has(leftOut, ErrorCode::kTextShrunk));
  EXPECT_TRUE(leftOut.drawing.texts.empty());
  EXPECT_EQ(leftOut.displayText, "");
  EXPECT_EQ(leftOut.drawing.height, 60);
}

TEST(Composition, CharactersWithoutGlyphAreBoxesAndTold) {
  Request request;
  request.caption = "\xE6\x97\xA5";
  const Composition label = Compose(LinearType(), request, LinearOf("AB"));
  ASSERT_EQ(label.warnings.size(), 1U);
  EXPECT_EQ(label.warnings[0].code, ErrorCode::kMissingGlyph);
  EXPECT_NE(label.warnings[0].message.find("U+65E5"), std::string::npos);
  ASSERT_EQ(label.drawing.texts.size(), 1U);
  EXPECT_EQ(label.drawing.texts[0].glyphs.at(0).glyph, kPlaceholderGlyph);
  EXPECT_EQ(label.displayText, *request.caption);
}

TEST(Composition, CaptionReplacesTheText) {
  Request request;
  request.caption = "OK";
  EXPECT_EQ(Compose(LinearType(), request, LinearOf("AB")).displayText, "OK");
  EXPECT_EQ(Compose(MatrixType(), request, MatrixOf(21, 21, 1)).displayText, "OK");
  request.caption = "";
  EXPECT_TRUE(Compose(LinearType(), request, LinearOf("AB")).drawing.texts.empty());
  request.caption = "OK";
  request.showText = false;
  EXPECT_TRUE(Compose(LinearType(), request, LinearOf("AB")).drawing.texts.empty());
}

TEST(Composition, EvenSpacingSpreadsTheCharacters) {
  Symbol symbol = LinearOf("AB");
  std::get<LinearSymbol>(symbol.modules).pattern = RunVector(99, 1);
  Request request;
  const double spread = Compose(LinearType(), request, symbol).drawing.texts[0].glyphs[1].x;
  request.evenSpacing = false;
  const Composition together = Compose(LinearType(), request, symbol);
  EXPECT_GT(spread, together.drawing.texts[0].glyphs[1].x + 50);
  const auto& glyphs = together.drawing.texts[0].glyphs;
  EXPECT_NEAR((glyphs[0].x + glyphs[1].x) / 2, 20 + 99 - 3, 3.0);
}

TEST(Composition, HeightBelowFiveModulesIsRefusedWithTheSizeThatWouldDo) {
  Request request = WithoutText();
  request.height = 9;
  const LabelError error = Refusal(LinearType(), request, LinearOf("AB"));
  EXPECT_EQ(error.Code(), ErrorCode::kTooSmall);
  EXPECT_EQ(error.Field(), "height");
  EXPECT_EQ(error.Needed(), (Size{64, 10}));
  request.height = 10;
  EXPECT_EQ(Compose(LinearType(), request, LinearOf("AB")).drawing.height, 10);
}

TEST(Composition, MillimetresBecomeWholeDots) {
  Request request = WithoutText();
  request.dpi = 300;
  request.moduleMm = 0.33;  // 3.9 dots
  request.heightMm = 10.0;  // 118.1
  const Composition label = Compose(LinearType(), request, LinearOf("AB"));
  EXPECT_EQ(label.module, 4);
  EXPECT_EQ(label.drawing.height, 118);
  EXPECT_EQ(label.drawing.dpi, 300);
  request.moduleMm = 0.001;
  EXPECT_EQ(Compose(LinearType(), request, LinearOf("AB")).module, 1);
}

TEST(Composition, BoxIsFilledWithTheLargestModuleInTheMiddle) {
  Request request = WithoutText();
  request.width = 100;
  request.height = 50;
  const Composition label = Compose(LinearType(), request, LinearOf("AB"));
  EXPECT_EQ(label.drawing.width, 100);
  EXPECT_EQ(label.drawing.height, 50);
  EXPECT_EQ(label.module, 3);  // 32 modules
  EXPECT_EQ(label.drawing.dark.front(), (DotRect{2 + 30, 0, 6, 50}));

  request.width = 150;
  request.height = 117;
  request.showText = std::nullopt;
  const Composition matrix = Compose(MatrixType(), request, MatrixOf(21, 21, 1));
  EXPECT_EQ(matrix.module, 4);  // 29 modules of 117 dots
  EXPECT_EQ(matrix.drawing.dark.front(), (DotRect{(150 - 116) / 2 + 16, 16, 4, 4}));
}

TEST(Composition, BoxOfATurnedPictureIsTheBoxAfterTheTurn) {
  Request request = WithoutText();
  request.width = 50;
  request.height = 100;
  request.rotate = Rotation::kQuarter;
  const Composition label = Compose(LinearType(), request, LinearOf("AB"));
  EXPECT_EQ(label.drawing.width, 50);
  EXPECT_EQ(label.drawing.height, 100);
  EXPECT_EQ(label.module, 3);
}

TEST(Composition, BoxTooSmallNamesTheSizeThatWouldDoAndItDoes) {
  for (const Rotation rotation : {Rotation::kNone, Rotation::kQuarter}) {
    for (const bool text : {false, true}) {
      Request request;
      request.showText = text;
      request.rotate = rotation;
      request.width = 31;
      request.height = 4;
      const LabelError error = Refusal(LinearType(), request, LinearOf("AB"));
      EXPECT_EQ(error.Code(), ErrorCode::kTooSmall);
      ASSERT_TRUE(error.Needed());
      request.width = error.Needed()->width;
      request.height = error.Needed()->height;
      const Composition label = Compose(LinearType(), request, LinearOf("AB"));
      EXPECT_EQ(label.module, 1);
      EXPECT_FALSE(Has(label, ErrorCode::kTextLeftOut));
      ExpectInside(label.drawing);
    }
  }
}

TEST(Composition, LowBoxSetsTheTextSmaller) {
  Request request;
  request.width = 300;
  request.height = 15;
  const Composition label = Compose(LinearType(), request, LinearOf("AB"));
  EXPECT_TRUE(Has(label, ErrorCode::kTextShrunk));
  EXPECT_EQ(label.drawing.texts.at(0).size, 7);
  EXPECT_GE(label.drawing.dark.front().height, 5);
  request.height = 6;
  EXPECT_TRUE(Has(Compose(LinearType(), request, LinearOf("AB")), ErrorCode::kTextLeftOut));
}

TEST(Composition, TextGivesWayToTheModuleInABoxButUnderStrictTheModuleDoes) {
  Request request;
  request.caption = "Hello";
  request.width = 300;
  request.height = 300;
  const Composition label = Compose(MatrixType(), request, MatrixOf(21, 21, 1));
  EXPECT_EQ(label.module, 10);  // 29 modules
  EXPECT_TRUE(Has(label, ErrorCode::kTextShrunk));
  ExpectInside(label.drawing);
  request.strict = true;
  const Composition strict = Compose(MatrixType(), request, MatrixOf(21, 21, 1));
  EXPECT_EQ(strict.module, 9);
  EXPECT_TRUE(strict.warnings.empty());
  ExpectInside(strict.drawing);
}

// The box that a text which suffers is told of.
std::optional<Size> NeededForText(const Composition& label) {
  for (const Warning& warning : label.warnings) {
    if (warning.code == ErrorCode::kTextShrunk || warning.code == ErrorCode::kTextLeftOut) {
      return warning.needed;
    }
  }
  return std::nullopt;
}

// A strict request whose text suffers, in the box that it is told of.
void ExpectTextFitsWhatIsNeeded(const TypeInfo& type, Request request, const Symbol& symbol) {
  request.strict = true;
  const std::optional<Size> needed = NeededForText(Compose(type, request, symbol));
  ASSERT_TRUE(needed);
  request.module.reset();
  request.width = needed->width;
  request.height = needed->height;
  const Composition label = Compose(type, request, symbol);
  EXPECT_TRUE(label.warnings.empty()) << needed->width << " x " << needed->height;
  EXPECT_EQ(label.drawing.width, needed->width);
  EXPECT_EQ(label.drawing.height, needed->height);
  EXPECT_FALSE(label.drawing.texts.empty());
  ExpectInside(label.drawing);
}

TEST(Composition, StrictTextThatSuffersNamesTheSizeThatWouldDoAndItDoes) {
  for (const Rotation rotation : {Rotation::kNone, Rotation::kQuarter}) {
    for (const std::string& text : {std::string("ABCDEFGHIJ"), std::string(100, 'W')}) {
      Request request;
      request.rotate = rotation;
      ExpectTextFitsWhatIsNeeded(LinearType(), request, LinearOf(text));
      request.module = 3;
      request.height = 90;
      request.textScale = 1.5;
      ExpectTextFitsWhatIsNeeded(LinearType(), request, LinearOf(text));
      Request boxed;
      boxed.rotate = rotation;
      boxed.width = 70;
      boxed.height = 70;
      ExpectTextFitsWhatIsNeeded(LinearType(), boxed, LinearOf(text));
      Request captioned;
      captioned.rotate = rotation;
      captioned.caption = text + text;
      ExpectTextFitsWhatIsNeeded(MatrixType(), captioned, MatrixOf(21, 21, 1));
    }
  }
}

TEST(Composition, TextThatFitsNoPictureNamesNoSize) {
  Request request;
  request.strict = true;
  request.quietZone = 0;  // the first digit stands in it
  EXPECT_FALSE(NeededForText(Compose(RetailType(), request, RetailSymbol())));
  request = {};
  request.strict = true;
  request.textScale = 8.0;  // the text grows faster than the picture
  EXPECT_FALSE(NeededForText(Compose(LinearType(), request, LinearOf(std::string(30, 'W')))));
  request.textScale.reset();
  EXPECT_TRUE(NeededForText(Compose(LinearType(), request, LinearOf(std::string(30, 'W')))));
  request.strict = false;  // the warning of a delivered label has none
  EXPECT_FALSE(NeededForText(Compose(LinearType(), request, LinearOf(std::string(30, 'W')))));
}

TEST(Composition, BoxThatIsTooLowOrTooNarrowNamesTheSide) {
  Request request = WithoutText();
  request.width = 31;
  request.height = 100;
  EXPECT_EQ(Refusal(LinearType(), request, LinearOf("AB")).Field(), "width");
  request.width = 32;
  request.height = 4;
  EXPECT_EQ(Refusal(LinearType(), request, LinearOf("AB")).Field(), "height");
}

TEST(Composition, HeightThatNobodyAskedForDoesNotEnlargeTheText) {
  Symbol symbol = LinearOf("AB");
  std::get<LinearSymbol>(symbol.modules).pattern = RunVector(999, 1);
  Request request;
  EXPECT_EQ(Compose(LinearType(), request, symbol).drawing.texts.at(0).size, 12);
  request.height = 200;
  EXPECT_EQ(Compose(LinearType(), request, symbol).drawing.texts.at(0).size, 40);
}

TEST(Composition, EndlessTextsAreLeftOutUnmeasured) {
  Request request;
  request.caption = std::string(kMostTextBytes + 1, 'i');
  const Composition label = Compose(LinearType(), request, LinearOf("AB"));
  EXPECT_TRUE(Has(label, ErrorCode::kTextLeftOut));
  EXPECT_EQ(label.displayText, "");
  EXPECT_EQ(label.drawing.height, 60);
}

TEST(Composition, RetailDigitsStandUnderTheirBarsAndBesideThem) {
  const Composition label = Compose(RetailType(), {}, RetailSymbol());
  EXPECT_EQ(label.drawing.width, (11 + 95 + 7) * 2);
  EXPECT_TRUE(label.warnings.empty());
  const std::vector<DotRect>& dark = label.drawing.dark;
  EXPECT_EQ(dark[0].height, 138 + 10);  // 69.24 modules and the guard
  EXPECT_EQ(dark[2].height, 138);
  EXPECT_EQ(dark.back().height, 138 + 10);
  ASSERT_EQ(label.drawing.texts.size(), 1U);
  const std::vector<PlacedGlyph>& glyphs = label.drawing.texts[0].glyphs;
  ASSERT_EQ(glyphs.size(), 13U);
  EXPECT_LT(glyphs[0].x, 22 - 8);
  EXPECT_GE(glyphs[1].x, 22 + 3 * 2);
  EXPECT_LT(glyphs[6].x, 22 + 45 * 2);
  EXPECT_GE(glyphs[7].x, 22 + 50 * 2);
  EXPECT_LT(glyphs[12].x, 22 + 92 * 2);
  ExpectInside(label.drawing);
}

TEST(Composition, RetailWithoutExtendedGuards) {
  Request request;
  request.extendedGuard = false;
  const Composition label = Compose(RetailType(), request, RetailSymbol());
  EXPECT_EQ(label.drawing.dark[0].height, 138);
}

TEST(Composition, RetailWithoutQuietZoneHasNoPlaceForTheLeadingDigit) {
  Request request;
  request.quietZone = 0;
  EXPECT_TRUE(Has(Compose(RetailType(), request, RetailSymbol()), ErrorCode::kTextLeftOut));
  request.quietZone = 20;
  const Composition wide = Compose(RetailType(), request, RetailSymbol());
  EXPECT_TRUE(wide.warnings.empty());
  EXPECT_EQ(wide.drawing.width, (20 + 95 + 20) * 2);
  EXPECT_EQ(wide.drawing.dark[0].y, 40);
  EXPECT_GT(wide.drawing.texts[0].glyphs[0].x, 9 * 2);
}

TEST(Composition, LargeTextScaleIsHeldByTheBars) {
  Request request;
  request.textScale = 3.0;
  const Composition label = Compose(RetailType(), request, RetailSymbol());
  EXPECT_TRUE(Has(label, ErrorCode::kTextShrunk));
  ExpectInside(label.drawing);
}

TEST(Composition, StackedRowsShareTheHeightAndSeparatorsKeepTheirs) {
  const RunVector row = {1, 1, 1, 1, 1};
  TypeInfo type = LinearType();
  type.quietZone = {1, 1, 0, 0};
  // The rows of the two-row form have five and seven modules.
  const Symbol twoRows = StackedOf({{row, 5}, {row, 1}, {row, 7}}, 13);
  Composition label = Compose(type, WithoutText(), twoRows);
  ASSERT_EQ(label.drawing.dark.size(), 9U);
  EXPECT_EQ(label.drawing.height, 60);
  EXPECT_EQ(label.drawing.dark[3].height, 2);
  EXPECT_NEAR(label.drawing.dark[0].height, 58 * 5 / 12.0, 1.0);
  EXPECT_EQ(label.drawing.dark[3].y, label.drawing.dark[0].height);
  EXPECT_EQ(label.drawing.dark[6].y + label.drawing.dark[6].height, 60);

  Request request = WithoutText();
  request.height = 25;
  EXPECT_EQ(Refusal(type, request, twoRows).Code(), ErrorCode::kTooSmall);
  request.height = 26;
  label = Compose(type, request, twoRows);
  EXPECT_EQ(label.drawing.dark[0].height, 10);
  EXPECT_EQ(label.drawing.dark[6].height, 14);

  // Rows without a height of their own.
  const Symbol shared =
      StackedOf({{row, std::nullopt}, {row, 1}, {row, 1}, {row, 1}, {row, std::nullopt}}, 69);
  label = Compose(type, WithoutText(), shared);
  EXPECT_EQ(label.drawing.height, 138);
  EXPECT_EQ(label.drawing.dark[0].height, 66);
  EXPECT_EQ(label.drawing.dark.back().height, 66);
  EXPECT_EQ(label.rows, 1);
}

TEST(Composition, TextOfAStackedSymbolIsNoLargerThanItsWidth) {
  Symbol symbol = StackedOf({{RunVector(50, 1), 5}, {RunVector(50, 1), 1}, {RunVector(50, 1), 7}}, 13);
  symbol.lines = {"(01)20012345678909"};
  TypeInfo type = LinearType();
  type.quietZone = {1, 1, 0, 0};
  const Composition label = Compose(type, {}, symbol);
  EXPECT_TRUE(label.warnings.empty());
  EXPECT_EQ(label.drawing.width, 104);
  ExpectInside(label.drawing);
  Request request;
  request.textScale = 2.0;
  EXPECT_TRUE(Has(Compose(type, request, symbol), ErrorCode::kTextShrunk));
}

TEST(Composition, MatrixSymbolsHaveTheirOwnHeight) {
  const Composition qr = Compose(MatrixType(), {}, MatrixOf(21, 21, 1));
  EXPECT_EQ(qr.drawing.width, 29 * 4);
  EXPECT_EQ(qr.drawing.height, 29 * 4);
  EXPECT_EQ(qr.rows, 21);
  const Composition stacked = Compose(MatrixType(), {}, MatrixOf(20, 5, 3));
  EXPECT_EQ(stacked.drawing.height, (15 + 8) * 4);
  EXPECT_EQ(stacked.rows, 15);
  EXPECT_EQ(stacked.drawing.dark.front(), (DotRect{16, 16, 4, 12}));
}

TEST(Composition, CaptionOfAMatrixStandsBelowItsQuietZone) {
  Request request;
  request.caption = "Hello";
  const Composition label = Compose(MatrixType(), request, MatrixOf(21, 21, 1));
  EXPECT_EQ(label.drawing.width, 29 * 4);
  ASSERT_EQ(label.drawing.texts.size(), 1U);
  EXPECT_EQ(label.drawing.texts[0].size, 12);
  EXPECT_GT(label.drawing.texts[0].glyphs[0].y, 29 * 4 + 8);
  ExpectInside(label.drawing);
}

TEST(Composition, PostalBarsAreAModuleWideAndSixHigh) {
  const Composition label = Compose(PostalType(), {}, PostalSymbol());
  EXPECT_EQ(label.columns, 133);
  EXPECT_EQ(label.rows, 1);
  EXPECT_EQ(label.drawing.width, (133 + 8) * 2);
  EXPECT_EQ(label.drawing.height, (6 + 8) * 2);
  const std::vector<DotRect>& dark = label.drawing.dark;
  EXPECT_EQ(dark[0], (DotRect{8, 12, 2, 4}));
  EXPECT_EQ(dark[1], (DotRect{12, 8, 2, 12}));
  EXPECT_EQ(dark[2], (DotRect{16, 8, 2, 8}));
  EXPECT_EQ(dark[3], (DotRect{20, 12, 2, 8}));
  ExpectInside(label.drawing);
}

TEST(Composition, AdjustedBarsStayInThePicture) {
  for (const int quiet : {0, 1, 10}) {
    for (const int adjust : {-20, -1, 1, 3, 20}) {
      Request request;
      request.quietZone = quiet;
      request.barAdjust = adjust;
      request.module = 4;
      ExpectInside(Compose(LinearType(), request, LinearOf("AB")).drawing);
      ExpectInside(Compose(RetailType(), request, RetailSymbol()).drawing);
      ExpectInside(Compose(MatrixType(), request, MatrixOf(21, 21, 1)).drawing);
      ExpectInside(Compose(PostalType(), request, PostalSymbol()).drawing);
    }
  }
}

TEST(Composition, TurnsAreTheSamePictureTurned) {
  Request request;
  request.barAdjust = 1;
  const Composition upright = Compose(RetailType(), request, RetailSymbol());
  const int width = upright.drawing.width;
  const int height = upright.drawing.height;
  request.rotate = Rotation::kQuarter;
  const Composition quarter = Compose(RetailType(), request, RetailSymbol());
  EXPECT_EQ(quarter.drawing.width, height);
  EXPECT_EQ(quarter.drawing.height, width);
  request.rotate = Rotation::kHalf;
  const Composition half = Compose(RetailType(), request, RetailSymbol());
  request.rotate = Rotation::kThreeQuarters;
  const Composition back = Compose(RetailType(), request, RetailSymbol());
  for (std::size_t i = 0; i < upright.drawing.dark.size(); ++i) {
    const DotRect& rect = upright.drawing.dark[i];
    EXPECT_EQ(quarter.drawing.dark[i],
              (DotRect{height - rect.y - rect.height, rect.x, rect.height, rect.width}));
    EXPECT_EQ(half.drawing.dark[i],
              (DotRect{width - rect.x - rect.width, height - rect.y - rect.height, rect.width, rect.height}));
    EXPECT_EQ(back.drawing.dark[i], (DotRect{rect.y, width - rect.x - rect.width, rect.height, rect.width}));
  }
  for (const Composition* turned : {&quarter, &half, &back}) {
    ExpectInside(turned->drawing);
  }
}

TEST(Composition, PicturesOfTooManyPixelsAreRefused) {
  Request request = WithoutText();
  request.module = 100;
  request.height = 10000;
  EXPECT_NO_THROW(Compose(LinearType(), request, LinearOf("AB"), 32'000'000));
  const LabelError error = Refusal(LinearType(), request, LinearOf("AB"), 31'999'999);
  EXPECT_EQ(error.Code(), ErrorCode::kTooLarge);
  EXPECT_EQ(error.Field(), "module");
  request = WithoutText();
  request.width = 100'000;
  request.height = 100'000;
  EXPECT_EQ(Refusal(LinearType(), request, LinearOf("AB")).Field(), "width");
}

TEST(Composition, WarningsOfTheSymbolComeFirst) {
  Symbol symbol = LinearOf("AB");
  symbol.warnings.push_back({ErrorCode::kGs1Association, "one"});
  Request request;
  request.caption = "\x01";
  const Composition label = Compose(LinearType(), request, symbol);
  ASSERT_EQ(label.warnings.size(), 2U);
  EXPECT_EQ(label.warnings[0].code, ErrorCode::kGs1Association);
}

TEST(Composition, SeveralLinesStandBelowEachOther) {
  Symbol symbol = LinearOf("AB");
  symbol.lines = {"AB", "CD"};
  const Composition label = Compose(LinearType(), {}, symbol);
  ASSERT_EQ(label.drawing.texts.size(), 2U);
  EXPECT_GE(label.drawing.texts[1].glyphs[0].y - label.drawing.texts[0].glyphs[0].y, 12.0);
  EXPECT_EQ(label.displayText, "AB\nCD");
  ExpectInside(label.drawing);
}

}  // namespace
}  // namespace barcode::label
