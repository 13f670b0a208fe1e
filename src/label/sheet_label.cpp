#include "label/sheet_label.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "base/line.h"
#include "base/numeric.h"
#include "label/composition.h"
#include "label/fields.h"
#include "label/symbol.h"
#include "label/turn.h"
#include "label/types.h"
#include "label/units.h"
#include "label/warnings.h"

namespace barcode::label {
namespace {

// A vector picture costs no more for being large.
constexpr long long kAnyPixels = std::numeric_limits<long long>::max();

// Sizes are told in hundredths of a millimetre, rounded so that what is said is true.
constexpr double kHundredths = 100;
constexpr double kTolerance = 1e-6;

double RoundedUp(double millimetres) {
  return std::ceil(millimetres * kHundredths - kTolerance) / kHundredths;
}

double RoundedDown(double millimetres) {
  return std::floor(millimetres * kHundredths + kTolerance) / kHundredths;
}

double Millimetres(double dots, int dpi) {
  return dots * kMillimetresPerInch / dpi;
}

double Dots(double millimetres, int dpi) {
  return millimetres * dpi / kMillimetresPerInch;
}

int WholeDots(double millimetres) {
  return TruncToInt(Dots(millimetres, kSheetDpi) + kDotTolerance);
}

bool Fits(const Drawing& drawing, const Cell& cell, int dpi) {
  return drawing.width <= Dots(cell.width, dpi) + kDotTolerance &&
         drawing.height <= Dots(cell.height, dpi) + kDotTolerance;
}

void AppendSize(std::string& out, const SizeMm& size) {
  AppendPieces(out, size.width, " x ", size.height, " mm");
}

// which: the label that does not fit, up to its size. dots: of a label that would fit.
LabelError CellTooSmall(const Cell& cell, std::string_view which, const Size& dots, int dpi) {
  const SizeMm needed{RoundedUp(Millimetres(dots.width, dpi)), RoundedUp(Millimetres(dots.height, dpi))};
  std::string message(which);
  AppendSize(message, needed);
  message += " and its cell ";
  AppendSize(message, {RoundedDown(cell.width), RoundedDown(cell.height)});
  message += "; choose a page, grid, margin and gap that leave cells of at least ";
  AppendSize(message, needed);
  message += ", or ask for a smaller label.";
  return {ErrorCode::kTooSmall, "", message, std::nullopt, needed};
}

// What is drawn, and the request for just that.
struct Fitted {
  Request request;
  Composition composition;
};

class Fitter {
 public:
  Fitter(const TypeInfo& type, const Request& request, const Symbol& symbol, const Cell& cell)
      : m_type(type), m_given(request), m_symbol(symbol), m_cell(cell), m_request(request) {}

  Fitted Run() {
    if (m_request.dpi) {
      return InItsOwnSize();
    }
    m_request.dpi = kSheetDpi;
    return m_request.width ? InItsProportion() : WithLargestModule();
  }

 private:
  Fitted InItsOwnSize() {
    Composition composition = Compose(m_type, m_request, m_symbol);
    const Drawing& drawing = composition.drawing;
    if (!Fits(drawing, m_cell, *m_request.dpi)) {
      throw TooSmall("The label is ", {drawing.width, drawing.height});
    }
    return Take(std::move(composition));
  }

  // The largest box of the given box's proportion, which is as large as the cell in one direction.
  Fitted InItsProportion() {
    const std::int64_t width = *m_request.width;
    const std::int64_t height = *m_request.height;
    const std::int64_t cellWidth = WholeDots(m_cell.width);
    const std::int64_t cellHeight = WholeDots(m_cell.height);
    m_request.width = static_cast<int>(std::min(cellWidth, cellHeight * width / height));
    m_request.height = static_cast<int>(std::min(cellHeight, cellWidth * height / width));
    try {
      return Take(Compose(m_type, m_request, m_symbol, kAnyPixels));
    } catch (const LabelError& error) {
      if (error.Code() != ErrorCode::kTooSmall || !error.Needed()) {
        throw;
      }
      const Size needed = *error.Needed();
      const std::int64_t least =
          std::max(needed.width, ClampToInt((std::int64_t{needed.height} * width + height - 1) / height));
      throw TooSmall(kSmallest, {ClampToInt(least), ClampToInt((least * height + width - 1) / width)});
    }
  }

  Fitted WithLargestModule() {
    const Drawing smallest = AtModule(1).drawing;
    for (int module = LargestThinkable(smallest); module > 0; --module) {
      if (Composition composition = AtModule(module); Fits(composition.drawing, m_cell, kSheetDpi)) {
        return Take(std::move(composition));
      }
    }
    throw TooSmall(kSmallest, {smallest.width, smallest.height});
  }

  Composition AtModule(int module) {
    m_request.module = module;
    if (m_given.height) {
      const int givenModule = m_given.module.value_or(m_type.defaultModule);
      m_request.height = std::max(1, RoundedQuotient(std::int64_t{*m_given.height} * module, givenModule));
    }
    return Compose(m_type, m_request, m_symbol, kAnyPixels);
  }

  static int RoundedQuotient(std::int64_t dividend, std::int64_t divisor) {
    return ClampToInt((2 * dividend + divisor) / (2 * divisor));
  }

  // No larger module fits, by the direction in which the symbol is as long as its modules are many.
  int LargestThinkable(const Drawing& smallest) const {
    const bool across = TurnsAcross(m_request.rotate.value_or(Rotation::kNone));
    const double room = Dots(across ? m_cell.height : m_cell.width, kSheetDpi) + kDotTolerance;
    return TruncToInt(room / (across ? smallest.height : smallest.width));
  }

  LabelError TooSmall(std::string_view which, const Size& dots) const {
    return CellTooSmall(m_cell, which, dots, *m_request.dpi);
  }

  Fitted Take(Composition composition) { return {std::move(m_request), std::move(composition)}; }

  static constexpr std::string_view kSmallest = "With modules of 1/600 inch the label is ";

  const TypeInfo& m_type;
  const Request& m_given;
  const Symbol& m_symbol;
  const Cell& m_cell;
  Request m_request;
};

void RequirePdf(const Request& request) {
  if (request.format.value_or(Format::kPdf) != Format::kPdf) {
    throw LabelError(ErrorCode::kBadValue, "format",
                     "A sheet is a PDF; leave out \"format\", or make pictures of the rows one by one.");
  }
}

}  // namespace

SheetLabel LabelInCell(const Request& request, const Cell& cell) {
  RequirePdf(request);
  const TypeInfo& type = ValidateRequest(request);
  const Symbol symbol = EncodeSymbol(type.type, request);
  Fitted fitted = Fitter(type, request, symbol, cell).Run();
  SheetLabel label;
  label.warnings = WarningsOf(type, fitted.request, fitted.composition);
  label.drawing = std::move(fitted.composition.drawing);
  const int dpi = *label.drawing.dpi;
  label.x = PlaceInRange(Dots(cell.x, dpi), Dots(cell.width, dpi), label.drawing.width);
  label.y = PlaceInRange(Dots(cell.y, dpi), Dots(cell.height, dpi), label.drawing.height);
  return label;
}

}  // namespace barcode::label
