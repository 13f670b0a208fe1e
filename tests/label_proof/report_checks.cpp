#include "label_proof/report_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <set>
#include <string_view>

namespace barcode::test {
namespace {

using Faults = std::vector<std::string>;

void Expect(Faults& faults, bool holds, const std::string& fault) {
  if (!holds) {
    faults.push_back(fault);
  }
}

std::string Pair(const char* what, double wanted, double found) {
  return std::string(what) + " " + std::to_string(found) + " instead of " + std::to_string(wanted);
}

void ExpectNumber(Faults& faults, const char* what, int wanted, int found) {
  Expect(faults, wanted == found, Pair(what, wanted, found));
}

void ExpectNear(Faults& faults, const char* what, double wanted, double found, double tolerance) {
  Expect(faults, std::abs(wanted - found) <= tolerance, Pair(what, wanted, found));
}

double RealIn(const Json& object, const char* field) {
  const auto found = object.find(field);
  return found != object.end() && found->is_number() ? found->get<double>() : 0;
}

constexpr double kMillimetresPerInch = 25.4;
constexpr double kPixelsPerInch = 96;  // of a PDF without a resolution

// Dots per inch of the picture; 0 when it has no physical size.
int DpiOf(const ProofLabel& label) {
  return NumberIn(label.request, "dpi");
}

// ---- The report by itself ----

void CheckReport(const ProofLabel& label, Faults& faults) {
  const Json& report = label.made.report;
  const SymbologyInfo& info = EverySymbologyInfo()[static_cast<std::size_t>(label.symbology)];
  Expect(faults, report.value("ok", false), "the report's ok is not true");
  Expect(faults, report.value("type", "") == info.name, "the report's type is not the first name");
  Expect(faults, report.value("format", "") == label.request.value("format", "png"), "format");
  ExpectNumber(faults, "bytes", static_cast<int>(label.made.data.size()), NumberIn(report, "bytes"));
  const std::string& shown = label.content.shown;
  Expect(faults, shown.empty() || report.value("text", "") == shown,
         "the report's text is " + report.value("text", "") + " instead of " + shown);
  if (label.request.contains("module")) {
    ExpectNumber(faults, "module", NumberIn(label.request, "module"), ModuleOf(label));
  }
  if (label.request.contains("module_mm")) {
    const double dots = RealIn(label.request, "module_mm") * DpiOf(label) / kMillimetresPerInch;
    ExpectNumber(faults, "module", static_cast<int>(std::lround(dots)), ModuleOf(label));
  }
  const Json modules = report.value("modules", Json::object());
  if (label.content.columns) {
    ExpectNumber(faults, "columns", *label.content.columns, NumberIn(modules, "columns"));
  }
  if (label.content.rows) {
    ExpectNumber(faults, "rows", *label.content.rows, NumberIn(modules, "rows"));
  }
}

// No label here is pale, light on dark or without room; those that no reader knows say so; nothing is said
// twice.
void CheckWarnings(const ProofLabel& label, Faults& faults) {
  std::set<std::string> seen;
  bool saysNoReader = false;
  for (const Json& warning : label.made.report.value("warnings", Json::array())) {
    const std::string code = warning.value("code", "");
    Expect(faults, seen.insert(warning.dump()).second, "said twice: " + warning.dump());
    Expect(faults, code != "low_contrast" && code != "light_on_dark" && code != "quiet_zone",
           "a needless warning: " + warning.dump());
    saysNoReader = saysNoReader || code == "no_reader";
  }
  const bool isUnknown = label.symbology == Symbology::kMatrix2of5 ||
                         label.symbology == Symbology::kNec2of5 ||
                         label.symbology == Symbology::kYubinCustomer;
  Expect(faults, saysNoReader == isUnknown, "the warning no_reader is needless or missing");
}

struct Sides {
  int left;
  int right;
  int top;
  int bottom;

  bool operator==(const Sides&) const = default;
};

// By the table of the manual.
Sides StandardQuietZone(Symbology symbology) {
  switch (symbology) {
    case Symbology::kJan13:
      return {11, 7, 0, 0};
    case Symbology::kJan8:
      return {7, 7, 0, 0};
    case Symbology::kUpcA:
      return {9, 9, 0, 0};
    case Symbology::kUpcE:
      return {9, 7, 0, 0};
    case Symbology::kDataBar14:
    case Symbology::kDataBarExpanded:
      return {1, 1, 0, 0};
    case Symbology::kDataBarLimited:
      return {1, 5, 0, 0};
    case Symbology::kQr:
    case Symbology::kYubinCustomer:
      return {4, 4, 4, 4};
    case Symbology::kDataMatrix:
      return {1, 1, 1, 1};
    case Symbology::kPdf417:
      return {2, 2, 2, 2};
    default:
      return {10, 10, 0, 0};
  }
}

Sides QuietZoneOf(const ProofLabel& label) {
  const Json zone = label.made.report.value("quiet_zone", Json::object());
  return {NumberIn(zone, "left"), NumberIn(zone, "right"), NumberIn(zone, "top"), NumberIn(zone, "bottom")};
}

void CheckQuietZoneReport(const ProofLabel& label, Faults& faults) {
  const auto asked = label.request.find("quiet_zone");
  Sides wanted = StandardQuietZone(label.symbology);
  if (asked != label.request.end() && asked->is_number()) {
    const int all = asked->get<int>();
    wanted = {all, all, all, all};
  }
  Expect(faults, QuietZoneOf(label) == wanted,
         "quiet_zone " + label.made.report.value("quiet_zone", Json()).dump());
}

// ---- Sizes ----

// "pHYs" of a PNG: pixels per metre; 0 without one.
std::uint32_t PixelsPerMetre(std::string_view png) {
  const std::size_t at = png.find("pHYs");
  if (at == std::string_view::npos || at + 8 > png.size()) {
    return 0;
  }
  std::uint32_t number = 0;
  for (std::size_t i = 4; i < 8; ++i) {
    number = number << 8U | static_cast<unsigned char>(png[at + i]);
  }
  return number;
}

// An attribute of the first element of that name.
std::string AttributeOf(std::string_view document, std::string_view element, const std::string& name) {
  const std::size_t start = document.find(element);
  if (start == std::string_view::npos) {
    return {};
  }
  const std::string_view tag = document.substr(start, document.find('>', start) - start);
  const std::string mark = " " + name + "=\"";
  const std::size_t value = tag.find(mark);
  if (value == std::string_view::npos) {
    return {};
  }
  const std::string_view rest = tag.substr(value + mark.size());
  return std::string(rest.substr(0, rest.find('"')));
}

void CheckSvgSize(const ProofLabel& label, int width, int height, Faults& faults) {
  const std::string view = "0 0 " + std::to_string(width) + " " + std::to_string(height);
  Expect(faults, AttributeOf(label.made.data, "<svg", "viewBox") == view, "viewBox is not " + view);
  const std::string written = AttributeOf(label.made.data, "<svg", "width");
  const int dpi = DpiOf(label);
  Expect(faults, written.ends_with("mm") == (dpi != 0), "unit of the SVG's width: " + written);
  const double wanted = dpi == 0 ? width : width * kMillimetresPerInch / dpi;
  ExpectNear(faults, "width of the SVG", wanted, std::strtod(written.c_str(), nullptr),
             0.001 * wanted + 0.002);
}

void CheckSize(const ProofLabel& label, Faults& faults) {
  const Json& report = label.made.report;
  const int width = NumberIn(report, "width");
  const int height = NumberIn(report, "height");
  ExpectNumber(faults, "width of the picture", width, label.picture.width);
  ExpectNumber(faults, "height of the picture", height, label.picture.height);
  if (label.request.contains("width")) {
    ExpectNumber(faults, "width", NumberIn(label.request, "width"), width);
    ExpectNumber(faults, "height", NumberIn(label.request, "height"), height);
  }
  const int dpi = DpiOf(label);
  if (dpi != 0) {
    ExpectNear(faults, "width_mm", width * kMillimetresPerInch / dpi, RealIn(report, "width_mm"), 0.006);
    ExpectNear(faults, "height_mm", height * kMillimetresPerInch / dpi, RealIn(report, "height_mm"), 0.006);
  }
  switch (label.format) {
    case PictureFormat::kPng:
      ExpectNumber(faults, "pHYs", static_cast<int>(std::lround(dpi / 0.0254)),
                   static_cast<int>(PixelsPerMetre(label.made.data)));
      break;
    case PictureFormat::kSvg:
      CheckSvgSize(label, width, height, faults);
      break;
    case PictureFormat::kPdf: {
      const double inch = dpi == 0 ? kPixelsPerInch : dpi;
      const Millimetres page = PageOfPdf(label.made.data);
      ExpectNear(faults, "width of the page", width * kMillimetresPerInch / inch, page.width, 0.01);
      ExpectNear(faults, "height of the page", height * kMillimetresPerInch / inch, page.height, 0.01);
      break;
    }
  }
}

// ---- The symbol in the picture ----

// Rectangle of the symbol's bars or modules in the picture before its turn; of linear symbols the rows in
// which every bar stands.
struct Box {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

int FirstInkedRow(const DarkPixels& pixels) {
  int y = 0;
  while (y < pixels.Height() && !pixels.AnyIn(0, y, pixels.Width(), y + 1)) {
    ++y;
  }
  return y;
}

bool IsStackedForm(const ProofLabel& label) {
  const auto form = label.content.options.find("form");
  return form != label.content.options.end() && form->get<std::string>().starts_with("stacked");
}

int RowsBelow(const ProofLabel& label, const DarkPixels& pixels, int top) {
  const int module = ModuleOf(label);
  const int rows = NumberIn(label.made.report.value("modules", Json::object()), "rows");
  switch (EverySymbologyInfo()[static_cast<std::size_t>(label.symbology)].family) {
    case Family::kMatrix:
      return rows * module;
    case Family::kFourState:
      return 6 * module;
    default:
      break;
  }
  int bottom = top + 1;
  const bool stacked = IsStackedForm(label);
  while (bottom < pixels.Height() &&
         (stacked ? pixels.AnyIn(0, bottom, pixels.Width(), bottom + 1) : pixels.SameRows(top, bottom))) {
    ++bottom;
  }
  return bottom - top;
}

std::optional<Box> SymbolIn(const ProofLabel& label, const DarkPixels& pixels) {
  Box box;
  box.top = FirstInkedRow(pixels);
  if (box.top == pixels.Height()) {
    return std::nullopt;
  }
  box.bottom = std::min(box.top + RowsBelow(label, pixels, box.top), pixels.Height());
  box.left = 0;
  while (!pixels.AnyIn(box.left, box.top, box.left + 1, box.bottom)) {
    ++box.left;
  }
  box.right = pixels.Width();
  while (!pixels.AnyIn(box.right - 1, box.top, box.right, box.bottom)) {
    --box.right;
  }
  return box;
}

DarkPixels Upright(const ProofLabel& label) {
  return DarkPixels(Turned(label.picture, 4 - QuartersOf(label)));
}

void CheckSymbol(const ProofLabel& label, Faults& faults) {
  const DarkPixels pixels = Upright(label);
  const std::optional<Box> found = SymbolIn(label, pixels);
  if (!found) {
    faults.emplace_back("the picture is empty");
    return;
  }
  const Box& box = *found;
  const int module = ModuleOf(label);
  const Sides quiet = QuietZoneOf(label);
  const int spread = std::abs(NumberIn(label.request, "bar_adjust"));
  const int columns = NumberIn(label.made.report.value("modules", Json::object()), "columns");
  // DataBar begins and ends with a space here and there.
  Expect(faults, box.right - box.left <= columns * module + spread, "ink beyond the symbol's columns");
  Expect(faults, box.right - box.left >= (columns - 2) * module - spread, "fewer columns than reported");
  Expect(faults, box.left >= quiet.left * module, "ink in the left quiet zone");
  Expect(faults, pixels.Width() - box.right >= quiet.right * module - std::max(spread, 0),
         "ink in the right quiet zone");
  Expect(faults, box.top >= quiet.top * module, "ink in the upper quiet zone");
  Expect(faults, box.bottom + quiet.bottom * module <= pixels.Height() + spread, "lower quiet zone cut");
  const bool isMatrix =
      quiet.bottom > 0 &&
      (label.symbology == Symbology::kQr || label.symbology == Symbology::kDataMatrix ||
       label.symbology == Symbology::kPdf417 || label.symbology == Symbology::kYubinCustomer);
  Expect(
      faults,
      !isMatrix || !pixels.AnyIn(0, box.bottom + spread, pixels.Width(), box.bottom + quiet.bottom * module),
      "ink in the lower quiet zone");
  Expect(faults, box.bottom - box.top >= 5 * module || isMatrix, "bars below five modules");
  if (label.request.contains("width")) {
    return;
  }
  ExpectNumber(faults, "width for symbol and quiet zone", (columns + quiet.left + quiet.right) * module,
               pixels.Width());
  const bool isLinear =
      EverySymbologyInfo()[static_cast<std::size_t>(label.symbology)].family == Family::kLinear;
  if (isLinear && label.request.contains("height") && !IsStackedForm(label)) {
    ExpectNumber(faults, "height of the bars", NumberIn(label.request, "height"), box.bottom - box.top);
  }
}

// Rendered with a margin, a document shows what stands outside of its picture.
void CheckNothingOutside(const ProofLabel& label, Faults& faults) {
  if (label.format != PictureFormat::kSvg) {
    return;
  }
  constexpr int kMargin = 8;
  const GreyImage image = GreyOfSvg(label.made.data, label.picture.width, label.picture.height, kMargin);
  const int right = image.width - kMargin;
  const int bottom = image.height - kMargin;
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const bool inside = x >= kMargin && x < right && y >= kMargin && y < bottom;
      const std::size_t at =
          static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(x);
      if (!inside && image.pixels[at] < 250) {
        faults.emplace_back("ink outside of the picture");
        return;
      }
    }
  }
}

// How dark the dots of a picture are before its turn, from 0, the lightest, to 1.
class Ink {
 public:
  explicit Ink(const ProofLabel& label) : m_image(Turned(label.picture, 4 - QuartersOf(label))) {
    const auto [darkest, lightest] = std::ranges::minmax_element(m_image.pixels);
    m_lightest = *lightest;
    m_range = std::max(*lightest - *darkest, 1);
  }

  int Width() const { return m_image.width; }
  int Height() const { return m_image.height; }
  double At(int x, int y) const {
    const std::size_t at =
        static_cast<std::size_t>(y) * static_cast<std::size_t>(m_image.width) + static_cast<std::size_t>(x);
    return static_cast<double>(m_lightest - m_image.pixels[at]) / m_range;
  }
  // The darkest of a dot and its neighbours.
  double Around(int x, int y) const {
    double darkest = 0;
    for (int aboutY = std::max(y - 1, 0); aboutY <= std::min(y + 1, Height() - 1); ++aboutY) {
      for (int aboutX = std::max(x - 1, 0); aboutX <= std::min(x + 1, Width() - 1); ++aboutX) {
        darkest = std::max(darkest, At(aboutX, aboutY));
      }
    }
    return darkest;
  }

 private:
  GreyImage m_image;
  int m_lightest = 0;
  int m_range = 1;
};

// Whether a picture has ink from a row on where another one of the same size has none. Edges of text are
// soft, and each renderer's own.
bool HasInkBesides(const Ink& ink, const Ink& other, int top) {
  constexpr double kInk = 0.5;
  constexpr double kTrace = 0.15;
  for (int y = top; y < ink.Height(); ++y) {
    for (int x = 0; x < ink.Width(); ++x) {
      if (ink.At(x, y) >= kInk && other.Around(x, y) < kTrace) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace

std::vector<std::string> FaultsOf(const ProofLabel& label) {
  Faults faults;
  CheckReport(label, faults);
  CheckWarnings(label, faults);
  CheckQuietZoneReport(label, faults);
  CheckSize(label, faults);
  if (faults.empty()) {
    CheckSymbol(label, faults);
    CheckNothingOutside(label, faults);
  }
  return faults;
}

std::vector<std::string> DifferencesOf(const ProofLabel& label, const ProofLabel& other) {
  const DarkPixels pixels = Upright(label);
  const DarkPixels others = Upright(other);
  if (pixels.Width() != others.Width() || pixels.Height() != others.Height()) {
    return {"pictures of different sizes"};
  }
  const std::optional<Box> box = SymbolIn(label, pixels);
  if (!box) {
    return {"the picture is empty"};
  }
  for (int y = 0; y < box->bottom; ++y) {
    for (int x = 0; x < pixels.Width(); ++x) {
      if (pixels.At(x, y) != others.At(x, y)) {
        return {"the symbols differ at " + std::to_string(x) + ", " + std::to_string(y)};
      }
    }
  }
  const Ink ink(label);
  const Ink otherInk(other);
  if (HasInkBesides(ink, otherInk, box->bottom) || HasInkBesides(otherInk, ink, box->bottom)) {
    return {"text stands where the other picture has none"};
  }
  return {};
}

}  // namespace barcode::test
