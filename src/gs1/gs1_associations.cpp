#include "gs1/gs1_associations.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/line.h"
#include "gs1/gs1_ai_tables.h"
#include "gs1/gs1_application_identifiers.h"
#include "gs1/gs1_syntax.h"

namespace barcode {
namespace {

// AIs are named by their first digits here: "31" stands for 3100 to 3169. No AI begins with another one.

// GS1 General Specifications, invalid pairs of element strings.
using Pair = std::pair<std::string_view, std::string_view>;
constexpr auto kInvalidPairs = std::to_array<Pair>({
    {"01", "02"},   {"01", "03"},   {"01", "37"},   {"01", "255"},   {"01", "8006"},  {"02", "03"},
    {"02", "8026"}, {"03", "37"},   {"21", "235"},  {"37", "8006"},  {"390", "391"},  {"390", "394"},
    {"392", "393"}, {"392", "395"}, {"393", "395"}, {"395", "8005"}, {"390", "8111"}, {"394", "8111"},
    {"420", "421"}, {"422", "426"}, {"423", "426"}, {"424", "426"},  {"425", "426"},  {"8006", "8026"},
});

// GS1 General Specifications, mandatory association of element strings: the AI needs one of the partners. An
// AI with two rules needs one of each.
constexpr std::size_t kMaxPartners = 5;

struct Association {
  std::string_view ai;
  std::array<std::string_view, kMaxPartners> partners;  // empty behind the last
};

// A trade item, or the items that a logistic unit contains; with pieces of either.
constexpr std::array<std::string_view, kMaxPartners> kTradeItem = {"01", "02", "8006", "8026"};
constexpr std::array<std::string_view, kMaxPartners> kAnyTradeItem = {"01", "02", "03", "8006", "8026"};
constexpr std::array<std::string_view, kMaxPartners> kOneTradeItem = {"01", "8006"};
constexpr std::array<std::string_view, kMaxPartners> kLogisticUnit = {"00"};
constexpr std::array<std::string_view, kMaxPartners> kLogisticMeasure = {"00", "01"};
constexpr std::array<std::string_view, kMaxPartners> kQuantity = {"30", "31", "32", "35", "36"};
constexpr std::array<std::string_view, kMaxPartners> kPerson = {"8017", "8018"};

constexpr auto kAssociations = std::to_array<Association>({
    {"02", {"37"}},
    {"02", kLogisticUnit},
    {"10", kAnyTradeItem},
    {"11", kAnyTradeItem},
    {"12", {"8020"}},
    {"13", kTradeItem},
    {"15", kTradeItem},
    {"16", kTradeItem},
    {"17", {"01", "02", "255", "8006", "8026"}},
    {"20", kTradeItem},
    {"21", {"01", "03", "8006"}},
    {"22", {"01"}},
    {"235", {"01"}},
    {"240", kTradeItem},
    {"241", kTradeItem},
    {"242", kTradeItem},
    {"243", {"01"}},
    {"250", kOneTradeItem},
    {"250", {"21"}},
    {"251", kOneTradeItem},
    {"254", {"414"}},
    {"30", {"01", "02"}},
    {"310", {"01", "02"}},
    {"311", {"01", "02"}},
    {"312", {"01", "02"}},
    {"313", {"01", "02"}},
    {"314", {"01", "02"}},
    {"315", {"01", "02"}},
    {"316", {"01", "02"}},
    {"32", {"01", "02"}},
    {"330", kLogisticMeasure},
    {"331", kLogisticMeasure},
    {"332", kLogisticMeasure},
    {"333", kLogisticMeasure},
    {"334", kLogisticMeasure},
    {"335", kLogisticMeasure},
    {"336", kLogisticMeasure},
    {"337", {"01"}},
    {"34", kLogisticMeasure},
    {"350", {"01", "02"}},
    {"351", {"01", "02"}},
    {"352", {"01", "02"}},
    {"353", kLogisticMeasure},
    {"354", kLogisticMeasure},
    {"355", kLogisticMeasure},
    {"356", {"01", "02"}},
    {"357", {"01", "02"}},
    {"360", {"01", "02"}},
    {"361", {"01", "02"}},
    {"362", kLogisticMeasure},
    {"363", kLogisticMeasure},
    {"364", {"01", "02"}},
    {"365", {"01", "02"}},
    {"366", {"01", "02"}},
    {"367", kLogisticMeasure},
    {"368", kLogisticMeasure},
    {"369", kLogisticMeasure},
    {"37", {"02", "8026"}},
    {"37", kLogisticUnit},
    {"390", {"255", "8020"}},
    {"391", {"8020"}},
    {"392", {"01"}},
    {"392", kQuantity},
    {"393", {"01"}},
    {"393", kQuantity},
    {"394", {"255"}},
    {"395", {"01"}},
    {"395", kQuantity},
    {"403", kLogisticUnit},
    {"415", {"8020"}},
    {"422", kTradeItem},
    {"423", kTradeItem},
    {"424", kTradeItem},
    {"425", kTradeItem},
    {"426", kTradeItem},
    {"427", kTradeItem},
    {"427", {"422"}},
    {"43", kLogisticUnit},
    {"4303", {"4302"}},
    {"4313", {"4312"}},
    {"7001", kTradeItem},
    {"7002", kTradeItem},
    {"7003", kTradeItem},
    {"7004", kTradeItem},
    {"7004", {"10"}},
    {"7005", kTradeItem},
    {"7006", kTradeItem},
    {"7007", kTradeItem},
    {"7008", kTradeItem},
    {"7009", kTradeItem},
    {"7010", kTradeItem},
    {"7011", kTradeItem},
    {"7020", kOneTradeItem},
    {"7020", {"416"}},
    {"7021", kOneTradeItem},
    {"7022", kOneTradeItem},
    {"7022", {"7021"}},
    {"703", kTradeItem},
    {"7041", kLogisticUnit},
    {"71", kTradeItem},
    {"7240", kOneTradeItem},
    {"7241", kPerson},
    {"725", {"8018"}},
    {"7258", {"7259"}},
    {"8001", {"01"}},
    {"8005", kTradeItem},
    {"8007", {"415"}},
    {"8008", kTradeItem},
    {"8011", {"8010"}},
    {"8012", kOneTradeItem},
    {"8019", kPerson},
    {"8020", {"415"}},
    {"8026", {"37"}},
    {"8026", kLogisticUnit},
    {"8111", {"255"}},
    {"8200", {"01"}},
});

// By prefix, where the rows of its AIs begin; they end where those of the next prefix do.
constexpr auto kFirstAssociations = [] {
  std::array<std::uint8_t, kGs1AiPrefixes + 1> first{};
  for (const Association& association : kAssociations) {
    ++first[Gs1AiPrefix(association.ai) + 1];
  }
  for (std::size_t prefix = 0; prefix < kGs1AiPrefixes; ++prefix) {
    first[prefix + 1] = static_cast<std::uint8_t>(first[prefix] + first[prefix + 1]);
  }
  return first;
}();
static_assert(std::is_sorted(kAssociations.begin(), kAssociations.end(),
                             [](const Association& a, const Association& b) { return a.ai < b.ai; }));

constexpr std::span<const Association> AssociationsAt(std::size_t prefix) {
  return std::span(kAssociations)
      .subspan(kFirstAssociations[prefix], kFirstAssociations[prefix + 1] - kFirstAssociations[prefix]);
}

// The indicator digit 9 says that a trade item varies in measure or is made to order.
constexpr std::array<std::string_view, 2> kGtins = {"01", "02"};
constexpr std::array<std::string_view, 7> kVariablePartners = {"242", "30", "31", "32", "35", "36", "8001"};
constexpr char kVariableIndicator = '9';

constexpr std::array<std::string_view, 7> kDecimalGroups = {"31", "32", "33", "34", "35", "36", "39"};

// The AI without the digit that places a decimal point.
std::string_view WithoutDecimals(std::string_view ai) {
  const bool decimals = std::any_of(kDecimalGroups.begin(), kDecimalGroups.end(),
                                    [ai](std::string_view group) { return ai.starts_with(group); });
  return decimals ? ai.substr(0, ai.size() - 1) : ai;
}

[[noreturn]] void RefuseRepeated(const Gs1Element& earlier, const Gs1Element& element) {
  if (earlier.ai != element.ai) {
    throw Gs1SyntaxError(Line("The application identifiers ", earlier.ai, " and ", element.ai,
                              " say the same with different decimal places: keep one."));
  }
  throw Gs1SyntaxError(
      Line("The application identifier ", element.ai, " is there twice with different data: keep one."));
}

void CheckRepeated(const std::vector<Gs1Element>& elements) {
  for (auto element = elements.begin(); element != elements.end(); ++element) {
    const std::string_view ai = WithoutDecimals(element->ai);
    const auto earlier = std::find_if(elements.begin(), element, [ai](const Gs1Element& before) {
      return WithoutDecimals(before.ai) == ai;
    });
    if (earlier != element && *earlier != *element) {
      RefuseRepeated(*earlier, *element);
    }
  }
}

// ---- The AIs of a text ----

// Ascending, each once.
class Ais {
 public:
  using Iterator = std::vector<std::string_view>::const_iterator;

  explicit Ais(const std::vector<Gs1Element>& elements) {
    m_ais.reserve(elements.size());
    for (const Gs1Element& element : elements) {
      m_ais.push_back(element.ai);
      m_prefixes.set(Gs1AiPrefix(element.ai));
    }
    std::sort(m_ais.begin(), m_ais.end());
    m_ais.erase(std::unique(m_ais.begin(), m_ais.end()), m_ais.end());
  }

  // The first with these first digits, of which there are two at least, or the end.
  Iterator Find(std::string_view digits) const {
    if (!m_prefixes.test(Gs1AiPrefix(digits))) {
      return m_ais.end();
    }
    const auto found = std::lower_bound(m_ais.begin(), m_ais.end(), digits);
    return found != m_ais.end() && found->starts_with(digits) ? found : m_ais.end();
  }
  Iterator Begin() const { return m_ais.begin(); }
  Iterator End() const { return m_ais.end(); }

  bool HasOneOf(std::span<const std::string_view> partners) const {
    return std::any_of(partners.begin(), partners.end(),
                       [this](std::string_view partner) { return Find(partner) != End(); });
  }

 private:
  std::vector<std::string_view> m_ais;
  std::bitset<kGs1AiPrefixes> m_prefixes;
};

// "31nn" for the AIs that begin with 31.
std::string PatternOf(std::string_view digits) {
  std::string pattern(digits);
  pattern.resize(std::max(digits.size(), Gs1AiLengthAt(digits)), 'n');
  return pattern;
}

std::string NeedsOneOf(std::string_view ai, std::span<const std::string_view> partners) {
  std::string sentence = Line("The application identifier ", ai, " needs ");
  for (std::size_t i = 0; i < partners.size(); ++i) {
    const bool last = i + 1 == partners.size();
    AppendPieces(sentence, i == 0 ? "" : (last ? " or " : ", "), PatternOf(partners[i]));
  }
  return sentence + " beside it.";
}

std::span<const std::string_view> PartnersOf(const Association& association) {
  const auto end = std::find(association.partners.begin(), association.partners.end(), std::string_view());
  return {association.partners.begin(), end};
}

void AddMissingPartners(std::vector<std::string>& sentences, const Ais& ais,
                        std::span<const Association> associations) {
  for (const Association& association : associations) {
    auto ai = ais.Find(association.ai);
    if (ai == ais.End() || ais.HasOneOf(PartnersOf(association))) {
      continue;
    }
    for (; ai != ais.End() && ai->starts_with(association.ai); ++ai) {
      sentences.push_back(NeedsOneOf(*ai, PartnersOf(association)));
    }
  }
}

bool IsVariable(const Gs1Element& element) {
  const bool gtin = std::find(kGtins.begin(), kGtins.end(), element.ai) != kGtins.end();
  return gtin && element.data.starts_with(kVariableIndicator);
}

}  // namespace

void CheckGs1Pairs(const std::vector<Gs1Element>& elements) {
  CheckRepeated(elements);
  const Ais ais(elements);
  for (const auto& [first, second] : kInvalidPairs) {
    const auto one = ais.Find(first);
    const auto other = one == ais.End() ? one : ais.Find(second);
    if (other != ais.End()) {
      throw Gs1SyntaxError(
          Line("The application identifiers ", *one, " and ", *other, " exclude each other: keep one."));
    }
  }
}

std::vector<std::string> Gs1MissingPartners(const std::vector<Gs1Element>& elements) {
  const Ais ais(elements);
  std::vector<std::string> sentences;
  std::optional<std::size_t> last;
  for (auto ai = ais.Begin(); ai != ais.End(); ++ai) {
    const std::size_t prefix = Gs1AiPrefix(*ai);
    if (prefix != last) {
      AddMissingPartners(sentences, ais, AssociationsAt(prefix));
    }
    last = prefix;
  }
  const auto variable = std::find_if(elements.begin(), elements.end(), IsVariable);
  if (variable != elements.end() && !ais.HasOneOf(kVariablePartners)) {
    sentences.push_back(
        NeedsOneOf(Line(variable->ai, " with a number that begins with 9"), kVariablePartners));
  }
  return sentences;
}

}  // namespace barcode
