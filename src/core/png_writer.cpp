#include "core/png_writer.h"

#include <SDL_image.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <string>

#include "base/number_format.h"
#include "core/diagnostics.h"
#include "core/sdl_ptr.h"

namespace barcode {
namespace {

// Room beyond the raw pixels: PNG may be larger than what it compresses.
constexpr std::size_t kBufferMargin = 1'024'000;
constexpr std::size_t kDumpedBytes = 16;

std::string SurfaceReport(const SDL_Surface& surface) {
  std::string text = "SaveSurfaceToMemory: サーフェスサイズ ";
  AppendInt(text, surface.w);
  text += 'x';
  AppendInt(text, surface.h);
  text += "\nSaveSurfaceToMemory: フォーマット ";
  text += SDL_GetPixelFormatName(surface.format->format);
  text += "\nSaveSurfaceToMemory: ピッチ ";
  AppendInt(text, surface.pitch);
  text += '\n';
  return text;
}

void AppendBytesLine(std::string& text, std::string_view label, std::int64_t bytes) {
  text += label;
  AppendInt(text, bytes);
  text += " バイト\n";
}

std::string HexDump(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) {
      text += ' ';
    }
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 15U];
  }
  return text;
}

void PrintError(std::string_view message, const char* libraryError) {
  std::string line(message);
  line += libraryError;
  PrintLine(line);
}

}  // namespace

std::vector<std::uint8_t> SaveSurfaceToMemory(SDL_Surface* surface) {
  if (surface == nullptr) {
    PrintLine("ERROR: サーフェスがnullです");
    return {};
  }
  Print(SurfaceReport(*surface));
  const std::size_t capacity =
      static_cast<std::size_t>(surface->w) * static_cast<std::size_t>(surface->h) * 4 + kBufferMargin;
  // Not cleared: only what the encoder writes is ever touched.
  const auto buffer =
      std::make_unique_for_overwrite<std::uint8_t[]>(capacity);  // NOLINT: no array class skips clearing
  std::string report;
  AppendBytesLine(report, "バッファサイズ確保: ", static_cast<std::int64_t>(capacity));
  Print(report);

  constexpr std::size_t kMaxStream = std::numeric_limits<int>::max();
  RwopsPtr stream(SDL_RWFromMem(buffer.get(), static_cast<int>(std::min(capacity, kMaxStream))));
  if (stream == nullptr) {
    PrintError("ERROR: RWops作成失敗: ", SDL_GetError());
    return {};
  }
  const bool encoded = IMG_SavePNG_RW(surface, stream.get(), 0) == 0;
  const Sint64 size = SDL_RWtell(stream.get());
  // Taken before the stream is closed, which might replace the text.
  const std::string libraryError = SDL_GetError();
  stream.reset();

  report = "書き込み結果: ";
  report += encoded ? "成功\n" : "失敗\n";
  AppendBytesLine(report, "書き込みサイズ: ", size);
  Print(report);
  if (!encoded || size < 1) {
    PrintError("ERROR: PNG保存に失敗しました: ", libraryError.c_str());
    return {};
  }

  std::vector<std::uint8_t> png(buffer.get(), buffer.get() + size);
  report.clear();
  AppendBytesLine(report, "最終バッファサイズ: ", size);
  report += "バッファ先頭: ";
  report += HexDump(std::span(png).first(std::min(png.size(), kDumpedBytes)));
  PrintLine(report);
  return png;
}

}  // namespace barcode
