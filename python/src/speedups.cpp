// What a label costs in Python beside its drawing, compiled: a request of plain values becomes JSON here,
// what the library has made becomes a Label, and many are drawn in one call. The package gives the library,
// as addresses of its functions, and the rules for whatever is not plain. Without this module the package
// does the same, and takes longer.
#include <Python.h>

#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

struct BarcodeLabel;

// Of every interpreter since 3.3, and declared in the stable interface since 3.10: what it gives lies in the
// string.
extern "C" const char* PyUnicode_AsUTF8AndSize(PyObject* string, Py_ssize_t* length);

namespace barcode::python {
namespace {

struct Release {
  void operator()(PyObject* object) const { Py_XDECREF(object); }
};
using Object = std::unique_ptr<PyObject, Release>;

Object Shared(PyObject* object) {
  Py_XINCREF(object);
  return Object(object);
}

// Of barcode_label.h.
struct Library {
  BarcodeLabel* (*make)(const char*, std::size_t);
  const unsigned char* (*data)(const BarcodeLabel*, std::size_t*);
  const char* (*mediaType)(const BarcodeLabel*);
  const char* (*report)(const BarcodeLabel*);
  void (*free)(BarcodeLabel*);
};

// More than most requests have, in bytes.
constexpr std::size_t kUsualLength = 256;

using LabelPtr = std::unique_ptr<BarcodeLabel, void (*)(BarcodeLabel*)>;

// What bind() is given, and names of a label's members.
struct Package {
  Library library = {};
  Object labelType;
  allocfunc allocateLabel = nullptr;
  // Fields whose plain values are strings, whole numbers and booleans: each with what begins it in JSON.
  Object strings;
  Object numbers;
  Object booleans;
  Object kinds;            // all fields
  Py_ssize_t longest = 0;  // of a plain string, in characters
  long long most = 0;      // a plain number lies between -most and most
  Object requestJson;      // the JSON of any request
  Object encoded;          // the same of a mapping, or the error of what it holds
  Object refusal;          // the error of a report
  Object typeName;
  Object textName;
  Object dataName;
  Object mediaTypeName;
  Object reportName;
  // A thread may be drawing with what was bound before: it lasts as long as the module.
  std::unique_ptr<Package> before;
  std::string lastMediaTypeText;
  Object lastMediaType;
};

// Of a module; Python makes it of zeros.
struct State {
  Package* package;
};

Package*& PackageOf(PyObject* module) {
  return static_cast<State*>(PyModule_GetState(module))->package;
}

Package* BoundPackage(PyObject* module) {
  Package* const package = PackageOf(module);
  if (package == nullptr) {
    PyErr_SetString(PyExc_RuntimeError, "bind() comes first");
  }
  return package;
}

LabelPtr Make(const Library& library, std::string_view request) {
  return {library.make(request.data(), request.size()), library.free};
}

void AppendQuoted(std::string& json, std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  json.push_back('"');
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0x20 && byte != '"' && byte != '\\') {
      continue;
    }
    json.append(text, begin, i - begin);
    begin = i + 1;
    if (byte >= 0x20) {
      json.append({'\\', text[i]});
    } else {
      json.append({'\\', 'u', '0', '0', kDigits[byte >> 4U], kDigits[byte & 0xFU]});
    }
  }
  json.append(text, begin).push_back('"');
}

std::string_view BytesOf(PyObject* bytes) {
  char* data = nullptr;
  Py_ssize_t length = 0;
  PyBytes_AsStringAndSize(bytes, &data, &length);  // cannot fail: they are bytes
  return {data, static_cast<std::size_t>(length)};
}

// Whether something is plain; where it is not, an exception may be pending.

bool AppendString(const Package& package, std::string& json, PyObject* value) {
  if (PyUnicode_GetLength(value) > package.longest) {
    return false;
  }
  Py_ssize_t length = 0;
  const char* const utf8 = PyUnicode_AsUTF8AndSize(value, &length);  // half of a surrogate pair has none
  if (utf8 == nullptr) {
    return false;
  }
  AppendQuoted(json, {utf8, static_cast<std::size_t>(length)});
  return true;
}

bool AppendNumber(const Package& package, std::string& json, PyObject* value) {
  int overflow = 0;
  const long long number = PyLong_AsLongLongAndOverflow(value, &overflow);
  if (overflow != 0 || number <= -package.most || number >= package.most) {
    return false;
  }
  std::array<char, 24> digits = {};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  json.append(digits.data(), end);
  return true;
}

// The entry of a dictionary, borrowed, or nullptr.
PyObject* Find(const Object& dictionary, PyObject* name) {
  return PyDict_GetItemWithError(dictionary.get(), name);
}

bool AppendMember(const Package& package, std::string& json, PyObject* name, PyObject* value) {
  if (!PyUnicode_CheckExact(name)) {
    return false;
  }
  if (value == Py_None) {
    return Find(package.kinds, name) != nullptr;  // absent
  }
  const auto begins = [&](const Object& fields) {
    PyObject* const beginning = Find(fields, name);
    if (beginning == nullptr) {
      return false;
    }
    if (json.size() > 1) {
      json.push_back(',');
    }
    json.append(BytesOf(beginning));
    return true;
  };
  if (PyUnicode_CheckExact(value)) {
    return begins(package.strings) && AppendString(package, json, value);
  }
  if (PyLong_CheckExact(value)) {
    return begins(package.numbers) && AppendNumber(package, json, value);
  }
  if (PyBool_Check(value)) {
    if (!begins(package.booleans)) {
      return false;
    }
    json.append(value == Py_True ? "true" : "false");
    return true;
  }
  return false;
}

// Nothing of the caller's runs meanwhile: the dictionary stays as it is.
bool AppendMembers(const Package& package, std::string& json, PyObject* fields) {
  Py_ssize_t position = 0;
  PyObject* name = nullptr;
  PyObject* value = nullptr;
  while (PyDict_Next(fields, &position, &name, &value) != 0) {
    if (!AppendMember(package, json, name, value)) {
      return false;
    }
  }
  return true;
}

// The JSON of a request: that of a plain one in `plain`, that of any other, by the package's own rules, in
// `other`.
struct Request {
  std::string plain = "{";
  Object other;

  std::string_view Json() const { return other == nullptr ? plain : BytesOf(other.get()); }
};

// `fields` is nullptr, with an exception, where they could not be gathered. Whether it is done; otherwise an
// exception is pending.
bool WriteOther(const Package& package, const Object& fields, Request& request) {
  if (fields == nullptr) {
    return false;
  }
  request.other.reset(PyObject_CallFunctionObjArgs(package.requestJson.get(), fields.get(), nullptr));
  if (request.other != nullptr && PyBytes_Check(request.other.get()) == 0) {
    request.other.reset();
    PyErr_SetString(PyExc_TypeError, "a request must be bytes");
  }
  return request.other != nullptr;
}

Object BytesFrom(const void* data, std::size_t length) {
  return Object(PyBytes_FromStringAndSize(static_cast<const char*>(data), static_cast<Py_ssize_t>(length)));
}

// There are few: most labels have that of the label before.
Object MediaType(Package& package, const BarcodeLabel* label) {
  const char* const name = package.library.mediaType(label);
  if (package.lastMediaType == nullptr || package.lastMediaTypeText != name) {
    package.lastMediaType.reset(PyUnicode_InternFromString(name));
    package.lastMediaTypeText = name;
  }
  return Shared(package.lastMediaType.get());
}

// What has been made of a request, as Python's own: a Label, or the error that refuses it.
Object Take(Package& package, const BarcodeLabel* label, PyObject* request) {
  const std::string_view report = package.library.report(label);
  Object reportBytes = BytesFrom(report.data(), report.size());
  if (reportBytes == nullptr) {
    return nullptr;
  }
  std::size_t length = 0;
  const unsigned char* const data = package.library.data(label, &length);
  if (data == nullptr) {
    return Object(PyObject_CallFunctionObjArgs(package.refusal.get(), reportBytes.get(), request, nullptr));
  }
  const Object picture = BytesFrom(data, length);
  const Object mediaType = picture == nullptr ? nullptr : MediaType(package, label);
  if (mediaType == nullptr) {
    return nullptr;
  }
  Object made(package.allocateLabel(reinterpret_cast<PyTypeObject*>(package.labelType.get()), 0));
  if (made == nullptr || PyObject_SetAttr(made.get(), package.dataName.get(), picture.get()) != 0 ||
      PyObject_SetAttr(made.get(), package.mediaTypeName.get(), mediaType.get()) != 0 ||
      PyObject_SetAttr(made.get(), package.reportName.get(), reportBytes.get()) != 0) {
    return nullptr;
  }
  return made;
}

// The members as one dictionary, in this order; nullptr with an exception.
Object Members(const Package& package, PyObject* type, PyObject* text, PyObject* fields) {
  Object members(PyDict_New());
  if (members == nullptr || PyDict_SetItem(members.get(), package.typeName.get(), type) != 0 ||
      PyDict_SetItem(members.get(), package.textName.get(), text) != 0 ||
      PyDict_Update(members.get(), fields) != 0) {
    return nullptr;
  }
  return members;
}

// A label that is being drawn, without the interpreter's lock. An interpreter that ends takes a thread away
// when it wants the lock back, by unwinding its stack, and that goes through no code of ours: Draw and
// DrawSome hold nothing that is to be released then, and what is here is left to the process's end.
struct Drawing {
  Package* package = nullptr;
  Request request;
  LabelPtr label = {nullptr, nullptr};

  void Run() noexcept { label = Make(package->library, request.Json()); }
};

// Nullptr with an exception.
Drawing* BeginDrawing(PyObject* module, PyObject* arguments) try {
  auto drawing = std::make_unique<Drawing>();
  Package* const package = drawing->package = BoundPackage(module);
  PyObject* type = nullptr;
  PyObject* text = nullptr;
  PyObject* fields = nullptr;
  if (package == nullptr || PyArg_UnpackTuple(arguments, "draw", 3, 3, &type, &text, &fields) == 0) {
    return nullptr;
  }
  if (PyDict_CheckExact(fields) == 0) {
    PyErr_SetString(PyExc_TypeError, "the fields must be a dict");
    return nullptr;
  }
  std::string& plain = drawing->request.plain;
  plain.reserve(kUsualLength);
  if (AppendMember(*package, plain, package->typeName.get(), type) &&
      AppendMember(*package, plain, package->textName.get(), text) &&
      AppendMembers(*package, plain, fields)) {
    plain.push_back('}');
    return drawing.release();
  }
  PyErr_Clear();
  const bool isWritten = WriteOther(*package, Members(*package, type, text, fields), drawing->request);
  return isWritten ? drawing.release() : nullptr;
} catch (const std::bad_alloc&) {
  PyErr_NoMemory();
  return nullptr;
}

PyObject* EndDrawing(Drawing* ended) try {
  const std::unique_ptr<Drawing> drawing(ended);
  PyObject* const other = drawing->request.other.get();
  return Take(*drawing->package, drawing->label.get(), other == nullptr ? Py_None : other).release();
} catch (const std::bad_alloc&) {
  return PyErr_NoMemory();
}

// draw(type, text, fields): the label of a request, or the error of what the library refuses.
PyObject* Draw(PyObject* module, PyObject* arguments) {
  Drawing* const drawing = BeginDrawing(module, arguments);
  if (drawing == nullptr) {
    return nullptr;
  }
  PyThreadState* const state = PyEval_SaveThread();
  drawing->Run();
  PyEval_RestoreThread(state);
  return EndDrawing(drawing);
}

// The bytes of a plain request. Nullptr where it is none, and, with an exception, where there is no memory.
PyObject* PlainRequest(const Package& package, PyObject* request) try {
  if (PyDict_CheckExact(request) == 0) {
    return nullptr;
  }
  std::string json = "{";
  json.reserve(kUsualLength);
  if (!AppendMembers(package, json, request)) {
    PyErr_Clear();
    return nullptr;
  }
  json.push_back('}');
  return BytesFrom(json.data(), json.size()).release();
} catch (const std::bad_alloc&) {
  return PyErr_NoMemory();
}

// A request, of which this has the reference, as bytes, or the error of what cannot be told the library.
PyObject* Encode(const Package& package, PyObject* request) {
  PyObject* encoded = PlainRequest(package, request);
  if (encoded == nullptr && PyErr_Occurred() == nullptr) {
    encoded = PyObject_CallFunctionObjArgs(package.encoded.get(), request, nullptr);
  }
  Py_DECREF(request);
  return encoded;
}

// Whether it is added; `encoded`, of which this has the reference, may be nullptr with an exception.
bool Append(PyObject* chunk, PyObject* encoded) {
  const bool isAdded = encoded != nullptr && PyList_Append(chunk, encoded) == 0;
  Py_XDECREF(encoded);
  return isAdded;
}

Py_ssize_t SizeOfLast(PyObject* chunk) {
  PyObject* const last = PyList_GetItem(chunk, PyList_Size(chunk) - 1);
  return PyBytes_Check(last) != 0 ? PyBytes_Size(last) : 0;
}

// read_some(requests, chunk, most, most_bytes, seconds): adds the next requests of an iterator to a list,
// encoded, until it has so many or so many bytes, or the time is over: whether there are no more, and the
// seconds that the last took to come. Requests come from the caller's code, and an interpreter that ends may
// take the thread away within it: here, too, nothing is to be released then.
PyObject* ReadSome(PyObject* module, PyObject* arguments) {
  using Clock = std::chrono::steady_clock;
  using Seconds = std::chrono::duration<double>;
  const Package* const package = BoundPackage(module);
  PyObject* requests = nullptr;
  PyObject* chunk = nullptr;
  Py_ssize_t most = 0;
  Py_ssize_t mostBytes = 0;
  double seconds = 0;
  if (package == nullptr || PyArg_ParseTuple(arguments, "OO!nnd", &requests, &PyList_Type, &chunk, &most,
                                             &mostBytes, &seconds) == 0) {
    return nullptr;
  }
  if (PyIter_Check(requests) == 0) {
    PyErr_SetString(PyExc_TypeError, "the requests must be an iterator");
    return nullptr;
  }
  const Clock::time_point begin = Clock::now();
  Clock::time_point before = begin;
  Seconds took(0);
  bool isEnd = false;
  for (Py_ssize_t size = 0; PyList_Size(chunk) < most && size < mostBytes; size += SizeOfLast(chunk)) {
    PyObject* const request = PyIter_Next(requests);
    isEnd = request == nullptr;
    if (isEnd && PyErr_Occurred() == nullptr) {
      break;
    }
    if (isEnd || !Append(chunk, Encode(*package, request))) {
      return nullptr;
    }
    const Clock::time_point now = Clock::now();
    took = now - before;
    before = now;
    if (Seconds(now - begin).count() > seconds) {
      break;
    }
  }
  return Py_BuildValue("(Nd)", PyBool_FromLong(isEnd ? 1 : 0), took.count());
}

// The same of many labels.
struct DrawingOfSome {
  Package* package = nullptr;
  Object requests;  // a tuple, which nobody changes
  std::vector<std::string_view> texts;
  std::vector<LabelPtr> labels;
  double seconds = 0;

  // Those of the first requests, of as many as there is time for and of one at least; nullptr where there is
  // no request. There is room for all of them.
  void Run() noexcept {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    const Library& library = package->library;
    for (const std::string_view text : texts) {
      labels.push_back(text.data() == nullptr ? LabelPtr(nullptr, library.free) : Make(library, text));
      if (std::chrono::steady_clock::now() > deadline) {
        break;
      }
    }
  }
};

DrawingOfSome* BeginDrawingOfSome(PyObject* module, PyObject* arguments) try {
  auto drawing = std::make_unique<DrawingOfSome>();
  drawing->package = BoundPackage(module);
  PyObject* list = nullptr;
  if (drawing->package == nullptr || PyArg_ParseTuple(arguments, "Od", &list, &drawing->seconds) == 0) {
    return nullptr;
  }
  drawing->requests.reset(PySequence_Tuple(list));
  if (drawing->requests == nullptr) {
    return nullptr;
  }
  const Py_ssize_t count = PyTuple_Size(drawing->requests.get());
  drawing->texts.reserve(static_cast<std::size_t>(count));
  drawing->labels.reserve(static_cast<std::size_t>(count));
  for (Py_ssize_t i = 0; i < count; ++i) {
    PyObject* const request = PyTuple_GetItem(drawing->requests.get(), i);
    drawing->texts.push_back(PyBytes_Check(request) != 0 ? BytesOf(request) : std::string_view());
  }
  return drawing.release();
} catch (const std::bad_alloc&) {
  PyErr_NoMemory();
  return nullptr;
}

PyObject* EndDrawingOfSome(DrawingOfSome* ended) try {
  const std::unique_ptr<DrawingOfSome> drawing(ended);
  std::vector<LabelPtr>& labels = drawing->labels;
  Object made(PyList_New(static_cast<Py_ssize_t>(labels.size())));
  if (made == nullptr) {
    return nullptr;
  }
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const auto place = static_cast<Py_ssize_t>(i);
    PyObject* const request = PyTuple_GetItem(drawing->requests.get(), place);
    const bool isRequest = drawing->texts[i].data() != nullptr;
    Object one = isRequest ? Take(*drawing->package, labels[i].get(), request) : Shared(request);
    labels[i].reset();
    if (one == nullptr || PyList_SetItem(made.get(), place, one.release()) != 0) {
      return nullptr;
    }
  }
  return made.release();
} catch (const std::bad_alloc&) {
  return PyErr_NoMemory();
}

// draw_some(requests, seconds): what became of those of a list, from the first until it is time to end.
// Whatever is no bytes stands for itself.
PyObject* DrawSome(PyObject* module, PyObject* arguments) {
  DrawingOfSome* const drawing = BeginDrawingOfSome(module, arguments);
  if (drawing == nullptr) {
    return nullptr;
  }
  PyThreadState* const state = PyEval_SaveThread();
  drawing->Run();
  PyEval_RestoreThread(state);
  return EndDrawingOfSome(drawing);
}

template <class Function>
bool ReadAddress(PyObject* addresses, Py_ssize_t index, Function*& function) {
  PyObject* const address = PyTuple_GetItem(addresses, index);
  function = address == nullptr ? nullptr : reinterpret_cast<Function*>(PyLong_AsVoidPtr(address));
  return function != nullptr;
}

// bind(addresses, Label, strings, numbers, booleans, kinds, longest, most, request_json, encoded, refusal),
// the addresses being those of barcode_label_make, _data, _media_type, _report and _free.
PyObject* Bind(PyObject* module, PyObject* arguments) try {
  auto package = std::make_unique<Package>();
  PyObject* addresses = nullptr;
  std::array<PyObject*, 8> objects = {};
  auto& [labelType, strings, numbers, booleans, kinds, requestJson, encoded, refusal] = objects;
  if (PyArg_ParseTuple(arguments, "O!O!O!O!O!O!nLOOO", &PyTuple_Type, &addresses, &PyType_Type, &labelType,
                       &PyDict_Type, &strings, &PyDict_Type, &numbers, &PyDict_Type, &booleans, &PyDict_Type,
                       &kinds, &package->longest, &package->most, &requestJson, &encoded, &refusal) == 0) {
    return nullptr;
  }
  Library& library = package->library;
  if (!ReadAddress(addresses, 0, library.make) || !ReadAddress(addresses, 1, library.data) ||
      !ReadAddress(addresses, 2, library.mediaType) || !ReadAddress(addresses, 3, library.report) ||
      !ReadAddress(addresses, 4, library.free)) {
    if (PyErr_Occurred() == nullptr) {
      PyErr_SetString(PyExc_ValueError, "a function has no address");
    }
    return nullptr;
  }
  package->labelType = Shared(labelType);
  package->allocateLabel =
      reinterpret_cast<allocfunc>(PyType_GetSlot(reinterpret_cast<PyTypeObject*>(labelType), Py_tp_alloc));
  package->strings = Shared(strings);
  package->numbers = Shared(numbers);
  package->booleans = Shared(booleans);
  package->kinds = Shared(kinds);
  package->requestJson = Shared(requestJson);
  package->encoded = Shared(encoded);
  package->refusal = Shared(refusal);
  package->typeName.reset(PyUnicode_InternFromString("type"));
  package->textName.reset(PyUnicode_InternFromString("text"));
  package->dataName.reset(PyUnicode_InternFromString("_data"));
  package->mediaTypeName.reset(PyUnicode_InternFromString("_media_type"));
  package->reportName.reset(PyUnicode_InternFromString("_report"));
  if (package->allocateLabel == nullptr || package->typeName == nullptr || package->textName == nullptr ||
      package->dataName == nullptr || package->mediaTypeName == nullptr || package->reportName == nullptr) {
    return nullptr;
  }
  package->before.reset(PackageOf(module));
  PackageOf(module) = package.release();
  Py_RETURN_NONE;
} catch (const std::bad_alloc&) {
  return PyErr_NoMemory();
}

void FreeModule(void* module) {
  if (void* const state = PyModule_GetState(static_cast<PyObject*>(module)); state != nullptr) {
    const std::unique_ptr<Package> package(static_cast<State*>(state)->package);
  }
}

std::array<PyMethodDef, 5> g_methods = {{{"bind", Bind, METH_VARARGS, nullptr},
                                         {"draw", Draw, METH_VARARGS, nullptr},
                                         {"draw_some", DrawSome, METH_VARARGS, nullptr},
                                         {"read_some", ReadSome, METH_VARARGS, nullptr},
                                         {nullptr, nullptr, 0, nullptr}}};
PyModuleDef g_module = {PyModuleDef_HEAD_INIT,
                        "_speedups",
                        nullptr,
                        sizeof(State),
                        g_methods.data(),
                        nullptr,
                        nullptr,
                        nullptr,
                        FreeModule};

}  // namespace
}  // namespace barcode::python

extern "C" PyMODINIT_FUNC PyInit__speedups() {
  static std::array<PyModuleDef_Slot, 1> slots = {{{0, nullptr}}};
  barcode::python::g_module.m_slots = slots.data();
  return PyModuleDef_Init(&barcode::python::g_module);
}
