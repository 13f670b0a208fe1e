// The PNG writer of labels alone, beside the bare encoder (IMG_SavePNG_RW) on the same pixels.
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/draws.h"
#include "label/composition.h"
#include "label/fields.h"
#include "label/json_request.h"
#include "label/symbol.h"
#include "label/writers.h"

namespace barcode::bench {
namespace {

struct Picture {
  std::string name;
  std::string json;
};

// Printable characters without a pattern, none that JSON escapes.
std::string Text(std::size_t length) {
  std::mt19937 random(15948);
  std::string text(length, ' ');
  for (char& character : text) {
    character = static_cast<char>('A' + random() % 26);
  }
  return text;
}

std::vector<Picture> Pictures() {
  return {
      {"Code 128 without text", R"({"type": "code128", "text": "ABC-12345", "show_text": false})"},
      {"Code 39", R"({"type": "code39", "text": "ABC-1234"})"},
      {"Code 39 turned", R"({"type": "code39", "text": "ABC-1234", "rotate": 90})"},
      {"JAN-13", R"({"type": "jan13", "text": "490123456789"})"},
      {"DataBar", R"({"type": "databar", "text": "2001234567890"})"},
      {"QR version 10", R"({"type": "qr", "qr_version": 10, "text": ")" + Text(120) + "\"}"},
      {"QR of 2,000 bytes",
       R"({"type": "qr", "error_correction_level": "L", "string_encoding": "utf-8", "text": ")" +
           Text(2'000) + "\"}"},
      {"4 by 6 inches at 600 dpi",
       R"({"type": "code128", "text": "340123450000000018", "width": 2400, "height": 3600, "dpi": 600})"},
  };
}

label::Drawing DrawingOf(const std::string& json) {
  const label::Request request = label::ParseRequest(json);
  const label::TypeInfo& type = label::ValidateRequest(request);
  return label::Compose(type, request, label::EncodeSymbol(type.type, request)).drawing;
}

void Write(benchmark::State& state, const label::Drawing& drawing) {
  std::size_t bytes = 0;
  for ([[maybe_unused]] const auto _ : state) {
    bytes = label::WritePng(drawing).size();
    benchmark::DoNotOptimize(bytes);
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}

[[maybe_unused]] const bool kRegistered = [] {
  for (const Picture& picture : Pictures()) {
    const std::string name = "LabelPng/" + picture.name;
    benchmark::RegisterBenchmark((name + "/writer").c_str(), [picture](benchmark::State& state) {
      Write(state, DrawingOf(picture.json));
    });
    benchmark::RegisterBenchmark((name + "/bare IMG_SavePNG_RW").c_str(), [picture](benchmark::State& state) {
      BarePng(state, label::WritePng(DrawingOf(picture.json)));
    });
  }
  return true;
}();

}  // namespace
}  // namespace barcode::bench
