#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <string_view>

#include "barcode.h"

namespace barcode::bench {

// One symbol: its object, made once, and the draw of one text into one box.
struct Drawing {
  int type = 0;
  std::string text;
  int width = 300;
  int height = 100;
  // Options set once; may be empty.
  std::function<void(BarcodeHandle)> setUp;
};

// The benchmarks of a symbol: draw + PNG bytes and draw + SVG document, through the exported functions.
void DrawAndPng(benchmark::State& state, const Drawing& drawing);
void DrawAndSvg(benchmark::State& state, const Drawing& drawing);

// The encoder alone (IMG_SavePNG_RW), on the same pixels as the drawing's.
void BarePng(benchmark::State& state, const Drawing& drawing);

// The same on the pixels of a PNG file.
void BarePng(benchmark::State& state, std::string_view png);

// Registers "<name>/draw+PNG" and "<name>/draw+SVG".
void RegisterDraws(const std::string& name, const Drawing& drawing);

// Registers "<name>/bare IMG_SavePNG_RW".
void RegisterBarePng(const std::string& name, const Drawing& drawing);

}  // namespace barcode::bench
