// The tool and the label library have a table of symbologies each: they agree.
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

#include "label/fields.h"
#include "label/types.h"
#include "mkbarcode/library/options.h"
#include "mkbarcode/library/types.h"

namespace barcode::tool {
namespace {

TEST(LabelTypes, AreThoseOfTheTool) {
  ASSERT_EQ(label::AllTypes().size(), AllTypes().size());
  for (const TypeInfo& type : AllTypes()) {
    const label::TypeInfo& other = label::InfoOf(static_cast<label::Type>(type.number));
    EXPECT_EQ(other.name, type.name);
    EXPECT_EQ(other.title, type.title) << type.name;
    EXPECT_EQ(other.aliases, type.aliases) << type.name;
    EXPECT_EQ(other.twoDimensional, type.IsTwoDimensional()) << type.name;
  }
}

// The symbologies' own options have the tool's names, but for the forms, and its words.
TEST(LabelTypes, OptionsOfTheSymbologiesAreThoseOfTheTool) {
  const nlohmann::json types = nlohmann::json::parse(label::TypesJson());
  int compared = 0;
  for (const OptionInfo& option : AllOptions()) {
    std::string name(option.name);
    std::replace(name.begin(), name.end(), '-', '_');
    for (const TypeInfo& type : AllTypes()) {
      for (const nlohmann::json& known : types[static_cast<std::size_t>(type.number)]["options"]) {
        const auto* const words = std::get_if<WordSetter>(&option.setter);
        if (known["name"] != name || words == nullptr) {
          continue;
        }
        EXPECT_TRUE(type.Serves(option.id)) << name << " of " << type.name;
        EXPECT_EQ(known["values"],
                  nlohmann::json(std::vector<std::string>(words->words.begin(), words->words.end())))
            << name;
        ++compared;
      }
    }
  }
  EXPECT_EQ(compared, 8);
}

}  // namespace
}  // namespace barcode::tool
