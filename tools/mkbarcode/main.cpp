#include <exception>
#include <iterator>
#include <string>
#include <variant>
#include <vector>

#include "mkbarcode/command_line.h"
#include "mkbarcode/draw.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/gallery.h"
#include "mkbarcode/gallery_samples.h"
#include "mkbarcode/io.h"
#include "mkbarcode/label_gallery.h"
#include "mkbarcode/label_samples.h"
#include "mkbarcode/quoting.h"
#include "mkbarcode/sheet/sheet_command.h"

namespace barcode::tool {
namespace {

std::string TextFrom(const std::string& file, bool keepNewline) {
  std::string text = ReadAll(file);
  if (keepNewline || !text.ends_with('\n')) {
    return text;
  }
  text.pop_back();
  if (text.ends_with('\r')) {
    text.pop_back();
  }
  return text;
}

int Run(const PrintCommand& command) {
  WriteAll("-", command.text);
  return kExitDone;
}

int Run(const DrawCommand& command) {
  DrawRequest request = command.request;
  if (!command.inputFile.empty()) {
    request.text = TextFrom(command.inputFile, command.keepNewline);
  }
  std::string image = DrawImage(request, command.verbose);
  if (request.asDataUri) {
    image += '\n';
  }
  WriteAll(command.outputFile, image);
  return kExitDone;
}

void TellOf(const std::vector<std::string>& failures) {
  for (const std::string& failure : failures) {
    WriteToStandardError(Concat({"mkbarcode: ", failure, "\n"}));
  }
}

int Run(const GalleryCommand& command) {
  const GalleryResult symbols = WriteGallery(GallerySamples(), command.directory, command.verbose);
  const LabelGalleryResult labels = WriteLabelGallery(LabelSamples(), command.directory);
  TellOf(symbols.failures);
  TellOf(labels.failures);
  WriteAll("-", Concat({"Drew ", std::to_string(symbols.drawn), " samples of ", std::to_string(symbols.types),
                        " symbologies. Look at ", symbols.indexFile, "\nMade ", std::to_string(labels.made),
                        " labels of ", std::to_string(labels.types), " symbologies. Look at ",
                        labels.pageFile, "\n"}));
  return symbols.failures.empty() && labels.failures.empty() ? kExitDone : kExitFailed;
}

int Main(const std::vector<std::string>& arguments) {
  try {
    if (!arguments.empty() && arguments.front() == "sheet") {
      return RunSheet({arguments.begin() + 1, arguments.end()});
    }
    return std::visit([](const auto& command) { return Run(command); }, ParseCommandLine(arguments));
  } catch (const UsageError& error) {
    WriteToStandardError(Concat({"mkbarcode: ", error.what(), "\nSee mkbarcode --help\n"}));
    return kExitUsage;
  } catch (const std::exception& error) {
    WriteToStandardError(Concat({"mkbarcode: ", error.what(), "\n"}));
    return kExitFailed;
  }
}

}  // namespace
}  // namespace barcode::tool

int main(int argc, char** argv) {
  barcode::tool::ReserveStandardDescriptors();
  if (argc < 1) {
    return barcode::tool::Main({});
  }
  return barcode::tool::Main({std::next(argv), std::next(argv, argc)});
}
