#pragma once

#include <SDL_ttf.h>

#include <cerrno>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "core/sdl_ptr.h"
#include "text/text_extent.h"

namespace barcode {

using FontPtr = std::unique_ptr<TTF_Font, SdlDeleter<TTF_CloseFont>>;

// The embedded font at a size in pixels; null, with a line on standard error, on failure.
FontPtr OpenEmbeddedRobotoFont(int size);

// Fonts up to this size are kept open, and images of their glyphs are kept while a line is drawn: larger ones
// take megabytes each.
inline constexpr int kLargestKeptSize = 128;

// The same font, hinted for monochrome output, to draw with while FontLibraryLock is held. Fonts of common
// sizes stay open, with the glyphs they have rendered: opening one and hinting its first glyphs costs as much
// as half a PNG.
std::shared_ptr<TTF_Font> SizedRobotoFont(int size);

// The font library and what it stands on do not always tell when they find no memory: they leave out what
// they needed it for, for as long as the font lives (glyphs become boxes). The allocator tells, in errno.
class FontMemoryWatch {
 public:
  FontMemoryWatch() { errno = 0; }
  bool RanOut() const { return errno == ENOMEM; }
};

// Closes the fonts that are kept open, but for those in use: one may be spoiled. While FontLibraryLock is
// held.
void ForgetSizedFonts();

// The size of a text at a font size, as it would be drawn; nothing when text cannot be drawn at that size.
// Throws std::bad_alloc when memory is exhausted: a layout that follows from a guess would be another one.
std::optional<TextExtent> MeasureText(const std::string& text, int size);

// Makes the text library and the shared font ready, once for the life of the process; a failure is reported
// on standard error and tried again at the next call. True when text can be drawn.
bool InitTextRendering();

// True when InitTextRendering has succeeded. Without it linear symbols are drawn without text.
bool IsTextRenderingReady();

// Exclusive use of the font library, which is not made for several threads. While it is held the shared font
// is hinted for monochrome output.
class FontLibraryLock {
 public:
  FontLibraryLock();
  ~FontLibraryLock();
  FontLibraryLock(const FontLibraryLock&) = delete;
  FontLibraryLock& operator=(const FontLibraryLock&) = delete;

 private:
  std::unique_lock<std::recursive_mutex> m_lock;
};

}  // namespace barcode
