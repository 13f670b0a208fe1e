// A host that runs for long: draws of every type with ordinary options at random, in pictures and documents,
// into handles that live all the time and others that live for one draw. What the process holds must not
// grow.
//   soak [--draws N] [--type T] [--seed S]
// A line for every tenth of the draws; exit status 1 when memory, descriptors or threads have grown from the
// first quarter to the end.
#include <malloc.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "barcode.h"
#include "fuzz/require.h"
#include "support/barcode_object.h"
#include "support/random_text.h"
#include "support/symbologies.h"

namespace barcode::fuzz {
namespace {

using test::BarcodeObject;
using test::RandomText;

constexpr double kMegabyte = 1024.0 * 1024.0;

// What malloc has handed out may grow by no more than this: a leak of one byte a draw shows in a million of
// them.
constexpr double kMostGrowthInUse = 0.5;
// What the process occupies also holds free pieces between those in use, which find their level slowly.
constexpr double kMostGrowthResident = 16.0;

struct Process {
  double residentMegabytes = 0;
  double inUseMegabytes = 0;
  double freeMegabytes = 0;
  long descriptors = 0;
  long threads = 0;
};

long FieldOfStatus(std::string_view name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) {
      return std::strtol(line.c_str() + name.size() + 1, nullptr, 10);
    }
  }
  Require(false, "the status of the process can be read");
  return 0;
}

Process Measure() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  Process process;
  process.descriptors = std::distance(descriptors, {});
  const struct mallinfo2 memory = mallinfo2();
  process.inUseMegabytes = static_cast<double>(memory.uordblks + memory.hblkhd) / kMegabyte;
  process.freeMegabytes = static_cast<double>(memory.fordblks) / kMegabyte;
  process.residentMegabytes = static_cast<double>(FieldOfStatus("VmRSS:")) / 1024;
  process.threads = FieldOfStatus("Threads:");
  return process;
}

// Texts of the type, of different lengths where it allows them.
std::string TextFor(RandomText& random, int type) {
  switch (type) {
    case BARCODE_CODE39:
    case BARCODE_CODE93:
      return random.Of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%", 1, 24);
    case BARCODE_CODE128:
      return random.Bytes(1, 30, ' ', '~');
    case BARCODE_NW7:
    case BARCODE_MATRIX_2OF5:
    case BARCODE_NEC_2OF5:
    case BARCODE_ITF:
      return random.Digits(1, 24);
    case BARCODE_YUBIN_CUSTOMER:
      return random.Of("0123456789-ABCXYZ", 1, 20);
    case BARCODE_QR:
    case BARCODE_DATAMATRIX:
    case BARCODE_PDF417:
      return random.Number(0, 3) == 0 ? "\xE6\x97\xA5\xE6\x9C\xAC" + random.Digits(0, 20)
                                      : random.Bytes(1, random.Number(0, 9) == 0 ? 400 : 60, ' ', '~');
    default:
      return test::ValidText(type);
  }
}

template <std::size_t Size>
const char* Of(RandomText& random, const std::array<const char*, Size>& words) {
  return words[static_cast<std::size_t>(random.Number(0, Size - 1))];
}

void SetOptions(RandomText& random, BarcodeHandle handle) {
  constexpr std::array kEncodings = {"utf-8", "shift-jis"};
  constexpr std::array kLevels = {"L", "M", "Q", "H"};
  constexpr std::array kSchemes = {"AUTO", "ASCII", "C40", "BASE256"};
  constexpr std::array kForms = {"OMNIDIRECTIONAL", "STACKED", "STACKED_OMNIDIRECTIONAL"};
  constexpr std::array kForms2 = {"UNSTACKED", "STACKED"};
  barcode_set_foreground_color(handle, random.Number(0, 255), 0, 0, 255);
  barcode_set_background_color(handle, 255, 255, 255, random.Number(0, 255));
  barcode_set_fit_width(handle, random.Number(0, 1));
  barcode_set_px_adjust_black(handle, random.Number(-1, 1));
  barcode_set_show_text(handle, random.Number(0, 3));
  barcode_set_text_even_spacing(handle, random.Number(0, 1));
  barcode_set_text_font_scale(handle, random.Number(5, 20) / 10.0);
  barcode_set_text_gap(handle, random.Number(5, 20) / 10.0);
  barcode_set_show_start_stop(handle, random.Number(0, 1));
  barcode_set_extended_guard(handle, random.Number(0, 1));
  barcode_set_string_encoding(handle, Of(random, kEncodings));
  barcode_set_error_correction_level(handle, Of(random, kLevels));
  barcode_set_encode_scheme(handle, Of(random, kSchemes));
  barcode_set_aspect_ratio(handle, random.Number(1, 40) / 10.0);
  barcode_set_symbol_type_14(handle, Of(random, kForms));
  barcode_set_symbol_type_exp(handle, Of(random, kForms2));
}

void Fetch(RandomText& random, BarcodeHandle handle, bool isSvg) {
  if (isSvg) {
    Require(std::string_view(barcode_get_svg(handle)).ends_with("</svg>\n"), "a document was drawn");
    return;
  }
  int length = 0;
  Require(barcode_get_image_data(handle, &length) != nullptr, "a picture was drawn");
  if (random.Number(0, 1) == 0) {
    Require(std::string_view(barcode_get_base64(handle)).starts_with("data:image/png;base64,"),
            "a URI was made");
  }
}

void DrawOnce(RandomText& random, BarcodeHandle handle, int type) {
  SetOptions(random, handle);
  const bool isSvg = random.Number(0, 1) == 0;
  barcode_set_output_format(handle, isSvg ? "svg" : "png");
  const std::string text = TextFor(random, type);
  const int width = random.Number(40, 300);
  const int height = type == BARCODE_YUBIN_CUSTOMER ? random.Number(8, 40) : random.Number(20, 150);
  if (barcode_draw_1d(handle, text.c_str(), width, height) == 1) {
    Fetch(random, handle, isSvg);
  }
}

// The same state whatever was drawn before: small symbols in the handles, fonts of the same sizes open.
void Settle(const std::vector<BarcodeObject>& objects, std::span<const int> types) {
  RandomText same(1);
  for (std::size_t i = 0; i < objects.size(); ++i) {
    for (const bool isSvg : {true, false}) {
      barcode_set_output_format(objects[i], isSvg ? "svg" : "png");
      barcode_set_encode_scheme(objects[i], "AUTO");
      barcode_set_show_text(objects[i], 1);
      barcode_set_text_font_scale(objects[i], 1);
      Require(barcode_draw_1d(objects[i], test::ValidText(types[i]), 100, 30) == 1, "a symbol is drawn");
      Fetch(same, objects[i], isSvg);
    }
  }
  const BarcodeObject fonts(BARCODE_CODE39);
  for (int height = 100; height < 200; height += 10) {
    Require(barcode_draw_1d(fonts, "ABC", 300, height) == 1, "a symbol is drawn");
  }
}

struct Arguments {
  long draws = 1'000'000;
  int type = -1;  // every type
  std::uint64_t seed = 1;
};

Arguments Parse(std::span<char*> words) {
  Arguments arguments;
  for (std::size_t i = 1; i + 1 < words.size(); i += 2) {
    const std::string_view name = words[i];
    const long value = std::strtol(words[i + 1], nullptr, 10);
    if (name == "--draws") {
      arguments.draws = value;
    } else if (name == "--type") {
      arguments.type = static_cast<int>(value);
    } else if (name == "--seed") {
      arguments.seed = static_cast<std::uint64_t>(value);
    }
  }
  return arguments;
}

bool HasGrown(const Process& before, const Process& after) {
  return after.inUseMegabytes > before.inUseMegabytes + kMostGrowthInUse ||
         after.residentMegabytes > before.residentMegabytes + kMostGrowthResident ||
         after.descriptors != before.descriptors || after.threads != before.threads;
}

int Soak(const Arguments& arguments) {
  std::FILE* const report = stdout;
  SilenceStreams();
  const std::vector<int> types =
      arguments.type < 0 ? test::EverySymbology() : std::vector<int>{arguments.type};
  const std::vector<BarcodeObject> objects(types.begin(), types.end());
  RandomText random(arguments.seed);
  const auto printed = [&](long draws) {
    const Process process = Measure();
    (void)std::fprintf(
        report,
        "%9ld draws  resident %6.1f MB  in use %6.2f MB  free %6.2f MB  descriptors %ld  threads %ld\n",
        draws, process.residentMegabytes, process.inUseMegabytes, process.freeMegabytes, process.descriptors,
        process.threads);
    (void)std::fflush(report);
    return process;
  };
  Process quarter;
  for (long draw = 1; draw <= arguments.draws; ++draw) {
    const auto place = static_cast<std::size_t>(random.Number(0, static_cast<int>(types.size()) - 1));
    if (random.Number(0, 1) == 0) {
      DrawOnce(random, objects[place], types[place]);
    } else {
      DrawOnce(random, BarcodeObject(types[place]), types[place]);
    }
    const bool isTenth = draw % std::max(arguments.draws / 10, 1L) == 0;
    const bool isQuarter = draw == arguments.draws / 4;
    if (isTenth || isQuarter) {
      Settle(objects, types);
      const Process process = printed(draw);
      quarter = isQuarter ? process : quarter;
    }
  }
  const Process end = Measure();
  malloc_trim(0);
  const double trimmed = Measure().residentMegabytes;
  const bool grown = HasGrown(quarter, end);
  (void)std::fprintf(report, "%s from the first quarter to the end; resident %.1f MB after malloc_trim\n",
                     grown ? "GROWN" : "no growth", trimmed);
  (void)std::fflush(report);
  return grown ? 1 : 0;
}

}  // namespace
}  // namespace barcode::fuzz

int main(int argc, char** argv) {
  return barcode::fuzz::Soak(barcode::fuzz::Parse({argv, static_cast<std::size_t>(argc)}));
}
