#include "mkbarcode/library/options.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "mkbarcode/errors.h"
#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

TEST(Options, ThereIsOneForEverySetterOfTheHeader) {
  const std::string header = ReadFile(BARCODE_HEADER);
  std::set<std::string> setters;
  const std::string prefix = "BARCODE_API void barcode_set_";
  for (std::size_t at = header.find(prefix); at != std::string::npos; at = header.find(prefix, at + 1)) {
    const std::size_t name = header.find("barcode_set_", at);
    setters.insert(header.substr(name, header.find('(', name) - name));
  }
  ASSERT_EQ(setters.erase("barcode_set_output_format"), 1U);  // that is --format
  std::set<std::string> covered;
  for (const OptionInfo& option : AllOptions()) {
    covered.emplace(option.SetterName());
  }
  EXPECT_EQ(covered, setters);
}

TEST(Options, TheTableIsInTheOrderOfTheIds) {
  for (const OptionInfo& option : AllOptions()) {
    EXPECT_EQ(&OptionOf(option.id), &option) << option.name;
  }
}

TEST(Options, TheLibraryHasEverySetter) {
  for (const OptionInfo& option : AllOptions()) {
    const std::string name(option.SetterName());
    EXPECT_EQ(AddressInLibrary(name), dlsym(RTLD_DEFAULT, name.c_str())) << option.name;
  }
}

struct Accepted {
  OptionId option;
  std::string_view value;
  std::string_view command;
  std::string_view call;
};

TEST(MakeSetting, AcceptsAndShowsValues) {
  const std::vector<Accepted> cases = {
      {OptionId::kFitWidth, "on", "--fit-width", "barcode_set_fit_width(h, 1);"},
      {OptionId::kShowText, "off", "--no-show-text", "barcode_set_show_text(h, 0);"},
      {OptionId::kPxAdjustBlack, "-2", "--px-adjust-black -2", "barcode_set_px_adjust_black(h, -2);"},
      {OptionId::kTextGap, "0.50", "--text-gap 0.5", "barcode_set_text_gap(h, 0.5);"},
      {OptionId::kAspectRatio, "1000", "--aspect-ratio 1000", "barcode_set_aspect_ratio(h, 1000);"},
      {OptionId::kVersion, "40", "--qr-version 40", "barcode_set_version(h, 40);"},
      {OptionId::kErrorCorrectionLevel, "h", "--error-correction-level H",
       "barcode_set_error_correction_level(h, \"H\");"},
      {OptionId::kStringEncoding, "Shift-JIS", "--string-encoding shift-jis",
       "barcode_set_string_encoding(h, \"shift-jis\");"},
      {OptionId::kSymbolType14, "stacked_omnidirectional", "--symbol-type-14 STACKED_OMNIDIRECTIONAL",
       "barcode_set_symbol_type_14(h, \"STACKED_OMNIDIRECTIONAL\");"},
      {OptionId::kForegroundColor, "1,2,255", "--foreground-color '#0102ff'",
       "barcode_set_foreground_color(h, 1, 2, 255, 255);"},
      {OptionId::kBackgroundColor, "#ffffff00", "--background-color '#ffffff00'",
       "barcode_set_background_color(h, 255, 255, 255, 0);"},
  };
  for (const Accepted& accepted : cases) {
    const Setting setting = MakeSetting(accepted.option, accepted.value);
    EXPECT_EQ(CommandText(setting), accepted.command);
    EXPECT_EQ(CallText(setting), accepted.call);
  }
}

TEST(MakeSetting, RefusesOtherValuesAndSaysWhatIsAccepted) {
  const std::vector<std::tuple<OptionId, std::string_view, std::string_view>> cases = {
      {OptionId::kFitWidth, "yes", "on or off"},
      {OptionId::kPxAdjustWhite, "1.5", "a whole number"},
      {OptionId::kTextFontScale, "-1", "0 to 100"},
      {OptionId::kCodeMode, "D", "AUTO, A, B or C"},
      {OptionId::kVersion, "41", "0 to 40"},
      {OptionId::kCodeSize, "11x11", "AUTO, 10x10,"},
      {OptionId::kColumns, "31", "0 to 30"},
      {OptionId::kRows, "91", "0 to 90"},
      {OptionId::kErrorLevel, "9", "0 to 8"},
      {OptionId::kAspectRatio, "0", "0.001 to 1000"},
      {OptionId::kYHeight, "0", "1 or more"},
      {OptionId::kNoOfColumns, "11", "0 to 10"},
      {OptionId::kForegroundColor, "black", "#rrggbb"},
  };
  for (const auto& [option, value, accepted] : cases) {
    try {
      MakeSetting(option, value);
      ADD_FAILURE() << value;
    } catch (const UsageError& error) {
      EXPECT_THAT(error.what(), testing::HasSubstr(accepted));
      EXPECT_THAT(error.what(), testing::HasSubstr("--" + std::string(OptionOf(option).name)));
      EXPECT_THAT(error.what(), testing::HasSubstr(value));
    }
  }
}

TEST(MakeSetting, AcceptsEveryWordOfEveryKeywordOption) {
  std::size_t words = 0;
  for (const OptionInfo& option : AllOptions()) {
    const auto* const setter = std::get_if<WordSetter>(&option.setter);
    if (setter == nullptr) {
      continue;
    }
    for (const std::string_view word : setter->words) {
      EXPECT_EQ(std::get<std::string_view>(MakeSetting(option.id, word).value), word);
      EXPECT_EQ(std::get<std::string_view>(MakeSetting(option.id, LowerCase(word)).value), word);
      EXPECT_THAT(AcceptedValues(option), testing::HasSubstr(word));
      ++words;
    }
  }
  EXPECT_EQ(words, 4U + 3U + 4U + 5U + 31U + 7U + 3U + 2U);
}

}  // namespace
}  // namespace barcode::tool
