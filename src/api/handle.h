#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "barcode.h"
#include "core/barcode_base.h"
#include "core/call_in_progress.h"
#include "core/diagnostics.h"
#include "core/sdl_thread_data.h"

// What a BarcodeHandle points to.
struct BarcodeHandleRecord {
  std::unique_ptr<barcode::BarcodeBase> object;
  int type = 0;
  std::string resultText;                 // last string of barcode_get_base64 or barcode_get_svg
  std::vector<std::uint8_t> resultBytes;  // last buffer of barcode_get_image_data
};

namespace barcode {

// The boundary to the host: nothing is thrown across it, and what was printed is flushed before it is left.
// Returns the call's result, or `failed` when it threw. tag: what stands before the reason on standard error;
// without one, nothing is said.
template <class Result, class Call>
Result Guarded(Result failed, Call call, std::string_view tag = {}) noexcept {
  const CallInProgress inProgress;
  Result result = failed;
  try {
    PrepareSdlThreadData();
    result = call();
  } catch (const std::exception& error) {
    if (!tag.empty()) {
      ErrorLine(tag, error.what());
    }
    result = failed;
  } catch (...) {
    result = failed;
  }
  FlushOutput();
  return result;
}

// The object of a handle as one of the classes that a function serves; null when the handle holds none of
// them.
template <class Symbology>
Symbology* ObjectAs(BarcodeHandle handle) {
  return handle == nullptr ? nullptr : dynamic_cast<Symbology*>(handle->object.get());
}

// Calls `call` with the handle's object if it is a Symbology; returns `otherwise` if it is not, or on
// failure.
template <class Symbology, class Result, class Call>
Result With(BarcodeHandle handle, Result otherwise, Call call) noexcept {
  return Guarded(otherwise, [&]() -> Result {
    auto* const object = ObjectAs<Symbology>(handle);
    return object == nullptr ? otherwise : call(*object);
  });
}

// The same for functions without result, and with any of several classes.
template <class... Symbologies, class Call>
void Set(BarcodeHandle handle, Call call) noexcept {
  Guarded(0, [&] {
    const auto apply = [&](auto* object) {
      if (object != nullptr) {
        call(*object);
      }
    };
    (apply(ObjectAs<Symbologies>(handle)), ...);
    return 0;
  });
}

// Setters of a string; a null string changes nothing.
template <class... Symbologies, class Call>
void SetText(BarcodeHandle handle, const char* text, Call call) noexcept {
  if (text == nullptr) {
    return;
  }
  Set<Symbologies...>(handle, [&](auto& object) { call(object, text); });
}

// Draws of a text: 1 when drawn, 0 otherwise.
template <class Symbology, class Call>
int DrawText(BarcodeHandle handle, const char* text, Call call) noexcept {
  auto* const object = ObjectAs<Symbology>(handle);
  if (object == nullptr || text == nullptr) {
    return 0;
  }
  return Guarded(
      0, [&] { return call(*object, std::string(text)) ? 1 : 0; }, object->Tag());
}

}  // namespace barcode
