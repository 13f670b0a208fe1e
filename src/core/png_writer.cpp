#include "core/png_writer.h"

#include <SDL_image.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <span>
#include <string>

#include "core/diagnostics.h"
#include "core/sdl_error.h"
#include "core/sdl_ptr.h"

namespace barcode {
namespace {

// Room beyond the raw pixels: PNG may be larger than what it compresses.
constexpr std::size_t kBufferMargin = 1'024'000;
constexpr std::size_t kDumpedBytes = 16;

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

}  // namespace

std::vector<std::uint8_t> SaveSurfaceToMemory(SDL_Surface* surface) {
  if (surface == nullptr) {
    PrintLine("ERROR: サーフェスがnullです");
    return {};
  }
  PrintLine("SaveSurfaceToMemory: サーフェスサイズ ", surface->w, 'x', surface->h,
            "\nSaveSurfaceToMemory: フォーマット ", SDL_GetPixelFormatName(surface->format->format),
            "\nSaveSurfaceToMemory: ピッチ ", surface->pitch);
  const std::size_t capacity =
      static_cast<std::size_t>(surface->w) * static_cast<std::size_t>(surface->h) * 4 + kBufferMargin;
  // Not cleared: only what the encoder writes is ever touched.
  const auto buffer =
      std::make_unique_for_overwrite<std::uint8_t[]>(capacity);  // NOLINT: no array class skips clearing
  PrintLine("バッファサイズ確保: ", capacity, " バイト");

  constexpr std::size_t kMaxStream = std::numeric_limits<int>::max();
  RwopsPtr stream(SDL_RWFromMem(buffer.get(), static_cast<int>(std::min(capacity, kMaxStream))));
  if (stream == nullptr) {
    PrintLine("ERROR: RWops作成失敗: ", SdlError());
    return {};
  }
  const bool encoded = IMG_SavePNG_RW(surface, stream.get(), 0) == 0;
  const Sint64 size = SDL_RWtell(stream.get());
  // Taken before the stream is closed, which might replace the text.
  const std::string libraryError(SdlError());
  stream.reset();

  PrintLine("書き込み結果: ", encoded ? "成功" : "失敗", "\n書き込みサイズ: ", size, " バイト");
  if (!encoded || size < 1) {
    PrintLine("ERROR: PNG保存に失敗しました: ", libraryError);
    return {};
  }

  std::vector<std::uint8_t> png(buffer.get(), buffer.get() + size);
  PrintLine("最終バッファサイズ: ", size,
            " バイト\nバッファ先頭: ", HexDump(std::span(png).first(std::min(png.size(), kDumpedBytes))));
  return png;
}

}  // namespace barcode
