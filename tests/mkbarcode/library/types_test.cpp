#include "mkbarcode/library/types.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "mkbarcode/library/options.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"
#include "support/symbologies.h"

namespace barcode::tool {
namespace {

int NumberOf(std::string_view name) {
  const TypeInfo* const type = FindType(name);
  return type == nullptr ? -1 : static_cast<int>(type->number);
}

TEST(Types, NamesAndAliasesFindTheirType) {
  const std::vector<std::pair<std::string_view, BarcodeSymbology>> names = {
      {"code39", BARCODE_CODE39},
      {"code93", BARCODE_CODE93},
      {"code128", BARCODE_CODE128},
      {"gs1-128", BARCODE_GS1_128},
      {"ean128", BARCODE_GS1_128},
      {"nw7", BARCODE_NW7},
      {"codabar", BARCODE_NW7},
      {"matrix2of5", BARCODE_MATRIX_2OF5},
      {"nec2of5", BARCODE_NEC_2OF5},
      {"jan8", BARCODE_JAN8},
      {"ean8", BARCODE_JAN8},
      {"jan13", BARCODE_JAN13},
      {"ean13", BARCODE_JAN13},
      {"jan", BARCODE_JAN13},
      {"upca", BARCODE_UPC_A},
      {"upce", BARCODE_UPC_E},
      {"itf", BARCODE_ITF},
      {"i2of5", BARCODE_ITF},
      {"databar", BARCODE_GS1_DATABAR_14},
      {"databar14", BARCODE_GS1_DATABAR_14},
      {"databar-limited", BARCODE_GS1_DATABAR_LIMITED},
      {"databar-expanded", BARCODE_GS1_DATABAR_EXPANDED},
      {"yubin", BARCODE_YUBIN_CUSTOMER},
      {"jppost", BARCODE_YUBIN_CUSTOMER},
      {"customer", BARCODE_YUBIN_CUSTOMER},
      {"qr", BARCODE_QR},
      {"datamatrix", BARCODE_DATAMATRIX},
      {"pdf417", BARCODE_PDF417},
  };
  for (const auto& [name, number] : names) {
    EXPECT_EQ(NumberOf(name), number) << name;
  }
}

TEST(Types, CaseSpacesAndSeparatorsDoNotMatter) {
  EXPECT_EQ(NumberOf("Code 39"), BARCODE_CODE39);
  EXPECT_EQ(NumberOf("GS1_128"), BARCODE_GS1_128);
  EXPECT_EQ(NumberOf("UPC-A"), BARCODE_UPC_A);
  EXPECT_EQ(NumberOf("NEC 2 of 5"), BARCODE_NEC_2OF5);
  EXPECT_EQ(NumberOf("GS1 DataBar Expanded"), BARCODE_GS1_DATABAR_EXPANDED);
  EXPECT_EQ(NumberOf("DATA-MATRIX"), BARCODE_DATAMATRIX);
}

TEST(Types, UnknownNamesFindNothing) {
  for (const std::string_view name : {"", "-", " ", "code", "code390", "3of9 c39", "c39 3of9", "39"}) {
    EXPECT_EQ(FindType(name), nullptr) << name;
  }
}

TEST(Types, NoNameIsSharedAndEveryNameIsFound) {
  std::set<std::string> seen;
  for (const TypeInfo& type : AllTypes()) {
    std::istringstream names(Concat({type.name, " ", type.aliases}));
    for (std::string name; names >> name;) {
      EXPECT_TRUE(seen.insert(name).second) << name;
      EXPECT_EQ(FindType(name), &type) << name;
    }
  }
}

TEST(Types, NumbersAndConstantsAreThoseOfTheHeader) {
  std::istringstream header(ReadFile(BARCODE_HEADER));
  std::map<std::string, int> constants;
  for (std::string line; std::getline(header, line);) {
    if (!line.starts_with("  BARCODE_")) {
      continue;
    }
    std::istringstream enumerator(line);
    std::string name;
    std::string equals;
    int number = -1;
    enumerator >> name >> equals >> number;
    constants[name] = number;
  }
  // The header, the library and the tool know the same symbologies.
  ASSERT_EQ(test::EverySymbology().size(), constants.size());
  ASSERT_EQ(AllTypes().size(), constants.size());
  for (const TypeInfo& type : AllTypes()) {
    ASSERT_TRUE(constants.contains(std::string(type.constant))) << type.constant;
    EXPECT_EQ(constants[std::string(type.constant)], type.number) << type.name;
  }
}

TEST(Types, OptionsServeTheTypesOfTheHeader) {
  const std::set<int> retail = {BARCODE_JAN8, BARCODE_JAN13, BARCODE_UPC_A, BARCODE_UPC_E};
  const std::map<OptionId, std::set<int>> narrow = {
      {OptionId::kShowStartStop, {BARCODE_CODE39, BARCODE_NW7}},
      {OptionId::kExtendedGuard, retail},
      {OptionId::kCodeMode, {BARCODE_CODE128}},
      {OptionId::kStringEncoding, {BARCODE_QR, BARCODE_DATAMATRIX, BARCODE_PDF417}},
      {OptionId::kVersion, {BARCODE_QR}},
      {OptionId::kErrorCorrectionLevel, {BARCODE_QR}},
      {OptionId::kEncodeMode, {BARCODE_QR}},
      {OptionId::kCodeSize, {BARCODE_DATAMATRIX}},
      {OptionId::kEncodeScheme, {BARCODE_DATAMATRIX}},
      {OptionId::kColumns, {BARCODE_PDF417}},
      {OptionId::kRows, {BARCODE_PDF417}},
      {OptionId::kErrorLevel, {BARCODE_PDF417}},
      {OptionId::kAspectRatio, {BARCODE_PDF417}},
      {OptionId::kYHeight, {BARCODE_PDF417}},
      {OptionId::kSymbolType14, {BARCODE_GS1_DATABAR_14}},
      {OptionId::kSymbolTypeExp, {BARCODE_GS1_DATABAR_EXPANDED}},
      {OptionId::kNoOfColumns, {BARCODE_GS1_DATABAR_EXPANDED}},
  };
  const std::set<OptionId> linear = {OptionId::kShowText, OptionId::kTextEvenSpacing,
                                     OptionId::kTextFontScale, OptionId::kTextGap};
  for (const OptionInfo& option : AllOptions()) {
    for (const TypeInfo& type : AllTypes()) {
      bool expected = true;
      if (linear.contains(option.id)) {
        expected = !type.IsTwoDimensional();
      }
      if (narrow.contains(option.id)) {
        expected = narrow.at(option.id).contains(type.number);
      }
      EXPECT_EQ(type.Serves(option.id), expected) << option.name << " " << type.name;
    }
  }
  EXPECT_EQ(NamesOfTypesServing(OptionId::kExtendedGuard), "jan8, jan13, upca, upce");
}

// A draw into a square serves the two-dimensional types alone.
TEST(Types, DimensionsAreThoseOfTheLibrary) {
  for (const TypeInfo& type : AllTypes()) {
    const char* const text = test::ValidText(type.number);
    ASSERT_NE(text, nullptr) << type.name;
    const BarcodeHandle handle = barcode_create(type.number);
    barcode_set_output_format(handle, "svg");
    EXPECT_EQ(barcode_draw_2d(handle, text, 200) == 1, type.IsTwoDimensional()) << type.name;
    barcode_destroy(handle);
  }
}

TEST(Types, OfferedMeansThatTheLibraryMakesTheObject) {
  for (const TypeInfo& type : AllTypes()) {
    const BarcodeHandle handle = barcode_create(type.number);
    EXPECT_EQ(IsOffered(type), handle != nullptr) << type.name;
    barcode_destroy(handle);
  }
  EXPECT_TRUE(IsOffered(TypeOf(BARCODE_CODE39)));
}

}  // namespace
}  // namespace barcode::tool
