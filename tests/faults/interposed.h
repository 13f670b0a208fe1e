#pragma once

namespace barcode::test {

// Functions of SDL, SDL_image, SDL_ttf and the C library that this program replaces by versions of its own:
// each forwards to the real one unless it is told to fail.
enum class Fault {
  None,
  CreateSurface,
  CreateRenderer,
  CreateTexture,
  SetDrawBlendMode,
  SetDrawColour,
  FillRects,
  RenderCopy,
  RenderFlush,
  OutputSize,
  SetTextureBlendMode,
  RwFromMem,
  RwFromConstMem,
  SavePng,
  TtfInit,
  OpenFont,
  RenderText,
  OpenConverter,    // iconv_open
  LargeAllocation,  // operator new of a megabyte or more
};

// Makes one of them fail while it lives, after `spared` calls that succeed.
class Failing {
 public:
  explicit Failing(Fault fault, int spared = 0);
  ~Failing();
  Failing(const Failing&) = delete;
  Failing& operator=(const Failing&) = delete;
};

}  // namespace barcode::test
