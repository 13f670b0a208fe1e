#include "datamatrix/codeword_writer.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "datamatrix/codeword_decoder.h"
#include "datamatrix/corpus.h"

namespace barcode::datamatrix {
namespace {

std::vector<SchemePlan> AllPlans(std::string_view text) {
  EncoderLines lines;
  std::vector<SchemePlan> plans = OptimizePlans(text, lines);
  for (const Scheme scheme : kSchemes) {
    if (std::optional<SchemePlan> plan = FixedPlan(text, scheme, lines)) {
      plans.push_back(*std::move(plan));
    }
  }
  return plans;
}

std::vector<std::uint8_t> Padded(std::vector<std::uint8_t> codewords, std::size_t capacity) {
  bool first = true;
  while (codewords.size() < capacity) {
    codewords.push_back(first ? kPadCodeword : Randomize253State(kPadCodeword, codewords.size() + 1));
    first = false;
  }
  return codewords;
}

// Every capacity, not only those of real symbols: each plan that fits decodes to the text, and what fits with
// n codewords fits every capacity of at least n, so that the size chosen by the count is the size it was
// written for.
TEST(CodewordWriter, EveryPlanDecodesAtEveryCapacity) {
  Corpus corpus(9);
  for (int round = 0; round < 1500; ++round) {
    const std::string text = corpus.Mixed(24);
    const std::vector<std::size_t> asciiLengths = AsciiLengths(text);
    for (const SchemePlan& plan : AllPlans(text)) {
      const CodewordWriter writer(text, asciiLengths, plan);
      bool fitted = false;
      for (std::size_t capacity = 1; capacity <= 2 * text.size() + 6; ++capacity) {
        const auto count = writer.Count(capacity);
        ASSERT_TRUE(count || !fitted) << "fits less than " << capacity;
        const auto codewords = writer.Write(capacity);
        ASSERT_EQ(codewords.size(), count.value_or(0));
        if (!count) {
          continue;
        }
        fitted = true;
        ASSERT_LE(*count, capacity);
        ASSERT_TRUE(*count == capacity || writer.Count(capacity - 1)) << "would fit " << *count;
        ASSERT_EQ(DecodeCodewords(Padded(codewords, capacity)), text);
      }
      ASSERT_TRUE(fitted);
    }
  }
}

TEST(CodewordWriter, FieldOfUnstateableLengthInsideATextFitsNothing) {
  const std::string text = std::string(1556, '\xE9') + "A";
  const std::vector<std::size_t> asciiLengths = AsciiLengths(text);
  const SchemePlan plan = {{Scheme::kBase256, 0, 1556}, {Scheme::kC40, 1556, 1557}};
  EXPECT_FALSE(CodewordWriter(text, asciiLengths, plan).Count(5000));
}

}  // namespace
}  // namespace barcode::datamatrix
