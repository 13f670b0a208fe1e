// Hosts may load the library, make labels and unload it as often as they like.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstring>
#include <stdexcept>
#include <string>

#include "barcode_label.h"

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

bool IsLoaded() {
  void* const library = dlopen(TEST_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
  if (library != nullptr) {
    dlclose(library);
  }
  return library != nullptr;
}

// The sizes of a label in each format.
std::string UseOnce() {
  const LoadedLibrary library;
  const auto make = library.Find("barcode_label_make", barcode_label_make);
  const auto data = library.Find("barcode_label_data", barcode_label_data);
  const auto destroy = library.Find("barcode_label_free", barcode_label_free);
  const auto types = library.Find("barcode_label_types", barcode_label_types);
  std::string sizes = std::to_string(std::strlen(types()));
  for (const char* const format : {"png", "svg", "pdf"}) {
    const std::string request =
        std::string(R"({"type":"jan13","text":"490123456789","format":")") + format + "\"}";
    BarcodeLabel* const label = make(request.data(), request.size());
    std::size_t length = 0;
    data(label, &length);
    sizes += ' ' + std::to_string(length);
    destroy(label);
  }
  return sizes;
}

std::size_t HeldBytes() {
  return mallinfo2().uordblks;
}

TEST(LabelUnload, TheLibraryGoesAndLeavesNothing) {
  EXPECT_FALSE(IsLoaded());
  const std::string sizes = UseOnce();
  EXPECT_FALSE(IsLoaded());
  // The dynamic linker's own lists grow with the first loads, of whatever library.
  for (int i = 0; i < 50; ++i) {
    UseOnce();
  }
  const std::size_t held = HeldBytes();
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(UseOnce(), sizes);
  }
  EXPECT_FALSE(IsLoaded());
  EXPECT_LE(HeldBytes(), held + 1000);
}

}  // namespace
}  // namespace barcode::test
