// The bytes of the input are a host's calls: any of the exported functions, in any order, with any arguments,
// on several handles. Whatever they are, the results are those that barcode.h promises.
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "barcode.h"
#include "fuzz/byte_reader.h"
#include "fuzz/require.h"
#include "support/symbologies.h"

namespace barcode::fuzz {
namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();
constexpr int kTypes = BARCODE_PDF417 + 1;
constexpr std::size_t kObjects = 4;
constexpr int kMostCalls = 48;

// Boxes are small, or such that their canvas is small or refused: large ones would only take time.
constexpr int kWidestBox = 200;
constexpr int kHighestBox = 100;
constexpr auto kExtremeBoxes = std::to_array<std::pair<int, int>>({{0, 0},
                                                                   {0, 60},
                                                                   {60, 0},
                                                                   {-1, 60},
                                                                   {60, -1},
                                                                   {kMin, kMin},
                                                                   {kMin, 60},
                                                                   {kMax, kMax},
                                                                   {kMax, 1},
                                                                   {1, kMax},
                                                                   {100'000, 1},
                                                                   {1, 3000},
                                                                   {100'000, 100'000},
                                                                   {65'536, 65'536},
                                                                   {23'171, 23'171}});

constexpr auto kNumbers =
    std::to_array<int>({0, 1, 1, 1, 2, 3, 5, 10, 11, 30, 31, 40, 41, 90, 91, 255, 256, -1, -2, kMin, kMax});

constexpr auto kScales = std::to_array<double>(
    {1.0, 0.5, 0.0, -1.0, 1.5, 0.1, 2.0, 0.001, 1000.0, 1e300, -1e300, 1e-9,
     std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
     -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::denorm_min()});

constexpr auto kFormats = std::to_array<std::string_view>(
    {"svg", "svg", "svg", "svg", "SVG", "png", "png", "jpg", "jpeg", "PNG", ""});

constexpr auto kKeywords = std::to_array<std::string_view>({"AUTO",
                                                            "A",
                                                            "B",
                                                            "C",
                                                            "L",
                                                            "M",
                                                            "Q",
                                                            "H",
                                                            "NUMERIC",
                                                            "BYTE",
                                                            "KANJI",
                                                            "utf-8",
                                                            "UTF-8",
                                                            "shift-jis",
                                                            "Shift-JIS",
                                                            "shift_jis",
                                                            "ASCII",
                                                            "C40",
                                                            "TEXT",
                                                            "X12",
                                                            "EDIFACT",
                                                            "BASE256",
                                                            "STACKED",
                                                            "UNSTACKED",
                                                            "OMNIDIRECTIONAL",
                                                            "STACKED_OMNIDIRECTIONAL",
                                                            "10x10",
                                                            "8x18",
                                                            "16x48",
                                                            "52x52",
                                                            "32x32",
                                                            "x",
                                                            ""});

constexpr auto kAlphabets = std::to_array<std::string_view>(
    {"0123456789", "0123456789", "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-. $/+%",
     "abcdABCD0123456789-$:/.+<>?!", "aA1! \x80\xE9\xC9\r\n\t*>", "0123456789{}AIFNC1\x1D"});

constexpr auto kPieces = std::to_array<std::string_view>(
    {"{FNC1}", "{AI}", "\x1D", "01", "0195011015300038", "3103", "392", "10", "\xE6\x97\xA5", "\xE3\x82\xA2",
     "\x93\xFA", "\xB1", "\xF0\x9F\x98\x80", "1234567890", "ABCabc", "\xFF"});

constexpr std::string_view kFallbackUri =
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVQI12P4//8/AAX+Av7czFnnAAAAAElFTkSuQmCC";

// What the host knows of the canvas of an object.
enum class CanvasState : std::uint8_t { kNone, kDrawn, kUnknown };

struct Object {
  BarcodeHandle handle = nullptr;
  int type = -1;
  std::string format = "png";
  std::string document;  // of the last SVG draw that returned 1
  CanvasState canvas = CanvasState::kNone;
  std::pair<int, int> canvasSize;  // kDrawn only

  bool IsSvg() const { return format == "svg" || format == "SVG"; }
  bool IsRaster() const { return format == "png" || format == "jpg" || format == "jpeg"; }
  bool IsMatrix() const { return type >= BARCODE_QR; }
};

std::uint32_t BigEndian(const unsigned char* bytes) {
  return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U | std::uint32_t{bytes[2]} << 8U |
         bytes[3];
}

void RequirePng(std::span<const unsigned char> bytes, const Object& object) {
  constexpr std::string_view kBegin("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
  constexpr std::string_view kEnd("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
  Require(bytes.size() > kBegin.size() + 8 + kEnd.size(), "a picture is longer than its frame");
  Require(std::memcmp(bytes.data(), kBegin.data(), kBegin.size()) == 0, "a picture begins as PNG does");
  Require(std::memcmp(bytes.data() + bytes.size() - kEnd.size(), kEnd.data(), kEnd.size()) == 0,
          "a picture ends as PNG does");
  if (object.canvas == CanvasState::kDrawn) {
    Require(BigEndian(bytes.data() + kBegin.size()) == static_cast<std::uint32_t>(object.canvasSize.first) &&
                BigEndian(bytes.data() + kBegin.size() + 4) ==
                    static_cast<std::uint32_t>(object.canvasSize.second),
            "a picture has the size of the box");
  }
}

class Host {
 public:
  explicit Host(std::span<const std::uint8_t> bytes) : m_reader(bytes) {}

  ~Host() {
    for (const Object& object : m_objects) {
      barcode_destroy(object.handle);
    }
  }

  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  void Run() {
    Create();
    // Most hosts fetch documents: pictures take a hundred times as long.
    if (!m_reader.OneIn(4)) {
      Apply("svg");
    }
    for (int i = 0; i < kMostCalls && !m_reader.Empty(); ++i) {
      CallSomething();
    }
    for (Object& object : m_objects) {
      RequireUsable(object);
    }
  }

 private:
  Object& Current() { return m_objects[m_current]; }
  BarcodeHandle Handle() { return Current().handle; }

  // ---- Arguments ----

  int Number() {
    switch (m_reader.Below(4)) {
      case 0:
        return static_cast<std::int8_t>(m_reader.Byte());
      case 1:
        return m_reader.Any<int>();
      default:
        return m_reader.Of(kNumbers);
    }
  }

  double Scale() { return m_reader.OneIn(8) ? m_reader.Any<double>() : m_reader.Of(kScales); }

  // A font of any size is tried in the tests; large ones take long to hint and draw.
  double FontScale() {
    const double scale = Scale();
    return scale > 4 && scale < 1e5 ? 4 : scale;
  }

  std::pair<int, int> Box() {
    const auto [width, height] = AnyBox();
    // A square box keeps the height of a PDF417 symbol only: a large one may have a canvas of gigabytes.
    constexpr int kLargeSquare = kHighestBox;
    const bool isHuge = Current().type == BARCODE_PDF417 && width == height && height > kLargeSquare;
    return {isHuge ? kLargeSquare : width, isHuge ? kLargeSquare : height};
  }

  std::pair<int, int> AnyBox() {
    if (m_reader.OneIn(12)) {
      return m_reader.Of(kExtremeBoxes);
    }
    const int width = static_cast<int>(m_reader.Below(256)) * kWidestBox / 255;
    return {width, static_cast<int>(m_reader.Below(256)) * kHighestBox / 255};
  }

  // Null at times.
  std::optional<std::string> Keyword() {
    if (m_reader.OneIn(16)) {
      return m_reader.Flag() ? std::nullopt : std::optional(m_reader.Bytes(40));
    }
    return std::string(m_reader.Of(kKeywords));
  }

  std::optional<std::string> Text() {
    const char* const valid = Current().handle == nullptr ? "123" : test::ValidText(Current().type);
    switch (m_reader.Below(10)) {
      case 0:
        return std::nullopt;
      case 1:
        return m_reader.Bytes(255);
      case 2:
        return valid + m_reader.Bytes(8);
      case 3:
      case 4:
      case 5:
        return InAlphabet(m_reader.Bytes(80), m_reader.Of(kAlphabets));
      case 6:
        return Pieces();
      case 7: {
        const char repeated = static_cast<char>(m_reader.Byte());
        return std::string(std::size_t{m_reader.Byte()} * m_reader.Below(8), repeated);
      }
      default:
        return std::string(valid);
    }
  }

  std::string Pieces() {
    std::string text;
    for (std::size_t count = m_reader.Below(12); count > 0; --count) {
      text += m_reader.Flag() ? std::string(m_reader.Of(kPieces))
                              : InAlphabet(m_reader.Bytes(6), m_reader.Of(kAlphabets));
    }
    return text;
  }

  static const char* Pointer(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
  }

  // ---- Calls ----

  void CallSomething() {
    constexpr std::size_t kFunctions = 43;
    const std::size_t choice = m_reader.Byte();
    if (choice >= 4 * kFunctions) {
      choice % 4 == 0 ? FetchSvg() : Draw1d();
      return;
    }
    const std::size_t function = choice % kFunctions;
    if (function < 27) {
      SetSomething(function);
    } else if (function < 35) {
      DrawSomething(function);
    } else {
      FetchSomething(function);
    }
  }

  void SetSomething(std::size_t function) {
    switch (function) {
      case 0:
        return Apply(m_reader.OneIn(16) ? m_reader.Bytes(8) : std::string(m_reader.Of(kFormats)));
      case 1:
        return barcode_set_foreground_color(Handle(), Number(), Number(), Number(), Number());
      case 2:
        return barcode_set_background_color(Handle(), Number(), Number(), Number(), Number());
      case 3:
        return barcode_set_fit_width(Handle(), Number());
      case 4:
        return barcode_set_px_adjust_black(Handle(), Number());
      case 5:
        return barcode_set_px_adjust_white(Handle(), Number());
      case 6:
        return barcode_set_show_text(Handle(), Number());
      case 7:
        return barcode_set_text_even_spacing(Handle(), Number());
      case 8:
        return barcode_set_text_font_scale(Handle(), FontScale());
      case 9:
        return barcode_set_text_gap(Handle(), Scale());
      case 10:
        return barcode_set_show_start_stop(Handle(), Number());
      case 11:
        return barcode_set_extended_guard(Handle(), Number());
      case 12:
        return barcode_set_code_mode(Handle(), Pointer(Keyword()));
      case 13:
        return barcode_set_string_encoding(Handle(), Pointer(Keyword()));
      case 14:
        return barcode_set_version(Handle(), Number());
      case 15:
        return barcode_set_error_correction_level(Handle(), Pointer(Keyword()));
      case 16:
        return barcode_set_encode_mode(Handle(), Pointer(Keyword()));
      case 17:
        return barcode_set_code_size(Handle(), Pointer(Keyword()));
      case 18:
        return barcode_set_encode_scheme(Handle(), Pointer(Keyword()));
      case 19:
        return barcode_set_columns(Handle(), Number());
      case 20:
        return barcode_set_rows(Handle(), Number());
      case 21:
        return barcode_set_error_level(Handle(), Number());
      case 22:
        return barcode_set_aspect_ratio(Handle(), Scale());
      case 23:
        return barcode_set_y_height(Handle(), Number());
      case 24:
        return barcode_set_symbol_type_14(Handle(), Pointer(Keyword()));
      case 25:
        return barcode_set_symbol_type_exp(Handle(), Pointer(Keyword()));
      default:
        return barcode_set_no_of_columns(Handle(), Number());
    }
  }

  void DrawSomething(std::size_t function) {
    const std::optional<std::string> text = Text();
    const auto [width, height] = Box();
    const int type = Current().type;
    switch (function) {
      case 27:
        return Drawn(barcode_draw_2d(Handle(), Pointer(text), width), Current().IsMatrix(), width, width);
      case 28:
        return Drawn(barcode_draw_2d_rect(Handle(), Pointer(text), width, height), Current().IsMatrix(),
                     width, height);
      case 29:
        return Drawn(barcode_draw_convenience(Handle(), Pointer(text), width, height),
                     type == BARCODE_GS1_128, width, height);
      case 30:
        return Drawn(barcode_draw_stacked(Handle(), Pointer(text), width, height),
                     type == BARCODE_GS1_DATABAR_EXPANDED, width, height);
      case 31:
        return Drawn(barcode_draw_yubin(Handle(), Pointer(text), height), type == BARCODE_YUBIN_CUSTOMER,
                     width, height);
      case 32:
        return Drawn(barcode_draw_yubin_with_width(Handle(), Pointer(text), width, height),
                     type == BARCODE_YUBIN_CUSTOMER, width, height);
      case 33: {
        const int encoded = barcode_encode_14(Handle(), Pointer(text));
        Require(encoded == 0 || (encoded == 1 && type == BARCODE_GS1_DATABAR_14), "only type 12 is encoded");
        return;
      }
      default:
        return Drawn(barcode_draw_1d(Handle(), Pointer(text), width, height), true, width, height);
    }
  }

  void Draw1d() {
    const std::optional<std::string> text = Text();
    const auto [width, height] = Box();
    Drawn(barcode_draw_1d(Handle(), Pointer(text), width, height), true, width, height);
  }

  void FetchSomething(std::size_t function) {
    switch (function) {
      case 35:
        return Create();
      case 36:
        barcode_destroy(Handle());
        Current() = {};
        return;
      case 37:
        m_current = m_reader.Below(kObjects);
        return;
      case 38:
        return FetchBase64();
      case 39:
        return FetchBytes();
      case 40:
        return CheckDigit();
      case 41: {
        const std::string_view type(Required(barcode_get_symbol_type_14(Handle())));
        Require(type.empty() == (Current().type != BARCODE_GS1_DATABAR_14), "type 12 alone has a form");
        Require(barcode_is_svg_output(Handle()) == (Handle() != nullptr && Current().IsSvg() ? 1 : 0),
                "the output format is the one that was set");
        return;
      }
      default:
        return FetchSvg();
    }
  }

  // ---- Promises ----

  static const char* Required(const char* text) {
    Require(text != nullptr, "a string result is never null");
    return text;
  }

  void Create() {
    const std::size_t choice = m_reader.Byte();
    const int type = choice < 250 ? static_cast<int>(choice) % kTypes : m_reader.Any<int>();
    barcode_destroy(Handle());
    Current() = {};
    Current().handle = barcode_create(type);
    Current().type = Handle() == nullptr ? -1 : type;
    Require((Handle() != nullptr) == (type >= 0 && type < kTypes),
            "there is an object for every type and no other");
  }

  void Apply(const std::string& format) {
    barcode_set_output_format(Handle(), format.c_str());
    if (Handle() != nullptr) {
      Current().format = format.substr(0, format.find('\0'));
    }
  }

  // After a draw into a box; isServed: the function draws objects of this type.
  void Drawn(int result, bool isServed, int width, int height) {
    Require(result == 0 || result == 1, "a draw returns 0 or 1");
    Require(result == 0 || (Handle() != nullptr && isServed), "only what is served is drawn");
    if (Handle() == nullptr || !isServed) {
      return;
    }
    Object& object = Current();
    if (object.IsSvg()) {
      DrawnDocument(result);
    } else if (result == 0) {
      object.canvas = CanvasState::kUnknown;
    } else if (object.IsRaster()) {
      constexpr int kLongestPngSide = 1'000'000;
      const bool isSquarePdf = object.type == BARCODE_PDF417 && width == height;
      const bool hasPicture =
          width > 0 && height > 0 && width <= kLongestPngSide && height <= kLongestPngSide;
      const bool hasSizeOfBox = object.type != BARCODE_YUBIN_CUSTOMER && !isSquarePdf;
      object.canvas = hasPicture && hasSizeOfBox ? CanvasState::kDrawn : CanvasState::kUnknown;
      object.canvasSize = {width, height};
    } else {
      Require(object.canvas != CanvasState::kNone, "without a raster format and a canvas nothing is drawn");
    }
  }

  void DrawnDocument(int result) {
    Object& object = Current();
    const std::string_view document(Required(barcode_get_svg(Handle())));
    if (result == 0) {
      Require(document == object.document, "the earlier document stays after a 0");
      return;
    }
    Require(document.starts_with(
                "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "),
            "a document begins whole");
    Require(document.ends_with("</svg>\n"), "a document ends whole");
    object.document = document;
  }

  void FetchSvg() {
    const std::string_view document(Required(barcode_get_svg(Handle())));
    Require(document == (Current().IsSvg() ? Current().document : ""),
            "the document is that of the last draw");
  }

  void FetchBase64() {
    Object& object = Current();
    const std::string_view uri(Required(barcode_get_base64(Handle())));
    if (Handle() == nullptr) {
      Require(uri.empty(), "a null handle has no picture");
      return;
    }
    if (object.IsSvg()) {
      Require(uri.starts_with("Error: "), "there is no data URI in SVG");
      return;
    }
    if (object.canvas == CanvasState::kNone) {
      Require(uri == kFallbackUri, "without a canvas the URI is that of 1 x 1");
    }
    const bool isJpeg = object.format == "jpg" || object.format == "jpeg";
    Require(uri == kFallbackUri || uri.starts_with(isJpeg ? "data:image/jpeg;base64,iVBORw0KGgo"
                                                          : "data:image/png;base64,iVBORw0KGgo"),
            "a data URI holds a PNG");
    object.canvas = CanvasState::kNone;
  }

  void FetchBytes() {
    if (m_reader.OneIn(32)) {
      Require(barcode_get_image_data(Handle(), nullptr) == nullptr, "a null length gives null");
      return;
    }
    int length = -1;
    const unsigned char* const bytes = barcode_get_image_data(Handle(), &length);
    Require((bytes == nullptr) == (length == 0) && length >= 0, "bytes are null when there are none");
    const Object& object = Current();
    Require(bytes == nullptr || object.canvas != CanvasState::kNone, "without a canvas there are no bytes");
    Require(bytes != nullptr || object.canvas != CanvasState::kDrawn, "what was drawn can be fetched");
    if (bytes != nullptr) {
      RequirePng({bytes, static_cast<std::size_t>(length)}, object);
    }
  }

  void CheckDigit() {
    const std::optional<std::string> text =
        m_reader.OneIn(4) ? Text() : std::optional(InAlphabet(m_reader.Bytes(14), "0123456789"));
    const std::string_view digit(Required(barcode_calculate_check_digit_14(Pointer(text))));
    const std::string_view given = text ? text->c_str() : "";
    const bool isMessage =
        given.size() == 13 && given.find_first_not_of("0123456789") == std::string_view::npos;
    if (!isMessage) {
      Require(digit.empty(), "only 13 digits have a check digit");
      return;
    }
    int sum = 0;
    for (std::size_t i = 0; i < given.size(); ++i) {
      sum += (given[i] - '0') * (i % 2 == 0 ? 3 : 1);
    }
    Require(digit == std::string(1, static_cast<char>('0' + (10 - sum % 10) % 10)),
            "the check digit is that of GS1");
  }

  // Back to sensible options: a valid text draws.
  void RequireUsable(const Object& object) {
    BarcodeHandle const handle = object.handle;
    if (handle == nullptr) {
      return;
    }
    const bool asPicture = m_reader.OneIn(64);
    barcode_set_output_format(handle, asPicture ? "png" : "svg");
    barcode_set_px_adjust_black(handle, 0);
    barcode_set_px_adjust_white(handle, 0);
    barcode_set_text_font_scale(handle, 1);
    barcode_set_text_gap(handle, 1);
    barcode_set_code_mode(handle, "AUTO");
    barcode_set_version(handle, 0);
    barcode_set_encode_mode(handle, "AUTO");
    barcode_set_code_size(handle, "AUTO");
    barcode_set_encode_scheme(handle, "AUTO");
    Require(barcode_draw_1d(handle, test::ValidText(object.type), 120, 40) == 1, "an object stays usable");
    if (asPicture) {
      int length = 0;
      Require(barcode_get_image_data(handle, &length) != nullptr, "an object stays usable for pictures");
    } else {
      Require(std::string_view(barcode_get_svg(handle)).ends_with("</svg>\n"),
              "an object stays usable for documents");
    }
  }

  ByteReader m_reader;
  std::array<Object, kObjects> m_objects;
  std::size_t m_current = 0;
};

}  // namespace
}  // namespace barcode::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  [[maybe_unused]] static const bool kSilenced = [] {
    barcode::fuzz::SilenceStreams();
    return true;
  }();
  barcode::fuzz::Host({data, size}).Run();
  return 0;
}
