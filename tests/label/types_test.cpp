#include "label/types.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

namespace barcode::label {
namespace {

QuietZone ZoneOf(std::string_view name) {
  return FindType(name)->quietZone;
}

TEST(LabelTypes, TheyStandInTheOrderOfTheirNumbers) {
  ASSERT_EQ(AllTypes().size(), kTypeCount);
  for (std::size_t i = 0; i < kTypeCount; ++i) {
    EXPECT_EQ(AllTypes()[i].type, static_cast<Type>(i));
    EXPECT_EQ(&InfoOf(static_cast<Type>(i)), &AllTypes()[i]);
  }
}

TEST(LabelTypes, NoNameIsSharedAndEveryNameIsFound) {
  std::set<std::string> seen;
  for (const TypeInfo& type : AllTypes()) {
    std::istringstream names(std::string(type.name) + " " + std::string(type.aliases));
    for (std::string name; names >> name;) {
      EXPECT_TRUE(seen.insert(name).second) << name;
      EXPECT_EQ(FindType(name), &type) << name;
    }
  }
}

TEST(LabelTypes, CaseAndSeparatorsDoNotMatter) {
  EXPECT_EQ(FindType("Code 39"), &InfoOf(Type::kCode39));
  EXPECT_EQ(FindType("GS1_128"), &InfoOf(Type::kGs1_128));
  EXPECT_EQ(FindType("  gs-1 12_8-"), &InfoOf(Type::kGs1_128));
  EXPECT_EQ(FindType("UPC-A"), &InfoOf(Type::kUpcA));
  EXPECT_EQ(FindType("NEC 2 of 5"), &InfoOf(Type::kNec2of5));
  EXPECT_EQ(FindType("GS1 DataBar Expanded"), &InfoOf(Type::kDataBarExpanded));
}

TEST(LabelTypes, OtherTextsFindNothing) {
  using namespace std::string_literals;
  for (const std::string& name :
       {""s, "-"s, " "s, "code"s, "code390"s, "c39 3of9"s, "3of9 c39"s, "39"s, "qr\0"s, "\0"s,
        std::string(100'000, 'q'), std::string(100'000, ' '), "q\xC3\xBC"s}) {
    EXPECT_EQ(FindType(name), nullptr) << name.substr(0, 40);
  }
}

TEST(LabelTypes, QuietZonesAreThoseOfTheStandards) {
  for (const char* const name :
       {"code39", "code93", "code128", "gs1-128", "nw7", "itf", "matrix2of5", "nec2of5"}) {
    EXPECT_EQ(ZoneOf(name), (QuietZone{.left = 10, .right = 10})) << name;
  }
  EXPECT_EQ(ZoneOf("jan13"), (QuietZone{.left = 11, .right = 7}));
  EXPECT_EQ(ZoneOf("jan8"), (QuietZone{.left = 7, .right = 7}));
  EXPECT_EQ(ZoneOf("upca"), (QuietZone{.left = 9, .right = 9}));
  EXPECT_EQ(ZoneOf("upce"), (QuietZone{.left = 9, .right = 7}));
  EXPECT_EQ(ZoneOf("databar"), (QuietZone{.left = 1, .right = 1}));
  EXPECT_EQ(ZoneOf("databar-limited"), (QuietZone{.left = 1, .right = 5}));
  EXPECT_EQ(ZoneOf("databar-expanded"), (QuietZone{.left = 1, .right = 1}));
  EXPECT_EQ(ZoneOf("yubin"), (QuietZone{4, 4, 4, 4}));
  EXPECT_EQ(ZoneOf("qr"), (QuietZone{4, 4, 4, 4}));
  EXPECT_EQ(ZoneOf("datamatrix"), (QuietZone{1, 1, 1, 1}));
  EXPECT_EQ(ZoneOf("pdf417"), (QuietZone{2, 2, 2, 2}));
}

TEST(LabelTypes, ModulesAndHeights) {
  for (const TypeInfo& type : AllTypes()) {
    const bool isSquare = type.type == Type::kQr || type.type == Type::kDataMatrix;
    EXPECT_EQ(type.defaultModule, isSquare ? 4 : 2) << type.name;
    EXPECT_GT(type.smallestModuleMm, 0.1) << type.name;
    EXPECT_LT(type.smallestModuleMm, 0.5) << type.name;
    EXPECT_FALSE(type.standard.empty());
  }
  EXPECT_EQ(InfoOf(Type::kJan13).standardHeight, 69.24);
  EXPECT_EQ(InfoOf(Type::kUpcA).standardHeight, 69.24);
  EXPECT_EQ(InfoOf(Type::kUpcE).standardHeight, 69.24);
  EXPECT_EQ(InfoOf(Type::kJan8).standardHeight, 55.24);
  EXPECT_EQ(InfoOf(Type::kCode128).standardHeight, 0);
  EXPECT_EQ(InfoOf(Type::kQr).standardHeight, 0);
}

TEST(LabelTypes, TypesWithoutAReaderAreThoseThatNoReaderOfTheListReads) {
  for (const TypeInfo& type : AllTypes()) {
    const bool isRead =
        type.readers.zxing != "no" || type.readers.zbar != "no" || type.readers.zxingWasm != "no";
    EXPECT_EQ(type.anyReader, isRead) << type.name;
  }
  EXPECT_FALSE(InfoOf(Type::kMatrix2of5).anyReader);
  EXPECT_FALSE(InfoOf(Type::kNec2of5).anyReader);
  EXPECT_FALSE(InfoOf(Type::kYubinCustomer).anyReader);
}

// "yes", "no" or a sentence.
TEST(LabelTypes, WhatReadersReadIsAWordOrASentence) {
  for (const TypeInfo& type : AllTypes()) {
    for (const std::string_view words : {type.readers.zxing, type.readers.zbar, type.readers.zxingWasm}) {
      EXPECT_TRUE(words == "yes" || words == "no" || (words.size() > 10 && words.ends_with('.'))) << words;
    }
  }
}

}  // namespace
}  // namespace barcode::label
