// The label library as a module of Node. A request is a JSON text; a result is an array of the picture
// (undefined when the label was refused), its media type and the report's text. What is beyond that is
// JavaScript's.
#include <barcode_label.h>
#include <node_api.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace barcode::node {
namespace {

struct FreeLabel {
  void operator()(BarcodeLabel* label) const { barcode_label_free(label); }
};
using LabelPtr = std::unique_ptr<BarcodeLabel, FreeLabel>;

LabelPtr MakeLabel(std::string_view request) {
  return LabelPtr(barcode_label_make(request.data(), request.size()));
}

// Values of JavaScript. Nullptr stands for failure: then an exception is pending, or the environment is going
// down.

napi_value ToString(napi_env env, std::string_view text) {
  napi_value value = nullptr;
  const bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; });
  const napi_status status = isAscii ? napi_create_string_latin1(env, text.data(), text.size(), &value)
                                     : napi_create_string_utf8(env, text.data(), text.size(), &value);
  return status == napi_ok ? value : nullptr;
}

// A copy: the label's own bytes end with it.
napi_value ToUint8Array(napi_env env, const unsigned char* bytes, std::size_t length) {
  void* copy = nullptr;
  napi_value buffer = nullptr;
  napi_value array = nullptr;
  if (napi_create_arraybuffer(env, length, &copy, &buffer) != napi_ok) {
    return nullptr;
  }
  std::memcpy(copy, bytes, length);
  return napi_create_typedarray(env, napi_uint8_array, length, buffer, 0, &array) == napi_ok ? array
                                                                                             : nullptr;
}

napi_value Undefined(napi_env env) {
  napi_value undefined = nullptr;
  return napi_get_undefined(env, &undefined) == napi_ok ? undefined : nullptr;
}

napi_value Picture(napi_env env, const BarcodeLabel* label) {
  std::size_t length = 0;
  const unsigned char* const bytes = barcode_label_data(label, &length);
  return bytes == nullptr ? Undefined(env) : ToUint8Array(env, bytes, length);
}

// Whether the three values of a label have become elements of `array`, from `index` on.
bool SetResult(napi_env env, napi_value array, std::uint32_t index, const BarcodeLabel* label) {
  const std::array values = {Picture(env, label), ToString(env, barcode_label_media_type(label)),
                             ToString(env, barcode_label_report(label))};
  return std::all_of(values.begin(), values.end(), [&](napi_value value) {
    return value != nullptr && napi_set_element(env, array, index++, value) == napi_ok;
  });
}

// The result of a function that has failed. Where an exception is pending, that one stays.
napi_value Failed(napi_env env) {
  napi_throw_error(env, nullptr, "Node refused a call of the label library's module.");
  return nullptr;
}

// The same as a value.
napi_value Failure(napi_env env) {
  napi_value error = Failed(env);
  return napi_get_and_clear_last_exception(env, &error) == napi_ok ? error : nullptr;
}

// The text of a string of JavaScript; false, with an exception, for anything else.
bool ReadString(napi_env env, napi_value value, std::string& text) {
  std::size_t length = 0;
  if (napi_get_value_string_utf8(env, value, nullptr, 0, &length) != napi_ok) {
    napi_throw_type_error(env, nullptr, "A request must be a string.");
    return false;
  }
  text.resize(length);
  return napi_get_value_string_utf8(env, value, text.data(), length + 1, &length) == napi_ok;
}

// Most requests are short: these need neither memory nor a second look at the string. Nullptr, as the
// library's own, stands for exhausted memory where no exception is pending.
LabelPtr MakeFromValue(napi_env env, napi_value value) {
  std::array<char, 1024>
      shortText;  // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
  std::size_t length = 0;
  const napi_status status =
      napi_get_value_string_utf8(env, value, shortText.data(), shortText.size(), &length);
  // A text that does not fit is cut at a character, which takes up to four bytes.
  if (status == napi_ok && length + 4 < shortText.size()) {
    return MakeLabel({shortText.data(), length});
  }
  try {
    std::string text;
    return ReadString(env, value, text) ? MakeLabel(text) : nullptr;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// Whether the requests are read; none are where memory does not suffice, and then none is made.
bool ReadRequests(napi_env env, napi_value value, std::string& requests) {
  try {
    return ReadString(env, value, requests);
  } catch (const std::bad_alloc&) {
    return true;
  }
}

template <std::size_t kCount>
bool ReadArguments(napi_env env, napi_callback_info info, std::array<napi_value, kCount>& arguments) {
  std::size_t count = kCount;
  return napi_get_cb_info(env, info, &count, arguments.data(), nullptr, nullptr) == napi_ok;
}

// makeLabel(request): the result.
napi_value MakeLabelNow(napi_env env, napi_callback_info info) {
  std::array<napi_value, 1> arguments = {};
  napi_value result = nullptr;
  if (!ReadArguments(env, info, arguments) || napi_create_array_with_length(env, 3, &result) != napi_ok) {
    return Failed(env);
  }
  const LabelPtr label = MakeFromValue(env, arguments[0]);
  return SetResult(env, result, 0, label.get()) ? result : Failed(env);
}

// Labels that are made one after the other on a thread of Node's pool. A call from JavaScript and back costs
// as much as a good part of a small label: what there is of many goes as one string, a line for each. The
// labels themselves are freed where they were made, which costs least.
struct Work {
  std::string requests;
  std::string answers;
  std::vector<unsigned char> pictures;
  std::vector<std::size_t> lengths;  // 0 where a label was refused
  double microseconds = 0;
  napi_deferred deferred = nullptr;
  napi_async_work handle = nullptr;
};

void MakeLabels(Work& work) {
  std::string_view rest = work.requests;
  while (!rest.empty()) {
    const std::size_t requestLength = std::min(rest.find('\n'), rest.size());
    const LabelPtr label = MakeLabel(rest.substr(0, requestLength));
    std::size_t length = 0;
    const unsigned char* const bytes = barcode_label_data(label.get(), &length);
    work.pictures.insert(work.pictures.end(), bytes, bytes + length);
    work.answers.append(barcode_label_media_type(label.get()))
        .append(barcode_label_report(label.get()))
        .push_back('\n');
    work.lengths.push_back(length);  // last: what memory did not suffice for does not count
    rest.remove_prefix(std::min(requestLength + 1, rest.size()));
  }
}

void Execute(napi_env /*env*/, void* data) {
  auto& work = *static_cast<Work*>(data);
  const auto begin = std::chrono::steady_clock::now();
  try {
    MakeLabels(work);
  } catch (const std::bad_alloc&) {
    // The results are those until now.
  }
  work.microseconds =
      std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
}

// The answers, the time that they took, and the pictures.
napi_value Results(napi_env env, const Work& work) {
  napi_value array = nullptr;
  napi_value time = nullptr;
  napi_value answers = ToString(env, work.answers);
  if (answers == nullptr || napi_create_array_with_length(env, work.lengths.size() + 2, &array) != napi_ok ||
      napi_create_double(env, work.microseconds, &time) != napi_ok ||
      napi_set_element(env, array, 0, answers) != napi_ok ||
      napi_set_element(env, array, 1, time) != napi_ok) {
    return nullptr;
  }
  std::uint32_t index = 2;
  const unsigned char* bytes = work.pictures.data();
  for (const std::size_t length : work.lengths) {
    napi_handle_scope scope = nullptr;
    if (napi_open_handle_scope(env, &scope) != napi_ok) {
      return nullptr;
    }
    napi_value picture = length == 0 ? Undefined(env) : ToUint8Array(env, bytes, length);
    const bool isSet = picture != nullptr && napi_set_element(env, array, index, picture) == napi_ok;
    napi_close_handle_scope(env, scope);
    if (!isSet) {
      return nullptr;
    }
    bytes += length;
    ++index;
  }
  return array;
}

// An environment that is going down takes no results; the work is freed all the same.
void Complete(napi_env env, napi_status status, void* data) {
  const std::unique_ptr<Work> work(static_cast<Work*>(data));
  if (napi_value results = status == napi_ok ? Results(env, *work) : nullptr; results != nullptr) {
    napi_resolve_deferred(env, work->deferred, results);
  } else if (napi_value error = Failure(env); error != nullptr) {
    napi_reject_deferred(env, work->deferred, error);
  }
  napi_delete_async_work(env, work->handle);
}

// The promise of its results; nullptr when it is not queued.
napi_value Queue(napi_env env, Work& work) {
  napi_value promise = nullptr;
  napi_value name = ToString(env, "libbarcode");
  if (name == nullptr || napi_create_promise(env, &work.deferred, &promise) != napi_ok ||
      napi_create_async_work(env, nullptr, name, Execute, Complete, &work, &work.handle) != napi_ok) {
    return nullptr;
  }
  if (napi_queue_async_work(env, work.handle) != napi_ok) {
    napi_delete_async_work(env, work.handle);
    return nullptr;
  }
  return promise;
}

// makeLabels(requests): a promise of an array: the answers, each the media type and the report behind it; the
// microseconds that they took; and then the pictures.
napi_value MakeLabelsInPool(napi_env env, napi_callback_info info) {
  std::array<napi_value, 1> arguments = {};
  try {
    auto work = std::make_unique<Work>();
    if (!ReadArguments(env, info, arguments) || !ReadRequests(env, arguments[0], work->requests)) {
      return Failed(env);
    }
    napi_value promise = Queue(env, *work);
    if (promise == nullptr) {
      return Failed(env);
    }
    static_cast<void>(work.release());  // Complete frees it
    return promise;
  } catch (const std::bad_alloc&) {
    return Failed(env);
  }
}

napi_value Types(napi_env env, napi_callback_info /*info*/) {
  return ToString(env, barcode_label_types());
}

napi_value Version(napi_env env, napi_callback_info /*info*/) {
  return ToString(env, barcode_label_version());
}

}  // namespace
}  // namespace barcode::node

// Both are called by Node, in each of its environments: nothing here is shared among them.
extern "C" {

NAPI_MODULE_EXPORT std::int32_t node_api_module_get_api_version_v1() {
  return NAPI_VERSION;
}

NAPI_MODULE_EXPORT napi_value napi_register_module_v1(napi_env env, napi_value exports) {
  using Function = std::pair<const char*, napi_callback>;
  constexpr std::array kFunctions = {Function("makeLabel", barcode::node::MakeLabelNow),
                                     Function("makeLabels", barcode::node::MakeLabelsInPool),
                                     Function("types", barcode::node::Types),
                                     Function("version", barcode::node::Version)};
  for (const auto& [name, function] : kFunctions) {
    napi_value value = nullptr;
    if (napi_create_function(env, name, NAPI_AUTO_LENGTH, function, nullptr, &value) != napi_ok ||
        napi_set_named_property(env, exports, name, value) != napi_ok) {
      return nullptr;
    }
  }
  return exports;
}

}  // extern "C"
