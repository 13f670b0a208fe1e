#include "mkbarcode/library/shared_library.h"

#include <dlfcn.h>

#include <array>
#include <filesystem>
#include <system_error>

#include "mkbarcode/errors.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

namespace fs = std::filesystem;

// Where the library lies beside the program, in the build tree and in the installed one.
fs::path PathBesideProgram() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  // An absolute folder takes the place of the program's.
  return program.parent_path() / MKBARCODE_LIBRARY_DIRECTORY / MKBARCODE_LIBRARY_NAME;
}

void* Open() {
  const fs::path beside = PathBesideProgram();
  std::error_code error;
  // Elsewhere it may be loaded already, or be among those of the system.
  const std::string name = fs::exists(beside, error) ? beside.string() : MKBARCODE_LIBRARY_NAME;
  void* const library = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    throw RunError(Concat(
        {"cannot load the library that draws here, looked for as ", beside.string(), ": ", dlerror()}));
  }
  return library;
}

}  // namespace

void* AddressInLibrary(const std::string& function) {
  static void* const library = Open();
  void* const address = dlsym(library, function.c_str());
  if (address == nullptr) {
    throw RunError(Concat({"the library ", MKBARCODE_LIBRARY_NAME, " has no function ", function}));
  }
  return address;
}

}  // namespace barcode::tool
