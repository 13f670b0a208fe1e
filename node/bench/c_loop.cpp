// What a label costs a host in C, for ratios.mjs: it calls this loop and the package in turns.
#include <barcode_label.h>
#include <node_api.h>
#include <time.h>

#include <array>
#include <cstddef>
#include <string>

namespace {

double ThreadSeconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The picture and the report are looked at where they lie. Negative when a label is refused.
double LoopSeconds(const std::string& request, int count) {
  const double begin = ThreadSeconds();
  for (int i = 0; i < count; ++i) {
    BarcodeLabel* const label = barcode_label_make(request.data(), request.size());
    std::size_t length = 0;
    const unsigned char* const data = barcode_label_data(label, &length);
    const bool isWhole = data != nullptr && length > 0 && *barcode_label_report(label) == '{';
    barcode_label_free(label);
    if (!isWhole) {
      return -1;
    }
  }
  return ThreadSeconds() - begin;
}

// loopSeconds(request, count): the processor time of so many labels.
napi_value Loop(napi_env env, napi_callback_info info) {
  std::array<napi_value, 2> arguments = {};
  std::size_t argumentCount = arguments.size();
  std::array<char, 4096> request = {};
  std::size_t length = 0;
  int count = 0;
  napi_value seconds = nullptr;
  if (napi_get_cb_info(env, info, &argumentCount, arguments.data(), nullptr, nullptr) != napi_ok ||
      napi_get_value_string_utf8(env, arguments[0], request.data(), request.size(), &length) != napi_ok ||
      napi_get_value_int32(env, arguments[1], &count) != napi_ok) {
    return nullptr;
  }
  napi_create_double(env, LoopSeconds({request.data(), length}, count), &seconds);
  return seconds;
}

}  // namespace

extern "C" NAPI_MODULE_EXPORT napi_value napi_register_module_v1(napi_env env, napi_value exports) {
  napi_value function = nullptr;
  napi_create_function(env, "loopSeconds", NAPI_AUTO_LENGTH, Loop, nullptr, &function);
  napi_set_named_property(env, exports, "loopSeconds", function);
  return exports;
}
