#include "mkbarcode/gallery/gallery_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "mkbarcode/cli/help_page.h"
#include "mkbarcode/cli/parser.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/gallery/gallery.h"
#include "mkbarcode/gallery/label_samples.h"
#include "mkbarcode/gallery/library_samples.h"
#include "mkbarcode/io.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

struct GalleryCommand {
  std::string directory;
  bool verbose = false;
};

std::unique_ptr<CLI::App> BuildGalleryApp(GalleryCommand& command) {
  auto app =
      std::make_unique<CLI::App>("Draws samples of every type, with a page that shows them.", "gallery");
  app->set_help_flag("-h,--help", "Print this help");
  app->add_option("DIR", command.directory, "Directory to write; it is made where it is missing");
  app->add_flag("--verbose", command.verbose, "Show the library's diagnostics on standard error");
  return app;
}

void TellOf(const std::vector<std::string>& failures) {
  for (const std::string& failure : failures) {
    WriteToStandardError(Concat({"mkbarcode: ", failure, "\n"}));
  }
}

int DrawGallery(const GalleryCommand& command) {
  const GalleryResult result =
      WriteGallery(LabelSamples(), LibrarySamples(), command.directory, command.verbose);
  TellOf(result.failures);
  WriteAll("-", Concat({"Made ", std::to_string(result.labels), " labels of ", std::to_string(result.types),
                        " symbologies and drew ", std::to_string(result.libraryPictures),
                        " pictures with the library. Look at ", result.indexFile, "\n"}));
  return result.failures.empty() ? kExitDone : kExitFailed;
}

}  // namespace

CommandDescription DescribeGalleryCommand() {
  GalleryCommand command;
  return Describe(*BuildGalleryApp(command));
}

int RunGalleryCommand(const std::vector<std::string>& arguments) {
  GalleryCommand command;
  const std::unique_ptr<CLI::App> app = BuildGalleryApp(command);
  if (!RunParser(*app, arguments)) {
    WriteAll("-", HelpPage(Describe(*app)));
    return kExitDone;
  }
  if (command.directory.empty()) {
    throw UsageError("gallery: no directory is given.");
  }
  return DrawGallery(command);
}

}  // namespace barcode::tool
