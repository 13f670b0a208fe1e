#include "label_proof/proof_label.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace barcode::test {
namespace {

// What a request is sent as: the characters beyond ASCII as they are, or escaped.
std::string Sent(const Json& request, bool escaped) {
  return request.dump(-1, ' ', escaped);
}

void AddPicture(ProofLabel& label) {
  const std::string format = label.request.value("format", "png");
  const int width = NumberIn(label.made.report, "width");
  const int height = NumberIn(label.made.report, "height");
  if (format == "svg") {
    label.format = PictureFormat::kSvg;
    label.picture = GreyOfSvg(label.made.data, width, height);
  } else if (format == "pdf") {
    label.format = PictureFormat::kPdf;
    return;
  } else {
    label.format = PictureFormat::kPng;
    label.picture = GreyOfPng(label.made.data);
  }
  if (label.picture.pixels.empty()) {
    label.fault = "no picture that can be rendered";
  }
}

void Make(ProofLabel& label, bool escaped) {
  label.made = MakeLabel(Sent(label.request, escaped));
  if (!label.made.ok) {
    label.fault = "refused: " + label.made.report.dump(-1, ' ', true);
    return;
  }
  AddPicture(label);
}

// The side of a box: of the smallest picture, enlarged, and of a page in PDF, 1/24 inch at least.
int BoxSide(const Json& request, int smallest, int hundredths) {
  const bool isPage = request.value("format", "") == "pdf";
  const int page = isPage ? (request.value("dpi", 96) + 23) / 24 : 1;
  return std::max(smallest + smallest * hundredths / 100, page);
}

// The smallest picture of the module becomes the box. Now and then the library is asked for it: a box that
// is too small is refused with the size that would do.
bool UseBox(ProofLabel& label, const Look& look, RandomText& random) {
  int width = 0;
  int height = 0;
  if (random.Number(0, 2) == 0) {
    Json tooSmall = label.request;
    tooSmall.erase("module");
    tooSmall.erase("module_mm");
    tooSmall["width"] = random.Number(1, 10);
    tooSmall["height"] = random.Number(1, 10);
    const MadeLabel refused = MakeLabel(Sent(tooSmall, false));
    const Json error = refused.report.value("error", Json::object());
    if (refused.ok || error.value("code", "") != "too_small" || !error.contains("needed")) {
      label.request = tooSmall;
      label.fault = "a box without room: " + refused.report.dump(-1, ' ', true);
      return false;
    }
    width = NumberIn(error["needed"], "width");
    height = NumberIn(error["needed"], "height");
  } else {
    const MadeLabel natural = MakeLabel(Sent(label.request, false));
    if (!natural.ok) {
      label.fault = "refused: " + natural.report.dump(-1, ' ', true);
      return false;
    }
    width = NumberIn(natural.report, "width");
    height = NumberIn(natural.report, "height");
  }
  label.request.erase("module");
  label.request.erase("module_mm");
  label.request["width"] = BoxSide(label.request, width, look.extraWidth);
  label.request["height"] = BoxSide(label.request, height, look.extraHeight);
  return true;
}

std::uint64_t Mixed(std::uint64_t seed, Symbology symbology, int number) {
  std::uint64_t mixed = seed * 0x9E3779B97F4A7C15U + static_cast<std::uint64_t>(symbology);
  mixed = (mixed ^ mixed >> 29U) * 0xBF58476D1CE4E5B9U + static_cast<std::uint64_t>(number);
  return mixed ^ mixed >> 32U;
}

}  // namespace

ProofLabel MakeProofLabel(const SymbologyInfo& info, std::uint64_t seed, int number) {
  RandomText random(Mixed(seed, info.symbology, number));
  ProofLabel label;
  label.symbology = info.symbology;
  label.number = number;
  label.content = RandomContent(info.symbology, random);
  const Look look = RandomLook(info, label.content, random);
  label.request = RequestOf(RandomName(info, random), label.content, look);
  const bool escaped = random.Number(0, 3) == 0;
  if (!look.isBox || UseBox(label, look, random)) {
    Make(label, escaped);
  }
  return label;
}

ProofLabel WithFormat(const ProofLabel& label, PictureFormat format) {
  Json request = label.request;
  request["format"] = format == PictureFormat::kPng ? "png" : format == PictureFormat::kSvg ? "svg" : "pdf";
  return WithRequest(label, request);
}

ProofLabel WithRequest(const ProofLabel& label, const Json& request) {
  ProofLabel other;
  other.symbology = label.symbology;
  other.number = label.number;
  other.content = label.content;
  other.request = request;
  Make(other, false);
  return other;
}

int NumberIn(const Json& object, const char* field) {
  const auto found = object.find(field);
  return found != object.end() && found->is_number() ? found->get<int>() : 0;
}

int ModuleOf(const ProofLabel& label) {
  return NumberIn(label.made.report, "module");
}

int QuartersOf(const ProofLabel& label) {
  return NumberIn(label.request, "rotate") / 90;
}

}  // namespace barcode::test
