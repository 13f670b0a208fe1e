#include "label_proof/proof.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <sstream>

#include "barcode_label.h"
#include "label_proof/own_decoders.h"
#include "label_proof/report_checks.h"

namespace barcode::test {
namespace {

constexpr int kLargestScale = 4;
// Every so many labels are made in the other formats too.
constexpr int kComparedEvery = 50;

std::string Printable(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    if (value >= 32 && value < 127 && byte != '\\') {
      text += byte;
      continue;
    }
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    text += "\\x";
    text += kDigits[value / 16];
    text += kDigits[value % 16];
  }
  return text;
}

std::string FailureOf(const ProofLabel& label, const std::string& what) {
  return "label " + std::to_string(label.number) + ": " + what + "\n    " +
         label.request.dump(-1, ' ', true, Json::error_handler_t::replace);
}

// Whether a picture can be a page of a PDF, which has at least 1/24 inch a side.
bool FitsPage(const ProofLabel& label) {
  return 24 * std::min(label.picture.width, label.picture.height) >= NumberIn(label.request, "dpi");
}

std::optional<Reading> OwnReading(Symbology symbology, const GreyImage& image) {
  const auto decode = symbology == Symbology::kMatrix2of5 ? DecodeMatrix2of5
                      : symbology == Symbology::kNec2of5  ? DecodeNec2of5
                                                          : DecodePostal;
  const std::optional<std::string> text = decode(image);
  return text ? std::optional(Reading{"own", *text}) : std::nullopt;
}

// What a reader sees in some pictures of one type.
using Readings = std::vector<std::optional<Reading>>;
Readings ReadAll(ReaderId reader, Symbology symbology, const ReaderRule& rule,
                 const std::vector<GreyImage>& images) {
  if (reader == ReaderId::kWasm) {
    return images.empty() ? Readings() : ReadWithWasm(images, rule.formats);
  }
  Readings readings;
  for (const GreyImage& image : images) {
    switch (reader) {
      case ReaderId::kZxing:
        readings.push_back(ReadWithZxing(image, rule.formats, Turns::kAll));
        break;
      case ReaderId::kZbar:
        readings.push_back(ReadWithZbar(image, rule.formats));
        break;
      default:
        readings.push_back(OwnReading(symbology, image));
        break;
    }
  }
  return readings;
}

// The labels of one call, and what became of them.
class Batch {
 public:
  Batch(const SymbologyInfo& info, std::uint64_t seed, int first, int labels) : m_info(info) {
    for (int number = first; number < first + labels; ++number) {
      m_labels.push_back(MakeProofLabel(info, seed, number));
    }
    RenderPdfs(m_labels);
  }

  TypeCount Prove() {
    Sort();
    CheckEach();
    CompareSome();
    for (std::size_t reader = 0; reader < kReaders; ++reader) {
      Read(static_cast<ReaderId>(reader));
    }
    return m_count;
  }

 private:
  static void RenderPdfs(std::vector<ProofLabel>& labels) {
    std::vector<PdfPage> pages;
    std::vector<ProofLabel*> drawn;
    for (ProofLabel& label : labels) {
      if (label.format == PictureFormat::kPdf && label.fault.empty()) {
        pages.push_back(
            {label.made.data, NumberIn(label.made.report, "width"), NumberIn(label.made.report, "height")});
        drawn.push_back(&label);
      }
    }
    std::vector<GreyImage> images = GreyOfPdfs(pages);
    for (std::size_t i = 0; i < drawn.size(); ++i) {
      drawn[i]->picture = std::move(images[i]);
      if (drawn[i]->picture.pixels.empty()) {
        drawn[i]->fault = "no picture that can be rendered";
      }
    }
  }

  void Fail(const ProofLabel& label, const std::string& what) {
    m_count.failures.push_back(FailureOf(label, what));
  }

  void Sort() {
    for (const ProofLabel& label : m_labels) {
      ++m_count.drawn;
      ++m_count.formats[static_cast<std::size_t>(label.format)];
      if (!label.fault.empty()) {
        ++m_count.refused;
        Fail(label, label.fault);
        continue;
      }
      m_count.moduleOfOne += ModuleOf(label) == 1 ? 1 : 0;
      m_good.push_back(&label);
    }
  }

  void CheckEach() {
    for (const ProofLabel* label : m_good) {
      const std::vector<std::string> faults = FaultsOf(*label);
      m_count.faulty += faults.empty() ? 0 : 1;
      for (const std::string& fault : faults) {
        Fail(*label, fault);
      }
    }
  }

  void CompareSome() {
    std::vector<ProofLabel> others;
    std::vector<const ProofLabel*> compared;
    for (const ProofLabel* label : m_good) {
      if (label->number % kComparedEvery != 0) {
        continue;
      }
      if (WithRequest(*label, label->request).made.data != label->made.data) {
        ++m_count.unequal;
        Fail(*label, "made again, it has other bytes");
      }
      for (const PictureFormat format : {PictureFormat::kPng, PictureFormat::kSvg, PictureFormat::kPdf}) {
        if (format != label->format && (format != PictureFormat::kPdf || FitsPage(*label))) {
          others.push_back(WithFormat(*label, format));
          compared.push_back(label);
        }
      }
    }
    RenderPdfs(others);
    for (std::size_t i = 0; i < others.size(); ++i) {
      ++m_count.compared;
      std::vector<std::string> differences = {others[i].fault};
      if (others[i].fault.empty()) {
        differences = DifferencesOf(*compared[i], others[i]);
      }
      m_count.unequal += differences.empty() ? 0 : 1;
      for (const std::string& difference : differences) {
        Fail(others[i], "beside the other format: " + difference);
      }
    }
  }

  // The pictures that the reader is to see, by the words that it is asked with: as they are, and what it saw
  // nothing in enlarged.
  void Read(ReaderId reader) {
    m_misreadAt1.clear();
    std::map<std::string, std::vector<const ProofLabel*>> byFormats;
    for (const ProofLabel* label : m_good) {
      const auto rule = RuleOf(reader, m_info.symbology, label->content);
      if (rule) {
        byFormats[rule->formats].push_back(label);
      } else {
        Count(reader, Outcome::kNotKnown);
      }
    }
    for (auto& [formats, labels] : byFormats) {
      for (int scale = 1; scale <= kLargestScale && !labels.empty(); ++scale) {
        labels = ReadAt(reader, labels, scale);
      }
      for (const ProofLabel* label : labels) {
        Miss(reader, *label);
      }
    }
  }

  // Returns the labels in which nothing was seen.
  std::vector<const ProofLabel*> ReadAt(ReaderId reader, const std::vector<const ProofLabel*>& labels,
                                        int scale) {
    std::vector<GreyImage> images;
    images.reserve(labels.size());
    for (const ProofLabel* label : labels) {
      images.push_back(scale == 1 ? label->picture : Enlarged(label->picture, scale));
    }
    const auto rule = RuleOf(reader, m_info.symbology, labels.front()->content);
    const Readings readings = ReadAll(reader, m_info.symbology, *rule, images);
    std::vector<const ProofLabel*> unseen;
    for (std::size_t i = 0; i < labels.size(); ++i) {
      if (!readings[i]) {
        unseen.push_back(labels[i]);
      } else if (scale == 1 && IsMisreadAt1(reader, *labels[i], *readings[i])) {
        m_misreadAt1.insert(labels[i]);
        unseen.push_back(labels[i]);
      } else {
        Judge(reader, *labels[i], *readings[i], scale);
      }
    }
    return unseen;
  }

  bool IsRight(ReaderId reader, const ProofLabel& label, const Reading& reading) const {
    const auto rule = RuleOf(reader, m_info.symbology, label.content);
    return std::ranges::find(rule->accepted, reading.format) != rule->accepted.end() &&
           reading.data == ExpectedData(reader, m_info.symbology, label.content);
  }

  bool IsMisreadAt1(ReaderId reader, const ProofLabel& label, const Reading& reading) const {
    return ModuleOf(label) == 1 && MisreadsSingleDots(reader, m_info.symbology) &&
           !IsRight(reader, label, reading);
  }

  Outcome OutcomeAt(const ProofLabel& label, int scale) const {
    if (m_misreadAt1.contains(&label)) {
      return Outcome::kMisreadAt1;
    }
    if (scale == 1) {
      return Outcome::kRead;
    }
    return ModuleOf(label) == 1 ? Outcome::kReadEnlargedAt1 : Outcome::kReadEnlarged;
  }

  void Judge(ReaderId reader, const ProofLabel& label, const Reading& reading, int scale) {
    if (IsRight(reader, label, reading)) {
      Count(reader, OutcomeAt(label, scale));
      return;
    }
    for (const ReaderLimit& limit : LimitsOf(reader, m_info.symbology, label.content, label.request)) {
      if (limit.misreads && (limit.remedy == nullptr || HoldsRemedied(reader, label, limit))) {
        CountLimit(reader, limit);
        return;
      }
    }
    Count(reader, Outcome::kWrong);
    Fail(label, "WRONG, " + std::string(NameOf(reader)) + " at " + std::to_string(scale) + "x reads " +
                    reading.format + " " + Printable(reading.data) + " instead of " +
                    Printable(ExpectedData(reader, m_info.symbology, label.content)));
  }

  void Miss(ReaderId reader, const ProofLabel& label) {
    for (const ReaderLimit& limit : LimitsOf(reader, m_info.symbology, label.content, label.request)) {
      const bool isOfContent = limit.remedy == nullptr;
      if (isOfContent || (!limit.misreads && HoldsRemedied(reader, label, limit))) {
        CountLimit(reader, limit);
        return;
      }
    }
    Count(reader, Outcome::kMissing);
    Fail(label, "missing, " + std::string(NameOf(reader)) + " sees nothing");
  }

  // Whether the reader sees what it ought to see when what it cannot do is not asked of it.
  bool HoldsRemedied(ReaderId reader, const ProofLabel& label, const ReaderLimit& limit) const {
    Json request = limit.remedy(label.request);
    request["format"] = "png";
    const ProofLabel remedied = WithRequest(label, request);
    Content content = label.content;
    content.options = request;
    const auto rule = RuleOf(reader, m_info.symbology, content);
    if (!remedied.fault.empty() || !rule) {
      return false;
    }
    for (int scale = 1; scale <= kLargestScale; ++scale) {
      const Readings readings = ReadAll(reader, m_info.symbology, *rule, {Enlarged(remedied.picture, scale)});
      if (readings.front()) {
        return readings.front()->data == ExpectedData(reader, m_info.symbology, content);
      }
    }
    const auto limits = LimitsOf(reader, m_info.symbology, content, request);
    return std::ranges::any_of(
        limits, [](const ReaderLimit& each) { return each.remedy == nullptr && !each.misreads; });
  }

  void Count(ReaderId reader, Outcome outcome) {
    ++m_count.readers[static_cast<std::size_t>(reader)][static_cast<std::size_t>(outcome)];
  }

  void CountLimit(ReaderId reader, const ReaderLimit& limit) {
    Count(reader, Outcome::kLimit);
    m_count.ofContent[static_cast<std::size_t>(reader)] += limit.remedy == nullptr ? 1 : 0;
    ++m_count.limits[std::string(NameOf(reader)) + ": " + std::string(limit.reason)];
  }

  const SymbologyInfo& m_info;
  std::vector<ProofLabel> m_labels;
  std::vector<const ProofLabel*> m_good;
  std::set<const ProofLabel*> m_misreadAt1;  // by the reader at work
  TypeCount m_count;
};

}  // namespace

void TypeCount::Add(const TypeCount& other) {
  drawn += other.drawn;
  refused += other.refused;
  faulty += other.faulty;
  unequal += other.unequal;
  compared += other.compared;
  moduleOfOne += other.moduleOfOne;
  for (std::size_t i = 0; i < formats.size(); ++i) {
    formats[i] += other.formats[i];
  }
  for (std::size_t reader = 0; reader < kReaders; ++reader) {
    for (std::size_t outcome = 0; outcome < kOutcomes; ++outcome) {
      readers[reader][outcome] += other.readers[reader][outcome];
    }
  }
  for (std::size_t reader = 0; reader < kReaders; ++reader) {
    ofContent[reader] += other.ofContent[reader];
  }
  for (const auto& [limit, labels] : other.limits) {
    limits[limit] += labels;
  }
  failures.insert(failures.end(), other.failures.begin(), other.failures.end());
}

void TypeCount::CheckClaims(const SymbologyInfo& info) {
  const Json types = Json::parse(barcode_label_types(), nullptr, false);
  const auto type =
      std::ranges::find_if(types, [&](const Json& each) { return each.value("name", "") == info.name; });
  if (type == types.end()) {
    failures.push_back("barcode_label_types() does not name the type");
    return;
  }
  const Json claims = type->value("readers", Json::object());
  constexpr std::array<const char*, 3> kFields = {"zxing", "zbar", "zxing_wasm"};
  for (std::size_t i = 0; i < kFields.size(); ++i) {
    const auto reader = static_cast<ReaderId>(i);
    const std::string claim = claims.value(kFields[i], "");
    const int unread = Of(reader, Outcome::kNotKnown) + ofContent[i];
    const bool readsNone = unread == drawn - refused;
    const char* const wanted = readsNone ? "no" : unread == 0 ? "yes" : "which texts or forms it reads";
    // Where all texts are read, the words may tell of what looks are not.
    const bool isRight = unread == 0 ? claim == "yes" || HasLimits(reader, info.symbology) : claim != "yes";
    const bool isWanted = readsNone ? claim == "no" : claim != "no" && isRight;
    // Few labels hold few of the texts that a reader does not read.
    constexpr int kEnough = 200;
    constexpr int kEnoughForAny = 50;
    if (!isWanted && drawn >= (readsNone ? kEnoughForAny : kEnough)) {
      failures.push_back(std::string("barcode_label_types() says of ") + kFields[i] + " \"" + claim +
                         "\" instead of " + wanted);
    }
  }
}

bool TypeCount::Holds() const {
  return drawn > 0 && failures.empty();
}

std::string LineOf(const SymbologyInfo& info, const TypeCount& count) {
  std::ostringstream line;
  line << "proof type=" << info.name << " drawn=" << count.drawn << " refused=" << count.refused
       << " faulty=" << count.faulty << " compared=" << count.compared << " unequal=" << count.unequal
       << " png=" << count.formats[0] << " svg=" << count.formats[1] << " pdf=" << count.formats[2]
       << " module1=" << count.moduleOfOne;
  for (std::size_t i = 0; i < kReaders; ++i) {
    const auto reader = static_cast<ReaderId>(i);
    if (count.Of(reader, Outcome::kNotKnown) == count.drawn - count.refused) {
      continue;
    }
    const std::string_view name = NameOf(reader);
    line << ' ' << name << ".read=" << count.Of(reader, Outcome::kRead) << ' ' << name
         << ".enlarged1=" << count.Of(reader, Outcome::kReadEnlargedAt1) << ' ' << name
         << ".enlarged=" << count.Of(reader, Outcome::kReadEnlarged) << ' ' << name
         << ".misread1=" << count.Of(reader, Outcome::kMisreadAt1) << ' ' << name
         << ".limit=" << count.Of(reader, Outcome::kLimit) << ' ' << name
         << ".unknown=" << count.Of(reader, Outcome::kNotKnown) << ' ' << name
         << ".missing=" << count.Of(reader, Outcome::kMissing) << ' ' << name
         << ".wrong=" << count.Of(reader, Outcome::kWrong);
  }
  return line.str();
}

TypeCount ProveLabels(const SymbologyInfo& info, std::uint64_t seed, int first, int labels) {
  return Batch(info, seed, first, labels).Prove();
}

}  // namespace barcode::test
