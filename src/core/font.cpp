#include "core/font.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "core/diagnostics.h"
#include "core/sdl_error.h"
#include "text/embedded_font.h"

namespace barcode {
namespace {

constexpr int kSharedFontSize = 18;

// The font library computes in 1/64 pixel and wraps far above this; up to here it refuses what it cannot do.
constexpr int kMaxFontSize = 1'000'000;

// What is kept open: a host draws labels of few sizes.
constexpr std::size_t kKeptFonts = 8;

struct SizedFont {
  int size = 0;
  std::shared_ptr<TTF_Font> font;
};

// One font library for the process: opened on first use, never closed, guarded by its mutex.
struct FontLibrary {
  std::recursive_mutex mutex;
  FontPtr sharedFont;
  // Open fonts of common sizes, the one used last in front.
  std::vector<SizedFont> sizedFonts;

  // Never destroyed: a host may draw until the process ends.
  static FontLibrary& Instance() {
    static auto& instance = *std::make_unique<FontLibrary>().release();
    return instance;
  }
};

}  // namespace

FontPtr OpenEmbeddedRobotoFont(int size) {
  const auto bytes = EmbeddedRobotoFont();
  SDL_RWops* const stream = SDL_RWFromConstMem(bytes.data(), static_cast<int>(bytes.size()));
  if (stream == nullptr) {
    ErrorLine("OpenEmbeddedRobotoFont: SDL_RWFromConstMem failed: ", SdlError());
    return nullptr;
  }
  const FontMemoryWatch watch;
  // The font library owns the stream from here and closes it, on failure too.
  FontPtr font(TTF_OpenFontRW(stream, 1, std::min(size, kMaxFontSize)));
  if (font != nullptr && watch.RanOut()) {
    font.reset();
    SDL_OutOfMemory();
  }
  if (font == nullptr) {
    ErrorLine("OpenEmbeddedRobotoFont: TTF_OpenFontRW failed: ", SdlError());
  }
  return font;
}

std::shared_ptr<TTF_Font> SizedRobotoFont(int size) {
  auto& fonts = FontLibrary::Instance().sizedFonts;
  const auto kept =
      std::find_if(fonts.begin(), fonts.end(), [&](const SizedFont& font) { return font.size == size; });
  if (kept != fonts.end()) {
    std::rotate(fonts.begin(), kept, kept + 1);
    return fonts.front().font;
  }
  std::shared_ptr<TTF_Font> font = OpenEmbeddedRobotoFont(size);
  if (font == nullptr) {
    return nullptr;
  }
  TTF_SetFontHinting(font.get(), TTF_HINTING_MONO);
  if (size <= kLargestKeptSize) {
    if (fonts.size() == kKeptFonts) {
      fonts.pop_back();
    }
    fonts.insert(fonts.begin(), {size, font});
  }
  return font;
}

void ForgetSizedFonts() {
  FontLibrary::Instance().sizedFonts.clear();
}

std::optional<TextExtent> MeasureText(const std::string& text, int size) {
  if (!IsTextRenderingReady()) {
    return std::nullopt;
  }
  const FontLibraryLock lock;
  const FontMemoryWatch watch;
  const std::shared_ptr<TTF_Font> font = SizedRobotoFont(size);
  if (font == nullptr) {
    if (watch.RanOut()) {
      throw std::bad_alloc();
    }
    return std::nullopt;
  }
  TextExtent extent;
  const bool isMeasured = TTF_SizeUTF8(font.get(), text.c_str(), &extent.width, &extent.height) == 0;
  if (watch.RanOut()) {
    ForgetSizedFonts();
    throw std::bad_alloc();
  }
  return isMeasured ? std::optional(extent) : std::nullopt;
}

namespace {

// False, with SDL's words set, when it fails, or came up without the parts for which there was no memory.
bool InitFontLibrary() {
  const FontMemoryWatch watch;
  if (TTF_Init() != 0) {
    return false;
  }
  if (watch.RanOut()) {
    TTF_Quit();
    SDL_OutOfMemory();
    return false;
  }
  return true;
}

// False, with SDL's words set, when all glyphs come out as one. The font library's shaper makes its functions
// when it opens its first font; if there is no memory for them, it does without them as long as the process
// lives.
bool TellsGlyphsApart(TTF_Font& font) {
  const FontMemoryWatch watch;
  int narrow = 0;
  int wide = 0;
  const bool isMeasured =
      TTF_SizeUTF8(&font, "i", &narrow, nullptr) == 0 && TTF_SizeUTF8(&font, "W", &wide, nullptr) == 0;
  if (!isMeasured || watch.RanOut() || narrow == wide) {
    SDL_OutOfMemory();
    return false;
  }
  return true;
}

}  // namespace

bool InitTextRendering() {
  auto& library = FontLibrary::Instance();
  const std::lock_guard lock(library.mutex);
  if (library.sharedFont != nullptr) {
    return true;
  }
  if (!InitFontLibrary()) {
    ErrorLine("SDL_ttfの初期化に失敗: ", SdlError());
    return false;
  }
  FontPtr font = OpenEmbeddedRobotoFont(kSharedFontSize);
  if (font == nullptr || !TellsGlyphsApart(*font)) {
    ErrorLine("フォントの読み込みに失敗: ", SdlError());
    font.reset();
    TTF_Quit();
    return false;
  }
  library.sharedFont = std::move(font);
  return true;
}

bool IsTextRenderingReady() {
  auto& library = FontLibrary::Instance();
  const std::lock_guard lock(library.mutex);
  return library.sharedFont != nullptr;
}

FontLibraryLock::FontLibraryLock() : m_lock(FontLibrary::Instance().mutex) {
  if (const auto& font = FontLibrary::Instance().sharedFont) {
    TTF_SetFontHinting(font.get(), TTF_HINTING_MONO);
  }
}

FontLibraryLock::~FontLibraryLock() {
  if (const auto& font = FontLibrary::Instance().sharedFont) {
    TTF_SetFontHinting(font.get(), TTF_HINTING_NORMAL);
  }
}

}  // namespace barcode
