#pragma once

#include <string>

// libbarcode.so, which is opened when a function of it is called first: labels do without it, and without all
// that it loads.
namespace barcode::tool {

// Of a function of barcode.h. Throws RunError where the library is not to be found.
void* AddressInLibrary(const std::string& function);

// A function of barcode.h by its name, called as usual: LibraryFunction<decltype(barcode_create)>.
template <class Function>
struct LibraryFunction {
  const char* name;

  template <class... Arguments>
  auto operator()(Arguments... arguments) const {
    return reinterpret_cast<Function*>(AddressInLibrary(name))(arguments...);
  }
};

}  // namespace barcode::tool
