// What labels cost beside the library's own draws: the same symbol, the same size, in one run.
#include <array>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "base/line.h"
#include "bench/draws.h"
#include "label/composition.h"
#include "label/fields.h"
#include "label/json_request.h"
#include "label/label.h"
#include "label/symbol.h"

namespace barcode::bench {
namespace {

struct Subject {
  const char* name;
  int number;  // of the symbology
  const char* type;
  const char* text;         // of a label
  const char* libraryText;  // the same of a draw
};

constexpr std::array kSubjects = {
    Subject{"Code39", BARCODE_CODE39, "code39", "ABC-1234", "ABC-1234"},
    Subject{"Code128", BARCODE_CODE128, "code128", "Pallet 771204", "Pallet 771204"},
    Subject{"GS1-128", BARCODE_GS1_128, "gs1-128", "(01)04912345678904(10)LOT42",
            "{FNC1}0104912345678904{AI}10LOT42"},
    Subject{"Jan13", BARCODE_JAN13, "jan13", "490123456789", "490123456789"},
    Subject{"ITF", BARCODE_ITF, "itf", "12345678901231", "12345678901231"},
    Subject{"DataBar", BARCODE_GS1_DATABAR_14, "databar", "2001234567890", "2001234567890"},
    Subject{"QR", BARCODE_QR, "qr", "https://example.com/labels/20261122",
            "https://example.com/labels/20261122"},
    Subject{"DataMatrix", BARCODE_DATAMATRIX, "datamatrix", "LOT42-20261122", "LOT42-20261122"},
    Subject{"PDF417", BARCODE_PDF417, "pdf417", "LOT42-20261122, pallet 771204",
            "LOT42-20261122, pallet 771204"},
    Subject{"Yubin", BARCODE_YUBIN_CUSTOMER, "yubin", "15400233-16-4-205", "15400233-16-4-205"},
};

constexpr std::array kFormats = {"png", "svg", "pdf"};

std::string JsonOf(const Subject& subject, std::string_view format) {
  return Line(R"({"type": ")", subject.type, R"(", "text": ")", subject.text, R"(", "format": ")", format,
              "\"}");
}

label::Label Delivered(label::Label made) {
  if (!made.ok) {
    throw std::runtime_error(made.report);
  }
  return made;
}

void FromStruct(benchmark::State& state, const std::string& json) {
  const label::Request request = label::ParseRequest(json);
  std::size_t bytes = 0;
  for ([[maybe_unused]] const auto _ : state) {
    bytes = Delivered(label::Make(request)).data.size();
    benchmark::DoNotOptimize(bytes);
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}

void FromJson(benchmark::State& state, const std::string& json) {
  for ([[maybe_unused]] const auto _ : state) {
    benchmark::DoNotOptimize(Delivered(label::MakeFromJson(json)).data.data());
  }
}

// The library's draw of the same symbol at the size of the label.
void LibrarySvg(benchmark::State& state, const Subject& subject, const std::string& json) {
  const label::Request request = label::ParseRequest(json);
  const label::TypeInfo& type = label::ValidateRequest(request);
  const label::Composition composition =
      label::Compose(type, request, label::EncodeSymbol(type.type, request));
  Drawing drawing{.type = subject.number, .text = subject.libraryText, .setUp = {}};
  drawing.width = composition.columns * composition.module;
  drawing.height = composition.drawing.height;
  DrawAndSvg(state, drawing);
}

void Register(const Subject& subject, const char* name, const std::function<void(benchmark::State&)>& run) {
  benchmark::RegisterBenchmark(Line("Label/", subject.name, '/', name).c_str(), run);
}

[[maybe_unused]] const bool kRegistered = [] {
  for (const Subject& subject : kSubjects) {
    const std::string svg = JsonOf(subject, "svg");
    Register(subject, "library draw+SVG", [=](benchmark::State& state) { LibrarySvg(state, subject, svg); });
    for (const std::string format : kFormats) {
      const std::string json = JsonOf(subject, format);
      Register(subject, format.c_str(), [=](benchmark::State& state) { FromStruct(state, json); });
      Register(subject, Line(format, " from JSON").c_str(),
               [=](benchmark::State& state) { FromJson(state, json); });
    }
  }
  return true;
}();

}  // namespace
}  // namespace barcode::bench
