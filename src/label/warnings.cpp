#include "label/warnings.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "base/line.h"
#include "label/units.h"

namespace barcode::label {
namespace {

// Decimal places that a size in millimetres is rounded to do not make it smaller.
constexpr double kTolerance = 0.99;
// From here on printers set single dots in their true size.
constexpr int kFineDpi = 600;
// ISO/IEC 15416 and 15415: grade C wants a symbol contrast of 40%.
constexpr double kLeastContrast = 0.4;

// ---- Colours ----

// Of the light that falls on paper, by IEC 61966-2-1: red, green, blue.
using Reflectance = std::array<double, 3>;

double Linear(std::uint8_t component) {
  constexpr std::uint8_t kAll = 255;
  if (component == 0 || component == kAll) {
    return component == kAll ? 1 : 0;
  }
  const double value = component / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

Reflectance Over(const Colour& colour, const Reflectance& ground) {
  const double opacity = colour.a / 255.0;
  const std::array<std::uint8_t, 3> components = {colour.r, colour.g, colour.b};
  Reflectance result{};
  for (std::size_t i = 0; i < result.size(); ++i) {
    result[i] = opacity * Linear(components[i]) + (1 - opacity) * ground[i];
  }
  return result;
}

// Laser scanners see bars in red light of 660 nm, cameras see matrix codes in white light.
bool IsSeenInRedLight(const TypeInfo& type) {
  return type.type != Type::kQr && type.type != Type::kDataMatrix;
}

double Seen(const TypeInfo& type, const Reflectance& reflectance) {
  if (IsSeenInRedLight(type)) {
    return reflectance[0];
  }
  return 0.2126 * reflectance[0] + 0.7152 * reflectance[1] + 0.0722 * reflectance[2];
}

int Percent(double share) {
  return static_cast<int>(std::lround(100 * share));
}

void AddColourWarnings(const TypeInfo& type, const Drawing& drawing, std::vector<Warning>& warnings) {
  constexpr Reflectance kPaper = {1, 1, 1};
  const Reflectance ground = Over(drawing.background, kPaper);
  const double light = Seen(type, ground);
  const double dark = Seen(type, Over(drawing.foreground, ground));
  if (std::abs(light - dark) < kLeastContrast) {
    warnings.push_back({ErrorCode::kLowContrast,
                        Line("Scanners see a contrast of ", Percent(std::abs(light - dark)), "% in ",
                             IsSeenInRedLight(type) ? "red" : "white",
                             " light; choose a darker foreground or a lighter background for at least ",
                             Percent(kLeastContrast), "%.")});
  }
  if (dark > light) {
    warnings.push_back(
        {ErrorCode::kLightOnDark,
         "The foreground is lighter than the background, which many scanners do not read; exchange them."});
  }
}

// ---- Sizes ----

std::string InModules(const QuietZone& zone) {
  if (zone.left == zone.right && zone.left == zone.top && zone.left == zone.bottom) {
    return Line(zone.left, " modules all round");
  }
  return Line(zone.left, " modules on the left and ", zone.right, " on the right");
}

void AddQuietZoneWarning(const TypeInfo& type, const QuietZone& drawn, std::vector<Warning>& warnings) {
  const QuietZone& wanted = type.quietZone;
  if (drawn.left >= wanted.left && drawn.right >= wanted.right && drawn.top >= wanted.top &&
      drawn.bottom >= wanted.bottom) {
    return;
  }
  warnings.push_back({ErrorCode::kQuietZone,
                      Line("The quiet zone is smaller than that of the standard, ", InModules(wanted),
                           "; leave out \"quiet_zone\", or keep that margin free around the picture.")});
}

void AddModuleWarning(const TypeInfo& type, int dpi, int module, std::vector<Warning>& warnings) {
  const double millimetres = module * kMillimetresPerInch / dpi;
  if (millimetres < kTolerance * type.smallestModuleMm) {
    warnings.push_back(
        {ErrorCode::kSmallModule,
         Line("A module of ", General{millimetres, 3}, " mm is smaller than the ", type.smallestModuleMm,
              " mm that ", type.name, " needs; ask for a larger one.")});
    return;
  }
  if (module == 1 && dpi < kFineDpi) {
    warnings.push_back({ErrorCode::kSmallModule, Line("A module of one dot does not print well at ", dpi,
                                                      " dpi; ask for two dots at least.")});
  }
}

void AddAdjustmentWarning(int adjust, int module, std::vector<Warning>& warnings) {
  if (std::abs(adjust) >= module) {
    warnings.push_back(
        {ErrorCode::kSmallModule,
         Line("A bar_adjust of ", adjust, " makes narrow and wide alike where a module is ", module,
              module == 1 ? " pixel" : " pixels", "; ask for less, or for a larger module.")});
  }
}

}  // namespace

std::vector<Warning> PrintWarnings(const TypeInfo& type, const Request& request,
                                   const Composition& composition) {
  std::vector<Warning> warnings;
  if (!type.anyReader) {
    warnings.push_back(
        {ErrorCode::kNoReader, Line("No common scanner reads ", type.name, "; make sure that yours does.")});
  }
  AddQuietZoneWarning(type, composition.quietZone, warnings);
  if (request.dpi) {
    AddModuleWarning(type, *request.dpi, composition.module, warnings);
  }
  AddAdjustmentWarning(request.barAdjust.value_or(0), composition.module, warnings);
  AddColourWarnings(type, composition.drawing, warnings);
  return warnings;
}

std::vector<Warning> WarningsOf(const TypeInfo& type, const Request& request,
                                const Composition& composition) {
  std::vector<Warning> warnings = PrintWarnings(type, request, composition);
  warnings.insert(warnings.end(), composition.warnings.begin(), composition.warnings.end());
  if (request.strict == true && !warnings.empty()) {
    const Warning& first = warnings.front();
    throw LabelError(first.code, "", first.message, first.needed);
  }
  return warnings;
}

}  // namespace barcode::label
