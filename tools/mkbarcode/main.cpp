#include <exception>
#include <iterator>
#include <string>
#include <variant>
#include <vector>

#include "mkbarcode/batch/batch_command.h"
#include "mkbarcode/command_line.h"
#include "mkbarcode/draw.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/gallery/gallery.h"
#include "mkbarcode/gallery/label_samples.h"
#include "mkbarcode/gallery/library_samples.h"
#include "mkbarcode/io.h"
#include "mkbarcode/quoting.h"

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
  const GalleryResult result =
      WriteGallery(LabelSamples(), LibrarySamples(), command.directory, command.verbose);
  TellOf(result.failures);
  WriteAll("-", Concat({"Made ", std::to_string(result.labels), " labels of ", std::to_string(result.types),
                        " symbologies and drew ", std::to_string(result.libraryPictures),
                        " pictures with the library. Look at ", result.indexFile, "\n"}));
  return result.failures.empty() ? kExitDone : kExitFailed;
}

int Main(const std::vector<std::string>& arguments) {
  try {
    if (!arguments.empty() && arguments.front() == "batch") {
      return RunBatch({arguments.begin() + 1, arguments.end()});
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
