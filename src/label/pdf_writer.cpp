#include <hpdf.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/line.h"
#include "label/bar_shape.h"
#include "label/error.h"
#include "label/text_outline.h"
#include "label/title.h"
#include "label/writers.h"

namespace barcode::label {
namespace {

constexpr double kPointsPerInch = 72;
constexpr int kDefaultDpi = 96;
constexpr double kLeastPoints = 3;
constexpr double kMostPoints = 14'400;

// The library writes five decimals of every number and cuts it off at this one.
constexpr int kMostReal = 32'767;
// A scale is written as two that follow one another: that small one, and one with all its digits.
constexpr double kSmallScale = 0.0001;

// The library takes memory in blocks of this size, and gives all back at the end. By itself, when memory runs
// out, it loses objects and goes on with others that it has given back.
constexpr HPDF_UINT kPool = 16'384;

// By the rules of PDF a bar paints every dot that it touches, so that one whose edge is off by nothing but a
// rounding would become a dot wider on printers of just this resolution. By so many dots its edges stay
// inside: no eye, and no printer of another resolution, sees them.
constexpr double kInset = 0.001;

struct Free {
  void operator()(HPDF_Doc document) const { HPDF_Free(document); }
};
using Document = std::unique_ptr<std::remove_pointer_t<HPDF_Doc>, Free>;

// The arguments are in order, so that nothing but memory can fail.
void Require(bool succeeded) {
  if (!succeeded) {
    throw std::bad_alloc();
  }
}

void Check(HPDF_STATUS status) {
  Require(status == HPDF_OK);
}

HPDF_REAL Real(double value) {
  return static_cast<HPDF_REAL>(value);
}

// From here on, a unit is as long as `scale` now, and the origin is at (x, y). down: 1, or -1 to turn the y
// axis over.
void Scale(HPDF_Page page, double scale, double x, double y, int down) {
  Check(HPDF_Page_Concat(page, Real(kSmallScale), 0, 0, Real(kSmallScale * down), Real(x), Real(y)));
  Check(HPDF_Page_Concat(page, Real(scale / kSmallScale), 0, 0, Real(scale / kSmallScale), 0, 0));
}

double PointsPerDot(const Drawing& drawing) {
  return kPointsPerInch / drawing.dpi.value_or(kDefaultDpi);
}

void RequirePageSize(const Drawing& drawing) {
  const double scale = PointsPerDot(drawing);
  if (std::max(drawing.width, drawing.height) * scale > kMostPoints) {
    throw LabelError(
        ErrorCode::kTooLarge, "format",
        "A PDF page ends at 200 inches a side: choose png or svg, a higher dpi or a smaller label.");
  }
  if (std::min(drawing.width, drawing.height) * scale < kLeastPoints) {
    const int dots = static_cast<int>(std::ceil(kLeastPoints / scale));
    throw LabelError(ErrorCode::kTooSmall, "format",
                     Line("A PDF page has at least 1/24 inch a side, here ", dots,
                          " dots: choose png or svg, a lower dpi or a larger label."),
                     Size{std::max(drawing.width, dots), std::max(drawing.height, dots)});
  }
}

void SetFill(HPDF_Page page, const Colour& colour) {
  constexpr float kFull = 255;
  Check(HPDF_Page_SetRGBFill(page, static_cast<float>(colour.r) / kFull, static_cast<float>(colour.g) / kFull,
                             static_cast<float>(colour.b) / kFull));
}

void SetAlpha(HPDF_Doc document, HPDF_Page page, std::uint8_t alpha) {
  constexpr float kFull = 255;
  HPDF_ExtGState state = HPDF_CreateExtGState(document);
  Require(state != nullptr);
  Check(HPDF_ExtGState_SetAlphaFill(state, static_cast<float>(alpha) / kFull));
  Check(HPDF_Page_SetExtGState(page, state));
}

void SetPaint(HPDF_Doc document, HPDF_Page page, const Colour& colour) {
  SetFill(page, colour);
  if (colour.a != 255) {
    SetAlpha(document, page, colour.a);
  }
}

void FillBackground(HPDF_Doc document, HPDF_Page page, const Drawing& drawing) {
  if (drawing.background.a == 0) {
    return;
  }
  Check(HPDF_Page_GSave(page));
  SetPaint(document, page, drawing.background);
  Check(HPDF_Page_Rectangle(page, 0, 0, HPDF_Page_GetWidth(page), HPDF_Page_GetHeight(page)));
  Check(HPDF_Page_Fill(page));
  Check(HPDF_Page_GRestore(page));
}

// What places up to `largest` are divided by to be written: a power of two, so that ordinary ones lose
// nothing.
int DivisorFor(int largest) {
  int divisor = 1;
  while (largest / divisor >= kMostReal) {
    divisor *= 2;
  }
  return divisor;
}

void FillBars(HPDF_Page page, const Drawing& drawing) {
  if (drawing.dark.empty()) {
    return;
  }
  const int divisor = DivisorFor(std::max(drawing.width, drawing.height));
  const auto place = [divisor](double dots) { return Real(dots / divisor); };
  Check(HPDF_Page_GSave(page));
  Scale(page, PointsPerDot(drawing) * divisor, 0, HPDF_Page_GetHeight(page), -1);
  for (const DotRect& rect : MergedBars(drawing.dark).rects) {
    Check(HPDF_Page_Rectangle(page, place(rect.x + kInset), place(rect.y + kInset),
                              place(rect.width - 2 * kInset), place(rect.height - 2 * kInset)));
  }
  Check(HPDF_Page_Fill(page));
  Check(HPDF_Page_GRestore(page));
}

// Outlines are written in thirds of a unit: so the control points of the cubic curves are whole numbers, too.
constexpr int kThirds = 3;

int LargestPlace(const Outline& outline) {
  int largest = 0;
  for (const OutlinePiece& piece : outline) {
    for (const int place : {piece.to.x, piece.to.y, piece.control.x, piece.control.y}) {
      largest = std::max(largest, std::abs(place));
    }
  }
  return largest * kThirds;
}

class OutlinePen {
 public:
  OutlinePen(HPDF_Page page, int divisor) : m_page(page), m_divisor(divisor) {}

  void Draw(const OutlinePiece& piece) {
    const HPDF_REAL x = Place(kThirds * piece.to.x);
    const HPDF_REAL y = Place(kThirds * piece.to.y);
    switch (piece.kind) {
      case OutlinePiece::Kind::kMove:
        Check(HPDF_Page_MoveTo(m_page, x, y));
        break;
      case OutlinePiece::Kind::kLine:
        Check(HPDF_Page_LineTo(m_page, x, y));
        break;
      case OutlinePiece::Kind::kCurve:
        Check(HPDF_Page_CurveTo(
            m_page, Place(m_last.x + 2 * piece.control.x), Place(m_last.y + 2 * piece.control.y),
            Place(piece.to.x + 2 * piece.control.x), Place(piece.to.y + 2 * piece.control.y), x, y));
        break;
    }
    m_last = piece.to;
  }

 private:
  HPDF_REAL Place(int thirds) const { return Real(static_cast<double>(thirds) / m_divisor); }

  HPDF_Page m_page;
  int m_divisor;
  UnitPoint m_last;
};

void FillText(HPDF_Page page, const PlacedText& text, double pointsPerDot) {
  const Outline outline = OutlineOf(text);
  if (outline.empty()) {
    return;
  }
  const int divisor = DivisorFor(LargestPlace(outline));
  const PlacedGlyph& first = text.glyphs.front();
  Check(HPDF_Page_GSave(page));
  Scale(page, pointsPerDot * text.size / (kThirds * kUnitsPerEm) * divisor, first.x * pointsPerDot,
        HPDF_Page_GetHeight(page) - first.y * pointsPerDot, -1);
  OutlinePen pen(page, divisor);
  for (const OutlinePiece& piece : outline) {
    pen.Draw(piece);
  }
  Check(HPDF_Page_Fill(page));
  Check(HPDF_Page_GRestore(page));
}

// The library writes titles as UTF-16, of the first plane only.
std::string BasicPlane(std::string_view title) {
  std::string text;
  while (!title.empty()) {
    const char32_t character = TakeDocumentCharacter(title);
    AppendUtf8(text, character < 0x10000 ? character : kReplacementCharacter);
  }
  return text;
}

void SetTitle(HPDF_Doc document, std::string_view title) {
  if (title.empty()) {
    return;
  }
  Check(HPDF_UseUTFEncodings(document));
  Check(HPDF_SetCurrentEncoder(document, "UTF-8"));
  Check(HPDF_SetInfoAttr(document, HPDF_INFO_TITLE, BasicPlane(title).c_str()));
}

std::string BytesOf(HPDF_Doc document) {
  Check(HPDF_SaveToStream(document));
  HPDF_UINT32 size = HPDF_GetStreamSize(document);
  std::string bytes(size, '\0');
  Check(HPDF_ReadFromStream(document, reinterpret_cast<HPDF_BYTE*>(bytes.data()), &size));
  Check(HPDF_GetError(document));
  return bytes;
}

}  // namespace

std::string WritePdf(const Drawing& drawing) {
  RequirePageSize(drawing);
  const double pointsPerDot = PointsPerDot(drawing);
  const Document document(HPDF_NewEx(nullptr, nullptr, nullptr, kPool, nullptr));
  Require(document != nullptr);
  Check(HPDF_SetCompressionMode(document.get(), HPDF_COMP_ALL));
  SetTitle(document.get(), drawing.title);
  HPDF_Page page = HPDF_AddPage(document.get());
  Require(page != nullptr);
  Check(HPDF_Page_SetWidth(page, Real(drawing.width * pointsPerDot)));
  Check(HPDF_Page_SetHeight(page, Real(drawing.height * pointsPerDot)));
  FillBackground(document.get(), page, drawing);
  SetPaint(document.get(), page, drawing.foreground);
  FillBars(page, drawing);
  for (const PlacedText& text : drawing.texts) {
    FillText(page, text, pointsPerDot);
  }
  return BytesOf(document.get());
}

}  // namespace barcode::label
