#include "mkbarcode/gallery_command.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "mkbarcode/cli/help_page.h"
#include "mkbarcode/cli/parser.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/gallery.h"
#include "mkbarcode/gallery_samples.h"
#include "mkbarcode/io.h"
#include "mkbarcode/label_gallery.h"
#include "mkbarcode/label_samples.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

struct GalleryCommand {
  std::string directory;
  bool verbose = false;
};

std::unique_ptr<CLI::App> BuildGalleryApp(GalleryCommand& command) {
  auto app = std::make_unique<CLI::App>("Draws samples of every type, with pages that show them.", "gallery");
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
