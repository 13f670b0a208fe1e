#include "bench/draws.h"

#include <SDL_image.h>

#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "core/sdl_ptr.h"

namespace barcode::bench {
namespace {

struct Destroy {
  void operator()(BarcodeHandle handle) const { barcode_destroy(handle); }
};
using Object = std::unique_ptr<BarcodeHandleRecord, Destroy>;

Object MakeObject(const Drawing& drawing, const char* format) {
  Object object(barcode_create(drawing.type));
  barcode_set_output_format(object.get(), format);
  if (drawing.setUp) {
    drawing.setUp(object.get());
  }
  return object;
}

void Draw(BarcodeHandle object, const Drawing& drawing) {
  if (barcode_draw_1d(object, drawing.text.c_str(), drawing.width, drawing.height) != 1) {
    throw std::runtime_error("the draw failed: " + drawing.text);
  }
}

SurfacePtr Decoded(std::string_view png) {
  const SurfacePtr picture(IMG_Load_RW(SDL_RWFromConstMem(png.data(), static_cast<int>(png.size())), 1));
  return SurfacePtr(SDL_ConvertSurfaceFormat(picture.get(), SDL_PIXELFORMAT_ABGR8888, 0));
}

// The picture of a drawing.
std::string PngOf(const Drawing& drawing) {
  const Object object = MakeObject(drawing, "png");
  Draw(object.get(), drawing);
  int length = 0;
  const unsigned char* const png = barcode_get_image_data(object.get(), &length);
  return {reinterpret_cast<const char*>(png), static_cast<std::size_t>(length)};
}

}  // namespace

void DrawAndPng(benchmark::State& state, const Drawing& drawing) {
  const Object object = MakeObject(drawing, "png");
  for ([[maybe_unused]] const auto _ : state) {
    Draw(object.get(), drawing);
    int length = 0;
    benchmark::DoNotOptimize(barcode_get_image_data(object.get(), &length));
  }
}

void DrawAndSvg(benchmark::State& state, const Drawing& drawing) {
  const Object object = MakeObject(drawing, "svg");
  for ([[maybe_unused]] const auto _ : state) {
    Draw(object.get(), drawing);
    benchmark::DoNotOptimize(barcode_get_svg(object.get()));
  }
  state.counters["bytes"] = static_cast<double>(std::string_view(barcode_get_svg(object.get())).size());
}

void BarePng(benchmark::State& state, const Drawing& drawing) {
  BarePng(state, PngOf(drawing));
}

void BarePng(benchmark::State& state, std::string_view png) {
  const SurfacePtr pixels = Decoded(png);
  std::vector<unsigned char> buffer(
      static_cast<std::size_t>(pixels->w) * static_cast<std::size_t>(pixels->h) * 4 + 1'024'000);
  Sint64 size = 0;
  for ([[maybe_unused]] const auto _ : state) {
    const RwopsPtr stream(SDL_RWFromMem(buffer.data(), static_cast<int>(buffer.size())));
    benchmark::DoNotOptimize(IMG_SavePNG_RW(pixels.get(), stream.get(), 0));
    size = SDL_RWtell(stream.get());
  }
  state.counters["bytes"] = static_cast<double>(size);
}

void RegisterDraws(const std::string& name, const Drawing& drawing) {
  benchmark::RegisterBenchmark((name + "/draw+PNG").c_str(),
                               [drawing](benchmark::State& state) { DrawAndPng(state, drawing); });
  benchmark::RegisterBenchmark((name + "/draw+SVG").c_str(),
                               [drawing](benchmark::State& state) { DrawAndSvg(state, drawing); });
}

void RegisterBarePng(const std::string& name, const Drawing& drawing) {
  benchmark::RegisterBenchmark((name + "/bare IMG_SavePNG_RW").c_str(),
                               [drawing](benchmark::State& state) { BarePng(state, drawing); });
}

}  // namespace barcode::bench
