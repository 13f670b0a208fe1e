#include "label_proof/reading_rules.h"

#include <array>

namespace barcode::test {
namespace {

bool IsStacked(const Content& content) {
  const auto form = content.options.find("form");
  return form != content.options.end() && form->get<std::string>().starts_with("stacked");
}

// libzxing 1.4. It aborts the process on stacked DataBar symbols (an assertion of its own fails), and does
// not know DataBar Limited.
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
      return ReaderRule{"ITF", {"ITF", "ITF14"}};
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

struct Limit {
  ReaderId reader;
  Symbology symbology;
  bool (*applies)(const Content& content);
  ReaderLimit limit;
};

constexpr auto kLimits = std::to_array<Limit>({
    {ReaderId::kZbar,
     Symbology::kCode39,
     [](const Content& content) { return content.data.size() < 2; },
     {"wants more than one character"}},
    {ReaderId::kZxing,
     Symbology::kNw7,
     [](const Content& content) { return content.data.size() < 4; },
     {"wants two characters between start and stop"}},
    {ReaderId::kZbar,
     Symbology::kNw7,
     [](const Content& content) { return content.data.size() < 4; },
     {"wants two characters between start and stop"}},
    {ReaderId::kWasm,
     Symbology::kNw7,
     [](const Content& content) { return content.data.size() < 4; },
     {"wants two characters between start and stop"}},
    {ReaderId::kZxing,
     Symbology::kItf,
     [](const Content& content) { return content.data.size() < 6; },
     {"wants six digits"}},
    {ReaderId::kZbar,
     Symbology::kItf,
     [](const Content& content) { return content.data.size() < 6; },
     {"wants six digits"}},
    {ReaderId::kWasm,
     Symbology::kItf,
     [](const Content& content) { return content.data.size() < 4; },
     {"wants four digits"}},
    // It does not know that FNC1 returns to numeric mode: the character behind it comes out wrong.
    {ReaderId::kZbar,
     Symbology::kDataBarExpanded,
     [](const Content& content) { return content.data.find('\x1D') != std::string::npos; },
     {"takes FNC1 for no return to numeric mode", true}},
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
  if (reader == ReaderId::kWasm && symbology == Symbology::kUpcE) {
    return "0" + UpcAOfUpcE(content.data);
  }
  return content.data;
}

std::optional<ReaderLimit> LimitOf(ReaderId reader, Symbology symbology, const Content& content) {
  for (const Limit& limit : kLimits) {
    if (limit.reader == reader && limit.symbology == symbology && limit.applies(content)) {
      return limit.limit;
    }
  }
  return std::nullopt;
}

}  // namespace barcode::test
