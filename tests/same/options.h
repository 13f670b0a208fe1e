#pragma once

#include <string>

#include "same/host.h"
#include "support/random_text.h"

namespace barcode::same {

// Sets the options of one object by chance: mostly those that its type serves, in wild sessions to any value.
class Options {
 public:
  Options(Host& host, test::RandomText& random, int type, bool wild)
      : m_host(host), m_random(random), m_type(type), m_wild(wild) {}

  void SetSomething(BarcodeHandle handle);
  void SetFormat(BarcodeHandle handle);

  // Whether the format set last is that of documents.
  bool IsSvg() const { return m_format == "svg" || m_format == "SVG"; }

 private:
  enum class Option {
    Foreground,
    Background,
    FitWidth,
    PxAdjustBlack,
    PxAdjustWhite,
    ShowText,
    TextEvenSpacing,
    TextFontScale,
    TextGap,
    ShowStartStop,
    ExtendedGuard,
    CodeMode,
    StringEncoding,
    Version,
    ErrorCorrectionLevel,
    EncodeMode,
    CodeSize,
    EncodeScheme,
    Columns,
    Rows,
    ErrorLevel,
    AspectRatio,
    YHeight,
    SymbolType14,
    SymbolTypeExp,
    NoOfColumns
  };

  Option AnyOption();
  Option OwnOption();
  void Set(BarcodeHandle handle, Option option);
  void SetColour(BarcodeHandle handle, Option option);

  bool Strange(int times);
  int Flag();
  int Adjustment();
  int Number(int low, int high);
  double Scale();
  double Ratio();
  template <std::size_t kCount>
  std::string Word(const char* const (&words)[kCount]);

  void Call(BarcodeHandle handle, const char* name, void (*function)(BarcodeHandle, const char*),
            const std::string& word);

  Host& m_host;
  test::RandomText& m_random;
  int m_type;
  bool m_wild;
  std::string m_format = "png";
};

}  // namespace barcode::same
