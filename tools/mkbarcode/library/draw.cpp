#include "mkbarcode/library/draw.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <type_traits>

#include "mkbarcode/errors.h"
#include "mkbarcode/io.h"
#include "mkbarcode/library/drawn_width.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

// That the signatures are those of the header.
template <class Function>
constexpr DrawFunction Named(const char* name) {
  return LibraryFunction<Function>{name};
}

constexpr DrawFunction kDraw1d = Named<decltype(barcode_draw_1d)>("barcode_draw_1d");
constexpr DrawFunction kDraw2d = Named<decltype(barcode_draw_2d)>("barcode_draw_2d");
constexpr DrawFunction kDraw2dRect = Named<decltype(barcode_draw_2d_rect)>("barcode_draw_2d_rect");
constexpr DrawFunction kDrawConvenience =
    Named<decltype(barcode_draw_convenience)>("barcode_draw_convenience");
constexpr DrawFunction kDrawStacked = Named<decltype(barcode_draw_stacked)>("barcode_draw_stacked");
constexpr DrawFunction kDrawYubin = Named<decltype(barcode_draw_yubin)>("barcode_draw_yubin");
constexpr DrawFunction kDrawYubinWithWidth =
    Named<decltype(barcode_draw_yubin_with_width)>("barcode_draw_yubin_with_width");

constexpr LibraryFunction<decltype(barcode_create)> kCreate = {"barcode_create"};
constexpr LibraryFunction<decltype(barcode_destroy)> kDestroy = {"barcode_destroy"};
constexpr LibraryFunction<decltype(barcode_set_output_format)> kSetOutputFormat = {
    "barcode_set_output_format"};
constexpr LibraryFunction<decltype(barcode_get_svg)> kGetSvg = {"barcode_get_svg"};
constexpr LibraryFunction<decltype(barcode_get_base64)> kGetBase64 = {"barcode_get_base64"};
constexpr LibraryFunction<decltype(barcode_get_image_data)> kGetImageData = {"barcode_get_image_data"};

struct DestroyHandle {
  void operator()(BarcodeHandle handle) const { kDestroy(handle); }
};
using HandleOwner = std::unique_ptr<std::remove_pointer_t<BarcodeHandle>, DestroyHandle>;

// Forms that one type alone has.
struct FormInfo {
  Form form;
  std::string_view option;
  BarcodeSymbology type;
  const DrawFunction& draw;
};
constexpr FormInfo kConvenienceForm = {Form::kConvenience, "--convenience", BARCODE_GS1_128,
                                       kDrawConvenience};
constexpr FormInfo kStackedForm = {Form::kStacked, "--stacked", BARCODE_GS1_DATABAR_EXPANDED, kDrawStacked};

const FormInfo* FindForm(Form form) {
  for (const FormInfo* info : {&kConvenienceForm, &kStackedForm}) {
    if (info->form == form) {
      return info;
    }
  }
  return nullptr;
}

bool IsSvg(const DrawRequest& request) {
  return request.format == "svg";
}

int CallDraw(const DrawFunction& draw, BarcodeHandle handle, const DrawRequest& request) {
  if (const auto* const box = std::get_if<BoxDraw>(&draw)) {
    return (*box)(handle, request.text.c_str(), request.size.width, request.size.height);
  }
  return std::get<LengthDraw>(draw)(handle, request.text.c_str(), request.size.height);
}

// The finished image, or nothing.
std::optional<std::string> Fetch(BarcodeHandle handle, const DrawRequest& request) {
  if (IsSvg(request)) {
    std::string document = kGetSvg(handle);
    return document.empty() ? std::nullopt : std::optional(std::move(document));
  }
  // The bytes are fetched for a data URI too: when there are none, the URI would be that of an empty picture.
  int length = 0;
  const unsigned char* const bytes = kGetImageData(handle, &length);
  if (bytes == nullptr || length <= 0) {
    return std::nullopt;
  }
  if (!request.asDataUri) {
    return std::string(bytes, bytes + length);
  }
  std::string uri = kGetBase64(handle);
  return uri.starts_with("data:") ? std::optional(std::move(uri)) : std::nullopt;
}

std::optional<std::string> DrawAndFetch(const DrawRequest& request) {
  const HandleOwner handle(kCreate(request.type->number));
  if (handle == nullptr) {
    return std::nullopt;
  }
  kSetOutputFormat(handle.get(), request.format.c_str());
  for (const Setting& setting : request.settings) {
    Apply(handle.get(), setting);
  }
  if (CallDraw(ChooseDrawFunction(request), handle.get(), request) == 0) {
    return std::nullopt;
  }
  return Fetch(handle.get(), request);
}

// The lines of standard error that a user is to see of a draw that went well: warnings, but no step log.
std::string WithoutStepLog(std::string_view lines) {
  std::string kept;
  while (!lines.empty()) {
    const std::size_t end = lines.find('\n');
    const std::string_view line = lines.substr(0, end == std::string_view::npos ? end : end + 1);
    if (!line.starts_with("DEBUG ")) {
      kept += line;
    }
    lines.remove_prefix(line.size());
  }
  return kept;
}

// The image, and what the library printed to standard output meanwhile.
struct Drawing {
  std::optional<std::string> image;
  std::string printed;
};

Drawing DrawQuietly(const DrawRequest& request) {
  Drawing drawing;
  std::string messages;
  {
    const Redirection output = Redirection::ToBuffer(STDOUT_FILENO);
    const Redirection errors = Redirection::ToBuffer(STDERR_FILENO);
    drawing.image = DrawAndFetch(request);
    messages = errors.Contents();
    drawing.printed = output.Contents();
  }
  WriteToStandardError(WithoutStepLog(messages));
  return drawing;
}

Drawing DrawVerbosely(const DrawRequest& request) {
  Drawing drawing;
  {
    const Redirection both = Redirection::ToBuffer(STDOUT_FILENO);
    const Redirection errors = Redirection::ToDescriptor(STDERR_FILENO, STDOUT_FILENO);
    drawing.image = DrawAndFetch(request);
    drawing.printed = both.Contents();
  }
  WriteToStandardError(drawing.printed);
  return drawing;
}

// A symbol in a picture, of which the library prints no width, is drawn once more as a document.
double WidthOfDocumentFor(const DrawRequest& request) {
  DrawRequest asDocument = request;
  asDocument.format = "svg";
  asDocument.asDataUri = false;
  const Redirection output = Redirection::ToNothing(STDOUT_FILENO);
  const Redirection errors = Redirection::ToNothing(STDERR_FILENO);
  return WidthOfDocument(DrawAndFetch(asDocument).value_or(""));
}

double WidthOf(const DrawRequest& request, const Drawing& drawing) {
  // The modules of PDF417 lie over their neighbours in documents.
  const double overlap = request.type->number == BARCODE_PDF417 ? 0.5 : 0;
  if (IsSvg(request)) {
    return WidthOfDocument(*drawing.image) - overlap;
  }
  const std::optional<double> printed = PrintedWidth(drawing.printed);
  return printed ? *printed : WidthOfDocumentFor(request) - overlap;
}

// Whether a wider box makes no wider symbol, so that the width drawn is the one to ask for.
bool KeepsItsWidth(const DrawRequest& request) {
  const bool isFitted = std::ranges::any_of(request.settings, [](const Setting& setting) {
    return setting.option == OptionId::kFitWidth && setting != Setting{OptionId::kFitWidth, 0};
  });
  return !isFitted && request.type->number != BARCODE_GS1_DATABAR_EXPANDED;
}

std::string SizeText(const Size& size) {
  if (size.isSingle) {
    return std::to_string(size.height);
  }
  return Concat({std::to_string(size.width), "x", std::to_string(size.height)});
}

std::string_view FetchText(const DrawRequest& request) {
  if (IsSvg(request)) {
    return "const char* svg = barcode_get_svg(h);\n";
  }
  if (request.asDataUri) {
    return "const char* uri = barcode_get_base64(h);\n";
  }
  return "int length = 0;\nconst unsigned char* png = barcode_get_image_data(h, &length);\n";
}

}  // namespace

std::string_view NameOf(const DrawFunction& draw) {
  return std::visit([](const auto& function) { return std::string_view(function.name); }, draw);
}

Size DefaultSize(const TypeInfo& type) {
  constexpr Size kBox = {300, 100, false};
  constexpr Size kSquare = {200, 200, true};
  constexpr Size kPostalHeight = {24, 24, true};
  if (type.number == BARCODE_YUBIN_CUSTOMER) {
    return kPostalHeight;
  }
  return type.IsTwoDimensional() ? kSquare : kBox;
}

const DrawFunction& ChooseDrawFunction(const DrawRequest& request) {
  const TypeInfo& type = *request.type;
  const FormInfo* const form = FindForm(request.form);
  if (form != nullptr && type.number != form->type) {
    throw UsageError(
        Concat({form->option, " does not apply to ", type.name, " (only to ", TypeOf(form->type).name, ")"}));
  }
  if (type.number == BARCODE_YUBIN_CUSTOMER) {
    return request.size.isSingle ? kDrawYubin : kDrawYubinWithWidth;
  }
  if (type.IsTwoDimensional()) {
    return request.size.isSingle ? kDraw2d : kDraw2dRect;
  }
  if (request.size.isSingle) {
    throw UsageError(Concat({"--size: ", type.name, " needs a box, WIDTHxHEIGHT"}));
  }
  return form != nullptr ? form->draw : kDraw1d;
}

void CheckRequest(const DrawRequest& request) {
  const TypeInfo& type = *request.type;
  for (const Setting& setting : request.settings) {
    if (type.Serves(setting.option)) {
      continue;
    }
    throw UsageError(Concat({"--", OptionOf(setting.option).name, " does not apply to ", type.name,
                             " (it serves ", NamesOfTypesServing(setting.option), ")"}));
  }
  ChooseDrawFunction(request);
  if (request.asDataUri && IsSvg(request)) {
    throw UsageError("--data-uri does not go with the format svg");
  }
}

namespace {

// Its image is there.
Drawing DrawChecked(const DrawRequest& request, bool verbose) {
  CheckRequest(request);
  if (!IsOffered(*request.type)) {
    throw UsageError(
        Concat({"this build of the library does not offer ", request.type->name, "; see --list"}));
  }
  if (request.text.find('\0') != std::string::npos) {
    throw RunError("the text holds a NUL byte, which no barcode text can");
  }
  Drawing drawing = verbose ? DrawVerbosely(request) : DrawQuietly(request);
  if (!drawing.image) {
    throw RunError(Concat({request.type->name, " at ", SizeText(request.size), " could not be drawn"}));
  }
  return drawing;
}

}  // namespace

DrawnImage Draw(const DrawRequest& request, bool verbose) {
  Drawing drawing = DrawChecked(request, verbose);
  const double width = WidthOf(request, drawing);
  return {*std::move(drawing.image), width};
}

std::string DrawImage(const DrawRequest& request, bool verbose) {
  return *DrawChecked(request, verbose).image;
}

std::optional<std::string> TooWide(const DrawRequest& request, const DrawnImage& image) {
  // The postal code is drawn by its height alone when no box is given, and the picture of PDF417 in a square
  // box is as wide as the symbol.
  const bool isGrown = request.type->number == BARCODE_PDF417 && request.size.width == request.size.height;
  const bool hasWidth = !isGrown && (!request.size.isSingle || request.type->IsTwoDimensional());
  constexpr double kRounding = 0.05;
  if (!hasWidth || image.width <= request.size.width + kRounding) {
    return std::nullopt;
  }
  const std::string wanted = std::to_string(static_cast<std::int64_t>(std::ceil(image.width - kRounding)));
  const std::string size =
      request.size.isSingle ? wanted : Concat({wanted, "x", std::to_string(request.size.height)});
  return Concat(
      {"The symbol is ", wanted, " pixels wide, and its box ", std::to_string(request.size.width),
       KeepsItsWidth(request) ? Concat({"; ask for --size ", size, "."}) : "; ask for a wider one."});
}

std::string CallsText(const DrawRequest& request) {
  std::string lines = Concat({"BarcodeHandle h = barcode_create(", request.type->constant, ");\n"});
  if (request.format != "png") {
    lines += Concat({"barcode_set_output_format(h, ", CLiteral(request.format), ");\n"});
  }
  for (const Setting& setting : request.settings) {
    lines += Concat({CallText(setting), "\n"});
  }
  const DrawFunction& draw = ChooseDrawFunction(request);
  lines += Concat({NameOf(draw), "(h, ", CLiteral(request.text), ", "});
  if (std::holds_alternative<BoxDraw>(draw)) {
    lines += Concat({std::to_string(request.size.width), ", "});
  }
  lines += Concat({std::to_string(request.size.height), ");\n", FetchText(request), "barcode_destroy(h);\n"});
  return lines;
}

std::string CommandText(const DrawRequest& request, std::string_view file) {
  std::string command = Concat({"mkbarcode library ", request.type->name});
  const bool looksLikeOption = request.text.starts_with('-');
  if (!looksLikeOption) {
    command += Concat({" ", ShellQuoted(request.text)});
  }
  command += Concat({" --size ", SizeText(request.size)});
  if (const FormInfo* const form = FindForm(request.form)) {
    command += Concat({" ", form->option});
  }
  for (const Setting& setting : request.settings) {
    command += Concat({" ", CommandText(setting)});
  }
  if (request.asDataUri) {
    command += " --data-uri";
  }
  if (FormatOfFile(file) != request.format) {
    command += Concat({" --format ", request.format});
  }
  command += Concat({" -o ", ShellQuoted(file)});
  if (looksLikeOption) {
    command += Concat({" -- ", ShellQuoted(request.text)});
  }
  return command;
}

}  // namespace barcode::tool
