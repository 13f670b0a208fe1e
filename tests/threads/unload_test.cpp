// Hosts may load the library, draw and unload it as often as they like.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <latch>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>

#include "barcode.h"
#include "support/capture.h"
#include "support/own_memory.h"

namespace barcode::test {
namespace {

class LoadedLibrary {
 public:
  LoadedLibrary() : m_library(dlopen(TEST_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    if (m_library == nullptr) {
      throw std::runtime_error(dlerror());
    }
  }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;
  ~LoadedLibrary() { dlclose(m_library); }

  template <class Function>
  Function* Find(const char* name, Function* /*declared*/) const {
    return reinterpret_cast<Function*>(dlsym(m_library, name));
  }

 private:
  void* m_library;
};

// A picture with text.
std::string DrawWith(const LoadedLibrary& library) {
  const auto create = library.Find("barcode_create", barcode_create);
  const auto draw = library.Find("barcode_draw_1d", barcode_draw_1d);
  const auto get = library.Find("barcode_get_base64", barcode_get_base64);
  const auto destroy = library.Find("barcode_destroy", barcode_destroy);
  const BarcodeHandle code = create(BARCODE_CODE39);
  std::string uri = draw(code, "ABC", 300, 100) == 1 ? get(code) : "";
  destroy(code);
  return uri;
}

// A thread that has drawn keeps the library in memory until it ends.
std::string DrawOnThread(const LoadedLibrary& library) {
  std::string drawn;
  std::thread([&] { drawn = DrawWith(library); }).join();
  return drawn;
}

// What all pictures hold of 50 loads; empty if they differ.
std::string LoadAndDrawAgainAndAgain() {
  constexpr int kCycles = 50;
  std::set<std::string> drawn;
  for (int cycle = 0; cycle < kCycles; ++cycle) {
    const LoadedLibrary library;
    drawn.insert(DrawOnThread(library));
  }
  return drawn.size() == 1 ? *drawn.begin() : "";
}

TEST(Unload, AsOftenAsOneLikesTakesNoMemory) {
  constexpr std::size_t kTolerance = 200'000;
  std::string first;
  std::string second;
  std::size_t heapBefore = 0;
  std::size_t ownBefore = 0;
  WithoutOutput([&] {
    first = LoadAndDrawAgainAndAgain();
    heapBefore = mallinfo2().uordblks;
    ownBefore = OwnMemory("self");
    second = LoadAndDrawAgainAndAgain();
  });
  EXPECT_LT(mallinfo2().uordblks, heapBefore + kTolerance);
  EXPECT_GT(ownBefore, 0);
  EXPECT_LT(OwnMemory("self"), ownBefore + kTolerance);
  EXPECT_THAT(first, testing::StartsWith("data:image/png;base64,iVBORw0KGgo"));
  EXPECT_EQ(second, first);
}

// What the thread's calls left in SDL is freed at its end, by code of the library.
TEST(Unload, BeforeAThreadEndsThatHasDrawn) {
  std::string before;
  std::string after;
  WithoutOutput([&] {
    std::latch drawn(1);
    std::latch unloaded(1);
    std::thread thread;
    {
      const LoadedLibrary library;
      thread = std::thread([&] {
        before = DrawWith(library);
        drawn.count_down();
        unloaded.wait();
      });
      drawn.wait();
    }
    unloaded.count_down();
    thread.join();
    const LoadedLibrary again;
    after = DrawWith(again);
  });
  EXPECT_THAT(before, testing::StartsWith("data:image/png;base64,iVBORw0KGgo"));
  EXPECT_EQ(after, before);
}

}  // namespace
}  // namespace barcode::test
