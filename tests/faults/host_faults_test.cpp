// What a host sees when SDL cannot paint, when no file descriptor is left, and when it has loaded the library
// itself and a thread finds no memory for its first call.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "barcode.h"
#include "faults/allocations.h"
#include "faults/interposed.h"
#include "faults/isolated.h"
#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/scratch_folder.h"
#include "support/symbologies.h"

namespace barcode::test {
namespace {

bool Is2D(int type) {
  return type >= BARCODE_QR;
}

int DrawValid(BarcodeHandle handle, int type) {
  return Is2D(type) ? barcode_draw_2d(handle, ValidText(type), 60)
                    : barcode_draw_1d(handle, ValidText(type), 200, 60);
}

// The last line, without its line break.
std::string LastLine(std::string text) {
  if (!text.ends_with('\n')) {
    return "no line: " + text;
  }
  text.pop_back();
  return text.substr(text.rfind('\n') + 1);
}

class PaintFaults : public ::testing::TestWithParam<int> {
 protected:
  const int type = GetParam();
  const BarcodeObject object{type};

  Captured DrawWith(Fault fault, int drawn) {
    return Capture([&] {
      const Failing failing(fault);
      EXPECT_EQ(DrawValid(object, type), drawn);
    });
  }
};

TEST_P(PaintFaults, APictureWithoutItsBarsIsNoPicture) {
  for (const auto& [fault, words] :
       {std::pair{Fault::FillRects, "SDL_RenderFillRectsF error: injected"},
        std::pair{Fault::SetDrawColour, "SDL_SetRenderDrawColor error: injected"},
        std::pair{Fault::SetDrawBlendMode, "SDL_SetRenderDrawBlendMode error: injected"},
        std::pair{Fault::OutputSize, "SDL_GetRendererOutputSize error: injected"},
        std::pair{Fault::RenderFlush, "SDL_RenderFlush error: injected"}}) {
    const std::string line = LastLine(DrawWith(fault, 0).err);
    EXPECT_TRUE(line.starts_with('[')) << line;
    EXPECT_TRUE(line.ends_with(std::string("] ") + words)) << line;
  }
  const BarcodeObject other(type);
  (void)Capture([&] {
    EXPECT_EQ(DrawValid(object, type), 1);
    EXPECT_EQ(DrawValid(other, type), 1);
  });
  EXPECT_FALSE(object.Png().empty());
  EXPECT_TRUE(object.Picture() == other.Picture());
}

TEST_P(PaintFaults, TextThatCannotBePaintedIsReportedAndLeftOut) {
  if (Is2D(type) || type == BARCODE_YUBIN_CUSTOMER) {
    EXPECT_EQ(DrawWith(Fault::RenderCopy, 1).err, "");
    return;
  }
  const BarcodeObject whole(type);
  (void)Capture([&] { EXPECT_EQ(DrawValid(whole, type), 1); });
  const Image expected = whole.Picture();
  for (const auto& [fault, words] :
       {std::pair{Fault::RenderCopy, "SDL_RenderCopy error: injected"},
        std::pair{Fault::SetTextureBlendMode, "SDL_SetTextureBlendMode error: injected"}}) {
    EXPECT_EQ(LastLine(DrawWith(fault, 1).err), words);
    const Image bars = object.Picture();
    ASSERT_EQ(bars.pixels.size(), expected.pixels.size());
    EXPECT_FALSE(bars == expected);
    // What is missing is white: the rest is as it was.
    for (std::size_t i = 0; i < bars.pixels.size(); ++i) {
      ASSERT_TRUE(bars.pixels[i] == expected.pixels[i] || bars.pixels[i] == kWhitePixel) << i;
    }
    const std::ptrdiff_t rows = std::ptrdiff_t{20} * bars.width;
    EXPECT_TRUE(std::equal(bars.pixels.begin(), bars.pixels.begin() + rows, expected.pixels.begin()));
  }
}

INSTANTIATE_TEST_SUITE_P(Every, PaintFaults, ::testing::Range(0, BARCODE_PDF417 + 1));

TEST(PaintFaultsOfForms, StackedAndPaymentForm) {
  const BarcodeObject stacked(BARCODE_GS1_DATABAR_EXPANDED);
  const BarcodeObject form(BARCODE_GS1_128);
  const auto stackedLines = Capture([&] {
    const Failing failing(Fault::FillRects);
    EXPECT_EQ(barcode_draw_stacked(stacked, "{AI}0190012345678908", 200, 100), 0);
  });
  EXPECT_EQ(LastLine(stackedLines.err), "[GS1 DataBar Expanded] SDL_RenderFillRectsF error: injected");
  const auto formLines = Capture([&] {
    const Failing failing(Fault::FillRects);
    EXPECT_EQ(barcode_draw_convenience(form, "9191234500000000001234567890123456789012345", 600, 100), 0);
  });
  EXPECT_EQ(formLines.err, "[GS1-128 Convenience] SDL_RenderFillRectsF error: injected\n");
}

// Nothing can be opened while it lives.
class NoDescriptors {
 public:
  NoDescriptors() {
    getrlimit(RLIMIT_NOFILE, &m_former);
    const int lowest = dup(STDERR_FILENO);
    close(lowest);
    rlimit none = m_former;
    none.rlim_cur = static_cast<rlim_t>(lowest);
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &m_former); }
  NoDescriptors(const NoDescriptors&) = delete;
  NoDescriptors& operator=(const NoDescriptors&) = delete;

 private:
  rlimit m_former{};
};

class DescriptorFaults : public ::testing::TestWithParam<int> {};

constexpr const char* kKana = "\xE3\x82\xA2\xE6\xBC\xA2";

// In a process that has converted nothing before: what the C library has open, it keeps.
TEST_P(DescriptorFaults, AConversionThatCannotBeOpenedFailsTheDraw) {
  const int type = GetParam();
  const std::string end = RunInChild([type] {
    static Streams streams;
    const BarcodeObject object(type);
    barcode_set_string_encoding(object, "shift-jis");
    streams.Clear();
    int drawn = 0;
    {
      const NoDescriptors none;
      drawn = barcode_draw_2d(object, kKana, 60);
    }
    SharedLegacy().used = 0;
    Bequeath(drawn == 0 && object.Png().empty() ? "refused: " : "drawn: ");
    Bequeath(streams.Err());
    // A draw that converts nothing, and one into the character set that the text has.
    barcode_set_string_encoding(object, "utf-8");
    const NoDescriptors none;
    Bequeath(barcode_draw_2d(object, "HELLO", 60) == 1 && barcode_draw_2d(object, kKana, 60) == 1 ? "drawn"
                                                                                                  : "");
  });
  EXPECT_EQ(end, "");
  const Legacy& legacy = SharedLegacy();
  const std::string text(legacy.text.data(), legacy.used);
  const std::string tag = type == BARCODE_QR           ? "[QR] "
                          : type == BARCODE_DATAMATRIX ? "[DataMatrix] "
                                                       : "[PDF417] ";
  EXPECT_EQ(text, "refused: " + tag +
                      "Character set conversion is not available: cannot write Shift-JIS (CP932).\ndrawn");
}

INSTANTIATE_TEST_SUITE_P(Every, DescriptorFaults,
                         ::testing::Values(BARCODE_QR, BARCODE_DATAMATRIX, BARCODE_PDF417));

// Draws need no descriptor, the first of a process included.
TEST(DescriptorFaultsOfOthers, NothingElseNeedsOne) {
  const std::string end = RunInChild([] {
    static Streams streams;
    SharedLegacy().number = 0;
    const NoDescriptors none;
    for (const int type : EverySymbology()) {
      const BarcodeObject object(type);
      SharedLegacy().number += DrawValid(object, type) == 1 && !object.Png().empty() ? 1 : 0;
    }
  });
  EXPECT_EQ(end, "");
  EXPECT_EQ(SharedLegacy().number, BARCODE_PDF417 + 1);
}

// A second copy of the library, loaded as an interpreter loads it: what it keeps of a thread is then not part
// of the program's own threads.
class LoadedLibrary {
 public:
  LoadedLibrary() {
    Dl_info info{};
    dladdr(reinterpret_cast<void*>(&barcode_create), &info);
    const ScratchFolder folder;
    const std::string copy = folder.File("libbarcode.so");
    std::filesystem::copy_file(std::filesystem::canonical(info.dli_fname), copy);
    m_library = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
  }

  template <class Function>
  Function* Find(Function* /*like*/, const char* name) const {
    return reinterpret_cast<Function*>(dlsym(m_library, name));
  }

 private:
  void* m_library = nullptr;
};

TEST(LoadedLibraryFaults, TheFirstCallOfAThreadFindsNoMemory) {
  const LoadedLibrary library;
  auto* const create = library.Find(&barcode_create, "barcode_create");
  auto* const draw = library.Find(&barcode_draw_1d, "barcode_draw_1d");
  auto* const destroy = library.Find(&barcode_destroy, "barcode_destroy");
  ASSERT_NE(create, nullptr);
  ASSERT_NE(create, &barcode_create);
  for (const long count : {1L, kForGood}) {
    bool fired = true;
    for (long n = 1; fired; ++n) {
      const std::string end = RunInChild([&] {
        static Streams streams;
        const BarcodeHandle handle = create(BARCODE_CODE39);
        int drawn = -1;
        std::thread([&] {
          const FailingAllocations failing({.first = n, .count = count});
          drawn = draw(handle, "ABC", 100, 40);
        }).join();
        const bool isTold = drawn == 1 || !streams.Err().empty();
        SharedLegacy().isDone = !FailingAllocations::Fired();
        SharedLegacy().number = isTold && draw(handle, "ABC", 100, 40) == 1 ? 1 : 0;
        destroy(handle);
      });
      ASSERT_EQ(end, "") << n;
      ASSERT_EQ(SharedLegacy().number, 1) << n;
      fired = !SharedLegacy().isDone;
    }
  }
}

}  // namespace
}  // namespace barcode::test
