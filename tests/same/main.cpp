// Records what a library does with some thousands of random draws, so that two libraries can be compared.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>

#include "same/compare.h"
#include "same/host.h"
#include "same/journal.h"
#include "same/library.h"
#include "same/session.h"
#include "same/streams.h"

namespace barcode::same {
namespace {

struct Arguments {
  std::string library;
  std::string file;
  std::string folder;
  std::string otherFile;
  SessionName name;
  int sessions = 300;
  int shards = 1;
  int shard = 0;
  int seed = 1;
};

void Record(const Arguments& arguments) {
  const Library library(arguments.library);
  std::FILE* const file = std::fopen(arguments.file.c_str(), "w");
  if (file == nullptr) {
    throw std::runtime_error("cannot write " + arguments.file);
  }
  Streams streams;
  RecordJournal journal(file);
  int position = 0;
  for (const SessionName& name : AllSessions(arguments.name.type, arguments.sessions)) {
    if (position++ % arguments.shards != arguments.shard) {
      continue;
    }
    journal.SetSession(name.type + " " + name.session);
    streams.Join(StreamsJoined(name));
    Host host(library, streams, journal);
    RunSession(host, name, arguments.seed);
  }
  if (std::fclose(file) != 0) {
    throw std::runtime_error("cannot write " + arguments.file);
  }
}

void Show(const Arguments& arguments) {
  const Library library(arguments.library);
  FullJournal journal(arguments.folder);
  Streams streams;
  streams.Join(StreamsJoined(arguments.name));
  Host host(library, streams, journal);
  RunSession(host, arguments.name, arguments.seed);
}

int Main(int argc, char** argv) {
  CLI::App app("Records what a libbarcode.so does with random draws, and compares records.");
  app.require_subcommand(1);
  Arguments arguments;

  CLI::App* const record = app.add_subcommand("record", "Record one line per call into a file");
  record->add_option("library", arguments.library, "The shared library")->required();
  record->add_option("file", arguments.file, "The record")->required();
  record->add_option("--sessions", arguments.sessions, "Random sessions per type")
      ->check(CLI::NonNegativeNumber)
      ->capture_default_str();
  record->add_option("--seed", arguments.seed, "Other seeds make other draws")->capture_default_str();
  record->add_option("--type", arguments.name.type, "One type only, by the name it has in the record");
  record->add_option("--shards", arguments.shards, "Divide the sessions among so many processes")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
  record->add_option("--shard", arguments.shard, "Which share is recorded, from 0")->capture_default_str();

  CLI::App* const show =
      app.add_subcommand("show", "Write one session in full into a folder, which is emptied");
  show->add_option("library", arguments.library, "The shared library")->required();
  show->add_option("type", arguments.name.type, "As in the record")->required();
  show->add_option("session", arguments.name.session, "As in the record")->required();
  show->add_option("--into", arguments.folder, "The folder, for calls.txt, documents and pictures")
      ->required();
  show->add_option("--seed", arguments.seed, "As the record was made with")->capture_default_str();

  CLI::App* const compare =
      app.add_subcommand("compare", "Compare two records; exit status 1 when they differ");
  compare->add_option("base", arguments.file, "The record of the base")->required();
  compare->add_option("new", arguments.otherFile, "The other record")->required();
  CLI11_PARSE(app, argc, argv);

  if (record->parsed()) {
    Record(arguments);
  } else if (show->parsed()) {
    Show(arguments);
  } else {
    return CompareRecords(arguments.file, arguments.otherFile) ? 0 : 1;
  }
  return 0;
}

}  // namespace
}  // namespace barcode::same

int main(int argc, char** argv) {
  try {
    return barcode::same::Main(argc, argv);
  } catch (const std::exception& error) {
    (void)std::fprintf(stderr, "barcode_record: %s\n", error.what());
    return 2;
  }
}
