#include "label_proof/reading_rules.h"

#include <algorithm>
#include <array>
#include <utility>

namespace barcode::test {
namespace {

bool IsStacked(const Content& content) {
  const auto form = content.options.find("form");
  return form != content.options.end() && form->get<std::string>().starts_with("stacked");
}

// libzxing 1.4. Looking for all symbols of a picture it aborts the process on stacked DataBar ones (an
// assertion of its own fails), which are left to the other readers; it does not know DataBar Limited.
std::optional<ReaderRule> ZxingRule(Symbology symbology, const Content& content) {
  const auto same = [](const char* name) { return ReaderRule{name, {name}}; };
  switch (symbology) {
    case Symbology::kCode39:
      return same("Code39");
    case Symbology::kCode93:
      return same("Code93");
    case Symbology::kCode128:
    case Symbology::kGs1_128:
      return same("Code128");
    case Symbology::kNw7:
      return same("Codabar");
    case Symbology::kJan8:
      return same("EAN-8");
    case Symbology::kJan13:
      return same("EAN-13");
    case Symbology::kUpcA:
      return same("UPC-A");
    case Symbology::kUpcE:
      return same("UPC-E");
    case Symbology::kItf:
      return same("ITF");
    case Symbology::kDataBar14:
      return IsStacked(content) ? std::nullopt : std::optional(same("DataBar"));
    case Symbology::kDataBarExpanded:
      return IsStacked(content) ? std::nullopt : std::optional(same("DataBarExpanded"));
    case Symbology::kQr:
      return same("QRCode");
    case Symbology::kDataMatrix:
      return same("DataMatrix");
    case Symbology::kPdf417:
      return same("PDF417");
    default:
      return std::nullopt;
  }
}

// ZBar 0.23.92.
std::optional<ReaderRule> ZbarRule(Symbology symbology) {
  switch (symbology) {
    case Symbology::kCode39:
      return ReaderRule{"code39", {"CODE-39"}};
    case Symbology::kCode93:
      return ReaderRule{"code93", {"CODE-93"}};
    case Symbology::kCode128:
    case Symbology::kGs1_128:
      return ReaderRule{"code128", {"CODE-128"}};
    case Symbology::kNw7:
      return ReaderRule{"codabar", {"Codabar"}};
    case Symbology::kJan8:
      return ReaderRule{"ean8", {"EAN-8"}};
    case Symbology::kJan13:
      return ReaderRule{"ean13", {"EAN-13"}};
    case Symbology::kUpcA:
      // UPC-A is a kind of EAN-13 to it.
      return ReaderRule{"ean13 upca", {"UPC-A"}};
    case Symbology::kUpcE:
      return ReaderRule{"upce", {"UPC-E"}};
    case Symbology::kItf:
      return ReaderRule{"i25", {"I2/5"}};
    case Symbology::kDataBar14:
      return ReaderRule{"databar", {"DataBar"}};
    case Symbology::kDataBarExpanded:
      return ReaderRule{"databar-exp", {"DataBar-Exp"}};
    case Symbology::kQr:
      return ReaderRule{"qrcode", {"QR-Code"}};
    default:
      return std::nullopt;
  }
}

// zxing-wasm, a current ZXing.
std::optional<ReaderRule> WasmRule(Symbology symbology, const Content& content) {
  switch (symbology) {
    case Symbology::kCode39:
      // Without full ASCII, which no symbol announces.
      return ReaderRule{"Code39Std", {"Code39", "Code39Std"}};
    case Symbology::kCode93:
      return ReaderRule{"Code93", {"Code93"}};
    case Symbology::kCode128:
    case Symbology::kGs1_128:
      return ReaderRule{"Code128", {"Code128"}};
    case Symbology::kNw7:
      return ReaderRule{"Codabar", {"Codabar"}};
    case Symbology::kJan8:
      return ReaderRule{"EAN8", {"EAN8"}};
    case Symbology::kJan13:
      return ReaderRule{"EAN13", {"EAN13"}};
    case Symbology::kUpcA:
      return ReaderRule{"UPCA", {"UPCA"}};
    case Symbology::kUpcE:
      return ReaderRule{"UPCE", {"UPCE"}};
    case Symbology::kItf:
      // Asked for ITF alone it takes two digits for a symbol; among all others, as it is mostly used, four.
      return ReaderRule{"", {"ITF", "ITF14"}};
    case Symbology::kDataBar14:
      return IsStacked(content) ? ReaderRule{"DataBar", {"DataBarStk", "DataBarStkOmni"}}
                                : ReaderRule{"DataBar", {"DataBarOmni"}};
    case Symbology::kDataBarLimited:
      return ReaderRule{"DataBarLtd", {"DataBarLtd"}};
    case Symbology::kDataBarExpanded:
      // A symbol whose pairs fit one row is no stacked one.
      return IsStacked(content) ? ReaderRule{"DataBarExp DataBarExpStk", {"DataBarExp", "DataBarExpStk"}}
                                : ReaderRule{"DataBarExp DataBarExpStk", {"DataBarExp"}};
    case Symbology::kQr:
      return ReaderRule{"QRCode", {"QRCode", "QRCodeModel2"}};
    case Symbology::kDataMatrix:
      return ReaderRule{"DataMatrix", {"DataMatrix"}};
    case Symbology::kPdf417:
      return ReaderRule{"PDF417", {"PDF417"}};
    default:
      return std::nullopt;
  }
}

// The decoders of this folder.
std::optional<ReaderRule> OwnRule(Symbology symbology) {
  switch (symbology) {
    case Symbology::kMatrix2of5:
    case Symbology::kNec2of5:
    case Symbology::kYubinCustomer:
      return ReaderRule{"", {"own"}};
    default:
      return std::nullopt;
  }
}

bool IsShort(const Content& content, std::size_t fewest) {
  return content.data.size() < fewest;
}

bool HasSeparator(const Content& content) {
  return content.data.find('\x1D') != std::string::npos;
}

// The identifiers, of all that there are, that libzxing 1.4 does not know, or not to be more than two digits:
// tried one by one.
bool HasNewIdentifier(const Content& content) {
  constexpr auto kNew = std::to_array<std::string_view>(
      {"03",   "4309", "4330", "4331", "4332", "4333", "7011", "7041", "716",  "717",  "7241", "7242",
       "7250", "7251", "7252", "7253", "7254", "7255", "7256", "7257", "7258", "7259", "8014", "8030"});
  return std::ranges::any_of(kNew, [&](std::string_view ai) {
    return content.elements.find("(" + std::string(ai) + ")") != std::string::npos;
  });
}

bool IsGtinAlone(const Content& content) {
  constexpr std::size_t kLength = 18;
  return content.elements.starts_with("(01)") && content.elements.size() == kLength;
}

bool IsTurned(const Json& request) {
  const auto rotate = request.find("rotate");
  return rotate != request.end() && rotate->is_number() && rotate->get<int>() != 0;
}

bool HasInkAdjusted(const Json& request) {
  const auto adjust = request.find("bar_adjust");
  return adjust != request.end() && adjust->is_number() && adjust->get<int>() != 0;
}

Json Without(Json request, const char* field) {
  request.erase(field);
  return request;
}

struct Limit {
  ReaderId reader;
  Symbology symbology;
  bool (*applies)(const Content& content, const Json& request);
  ReaderLimit limit;
};

constexpr ReaderLimit kInk = {"wants bars nearer to their width", false,
                              [](Json request) { return Without(std::move(request), "bar_adjust"); }};
constexpr ReaderLimit kTwoCharacters = {"wants two characters between start and stop"};

constexpr auto kLimits = std::to_array<Limit>({
    {ReaderId::kZxing, Symbology::kNw7,
     [](const Content& content, const Json&) { return IsShort(content, 4); }, kTwoCharacters},
    {ReaderId::kZbar, Symbology::kNw7, [](const Content& content, const Json&) { return IsShort(content, 4); },
     kTwoCharacters},
    {ReaderId::kWasm, Symbology::kNw7, [](const Content& content, const Json&) { return IsShort(content, 4); },
     kTwoCharacters},
    {ReaderId::kZxing, Symbology::kItf, [](const Content& content, const Json&) { return IsShort(content, 6); },
     {"wants six digits"}},
    {ReaderId::kZbar, Symbology::kItf, [](const Content& content, const Json&) { return IsShort(content, 6); },
     {"wants six digits"}},
    {ReaderId::kWasm, Symbology::kItf, [](const Content& content, const Json&) { return IsShort(content, 4); },
     {"wants four digits"}},
    // Interleaved 2 of 5 is so poor in marks of its own that letters pass for it. Without text the picture
    // has to be read.
    {ReaderId::kZbar, Symbology::kItf,
     [](const Content&, const Json& request) { return request.value("show_text", true); },
     {"takes a line of text for six digits", true,
      [](Json request) {
        request["show_text"] = false;
        return request;
      }}},
    // Wide and narrow elements are told apart by one threshold for bars and spaces.
    {ReaderId::kZxing, Symbology::kCode39,
     [](const Content&, const Json& request) { return HasInkAdjusted(request); }, kInk},
    {ReaderId::kWasm, Symbology::kCode39,
     [](const Content&, const Json& request) { return HasInkAdjusted(request); }, kInk},
    {ReaderId::kZxing, Symbology::kNw7,
     [](const Content&, const Json& request) { return HasInkAdjusted(request); }, kInk},
    {ReaderId::kWasm, Symbology::kNw7,
     [](const Content&, const Json& request) { return HasInkAdjusted(request); }, kInk},
    // ZXing reads both number systems.
    {ReaderId::kZbar, Symbology::kUpcE,
     [](const Content& content, const Json&) { return content.data.front() == '1'; },
     {"knows number system 0 only"}},
    {ReaderId::kZxing, Symbology::kDataBarExpanded,
     [](const Content& content, const Json&) { return IsGtinAlone(content); },
     {"wants an element behind the GTIN"}},
    {ReaderId::kZxing, Symbology::kDataBarExpanded,
     [](const Content& content, const Json&) { return HasNewIdentifier(content); },
     {"does not know the application identifier"}},
    // The character behind it comes out wrong.
    {ReaderId::kZbar, Symbology::kDataBarExpanded,
     [](const Content& content, const Json&) { return HasSeparator(content); },
     {"takes FNC1 for no return to numeric mode", true}},
    {ReaderId::kZbar, Symbology::kDataBarExpanded,
     [](const Content& content, const Json&) { return IsStacked(content); },
     {"reads some of the stacked symbols only", false,
      [](Json request) {
        request["form"] = "row";
        return Without(Without(Without(std::move(request), "pairs_per_row"), "width"), "height");
      }}},
    // It begins in the middle of the picture, which is at the symbol's edge then.
    {ReaderId::kZxing, Symbology::kDataMatrix,
     [](const Content&, const Json& request) { return request.contains("caption"); },
     {"looks for a small symbol at the middle of the picture", false,
      [](Json request) { return Without(std::move(request), "caption"); }}},
    {ReaderId::kZxing, Symbology::kPdf417,
     [](const Content&, const Json& request) { return IsTurned(request); },
     {"misses some symbols that are turned", false,
      [](Json request) {
        const int turn = request["rotate"].get<int>();
        if (turn % 180 != 0 && request.contains("width")) {
          std::swap(request["width"], request["height"]);
        }
        return Without(std::move(request), "rotate");
      }}},
});

}  // namespace

std::string_view NameOf(ReaderId reader) {
  constexpr std::array<std::string_view, kReaders> kNames = {"zxing", "zbar", "wasm", "own"};
  return kNames[static_cast<std::size_t>(reader)];
}

std::optional<ReaderRule> RuleOf(ReaderId reader, Symbology symbology, const Content& content) {
  switch (reader) {
    case ReaderId::kZxing:
      return ZxingRule(symbology, content);
    case ReaderId::kZbar:
      return ZbarRule(symbology);
    case ReaderId::kWasm:
      return WasmRule(symbology, content);
    case ReaderId::kOwn:
      return OwnRule(symbology);
  }
  return std::nullopt;
}

std::string ExpectedData(ReaderId reader, Symbology symbology, const Content& content) {
  if (reader == ReaderId::kZxing && symbology == Symbology::kDataBar14) {
    return content.data.substr(2);
  }
  if (reader == ReaderId::kZxing && symbology == Symbology::kDataBarExpanded) {
    return content.elements;
  }
  // As the GTIN-13 that they stand for.
  if (reader == ReaderId::kWasm && symbology == Symbology::kUpcA) {
    return "0" + content.data;
  }
  if (reader == ReaderId::kWasm && symbology == Symbology::kUpcE) {
    return "0" + UpcAOfUpcE(content.data);
  }
  return content.data;
}

std::vector<ReaderLimit> LimitsOf(ReaderId reader, Symbology symbology, const Content& content,
                                  const Json& request) {
  std::vector<ReaderLimit> limits;
  for (const Limit& limit : kLimits) {
    if (limit.reader == reader && limit.symbology == symbology && limit.applies(content, request)) {
      limits.push_back(limit.limit);
    }
  }
  return limits;
}

bool HasLimits(ReaderId reader, Symbology symbology) {
  return std::ranges::any_of(
      kLimits, [&](const Limit& limit) { return limit.reader == reader && limit.symbology == symbology; });
}

// ZBar finds edges from the slopes between neighbouring dots, which bars and spaces of one dot are too narrow
// for. Of such symbols it sees about nine in ten, and once in some thousand it takes characters for others
// whose edges are alike: in Code 128, "L" for "%".
bool MisreadsSingleDots(ReaderId reader, Symbology symbology) {
  return reader == ReaderId::kZbar && symbology != Symbology::kQr;
}

}  // namespace barcode::test
