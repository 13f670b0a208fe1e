#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "barcode.h"
#include "mkbarcode/library/options.h"
#include "mkbarcode/library/parse.h"
#include "mkbarcode/library/shared_library.h"
#include "mkbarcode/library/types.h"

namespace barcode::tool {

// Which of a symbology's drawings is wanted, beside what its options say.
enum class Form : std::uint8_t {
  kPlain,
  kConvenience,  // GS1-128: the payment form
  kStacked,      // GS1 DataBar Expanded: in rows
};

// One symbol to be drawn.
struct DrawRequest {
  const TypeInfo* type = nullptr;
  std::string text;
  Size size;
  Form form = Form::kPlain;
  std::string format = "png";  // a format keyword of the library
  bool asDataUri = false;
  std::vector<Setting> settings;

  bool operator==(const DrawRequest&) const = default;
};

// A draw function of barcode.h: into a box, or with one length.
using BoxDraw = LibraryFunction<int(BarcodeHandle, const char*, int, int)>;
using LengthDraw = LibraryFunction<int(BarcodeHandle, const char*, int)>;
using DrawFunction = std::variant<BoxDraw, LengthDraw>;

std::string_view NameOf(const DrawFunction& draw);

// The size that a type is drawn with when none is asked for.
Size DefaultSize(const TypeInfo& type);

// The draw function that serves the request. Throws UsageError when its type, form and size do not go
// together.
const DrawFunction& ChooseDrawFunction(const DrawRequest& request);

// Throws UsageError when the request cannot be drawn whatever the text: an option that the type does not
// serve, a form, size or format that does not suit it.
void CheckRequest(const DrawRequest& request);

// What a draw returned.
struct DrawnImage {
  std::string bytes;  // of the file, or the data URI
  double width = 0;   // of the symbol in pixels, which may exceed the box
};

// Checks the request and draws it. What the library prints never reaches standard output. It goes to standard
// error when verbose; otherwise only its error messages do. Throws UsageError as CheckRequest does and for a
// type that this build of the library does not offer, RunError when the draw fails.
DrawnImage Draw(const DrawRequest& request, bool verbose);

// Its bytes alone.
std::string DrawImage(const DrawRequest& request, bool verbose);

// One sentence when the symbol is wider than the box that was asked for.
std::optional<std::string> TooWide(const DrawRequest& request, const DrawnImage& image);

// The C calls that make the image of a request, one line each.
std::string CallsText(const DrawRequest& request);

// The command that makes it, writing the file.
std::string CommandText(const DrawRequest& request, std::string_view file);

}  // namespace barcode::tool
