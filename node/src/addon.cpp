// The label library as a module of Node. A request is a JSON text; an answer is a label's media type and
// behind it the text of its report, or nothing where memory was exhausted. What is beyond that is
// JavaScript's.
#include <barcode_label.h>
#include <node_api.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
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

// Nearly all texts are, and these are made in a fraction of the time.
bool IsAscii(std::string_view text) {
  std::uint64_t bits = 0;
  for (; text.size() >= sizeof bits; text.remove_prefix(sizeof bits)) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data(), sizeof eight);
    bits |= eight;
  }
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  return (bits & kHighBits) == 0 && std::all_of(text.begin(), text.end(), [](char c) { return c >= 0; });
}

napi_value ToString(napi_env env, std::string_view text) {
  napi_value value = nullptr;
  const napi_status status = IsAscii(text) ? napi_create_string_latin1(env, text.data(), text.size(), &value)
                                           : napi_create_string_utf8(env, text.data(), text.size(), &value);
  return status == napi_ok ? value : nullptr;
}

// The texts of the library are short, or reports: media type and report stay below this but for long texts.
constexpr std::size_t kUsualAnswer = 1024;

napi_value Answer(napi_env env, const BarcodeLabel* label) {
  const std::string_view mediaType = barcode_label_media_type(label);
  const std::string_view report = barcode_label_report(label);
  if (mediaType.empty()) {
    return ToString(env, report);
  }
  std::array<char, kUsualAnswer>
      answer;  // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
  if (mediaType.size() + report.size() <= answer.size()) {
    char* const middle = std::copy(mediaType.begin(), mediaType.end(), answer.data());
    std::copy(report.begin(), report.end(), middle);
    return ToString(env, {answer.data(), mediaType.size() + report.size()});
  }
  try {
    return ToString(env, std::string(mediaType).append(report));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// A copy: the label's own bytes end with it.
napi_value ToUint8Array(napi_env env, const unsigned char* bytes, std::size_t length) {
  void* copy = nullptr;
  napi_value buffer = nullptr;
  napi_value array = nullptr;
  if (napi_create_arraybuffer(env, length, &copy, &buffer) != napi_ok) {
    return nullptr;
  }
  std::copy(bytes, bytes + length, static_cast<unsigned char*>(copy));
  return napi_create_typedarray(env, napi_uint8_array, length, buffer, 0, &array) == napi_ok ? array
                                                                                             : nullptr;
}

// Where a picture is left for JavaScript, which copies it for less than it costs to hand one over: its
// length, of 32 bits, and its bytes. Each environment has a scratch of its own, an ArrayBuffer, for as long
// as it lives.
constexpr std::size_t kScratchSize = std::size_t{1} << 16U;

// Whether there was room.
bool PutIntoScratch(void* scratch, const unsigned char* picture, std::size_t length) {
  const auto shortLength = static_cast<std::uint32_t>(length);
  if (length > kScratchSize - sizeof shortLength) {
    return false;
  }
  std::memcpy(scratch, &shortLength, sizeof shortLength);
  std::copy(picture, picture + length, static_cast<unsigned char*>(scratch) + sizeof shortLength);
  return true;
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
LabelPtr MakeFromString(napi_env env, napi_value value) {
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
bool ReadArguments(napi_env env, napi_callback_info info, std::array<napi_value, kCount>& arguments,
                   void** data = nullptr) {
  std::size_t count = kCount;
  return napi_get_cb_info(env, info, &count, arguments.data(), nullptr, data) == napi_ok;
}

// An array of the values; nullptr where one of them is.
template <std::size_t kCount>
napi_value ToArray(napi_env env, const std::array<napi_value, kCount>& values) {
  napi_value array = nullptr;
  if (napi_create_array_with_length(env, kCount, &array) != napi_ok) {
    return nullptr;
  }
  std::uint32_t index = 0;
  const bool areSet = std::all_of(values.begin(), values.end(), [&](napi_value value) {
    return value != nullptr && napi_set_element(env, array, index++, value) == napi_ok;
  });
  return areSet ? array : nullptr;
}

// From a string, or from so many bytes in the scratch.
LabelPtr MakeFromValue(napi_env env, napi_value value, const void* scratch) {
  std::uint32_t length = 0;
  if (napi_get_value_uint32(env, value, &length) == napi_ok) {
    return MakeLabel({static_cast<const char*>(scratch), std::min<std::size_t>(length, kScratchSize)});
  }
  return MakeFromString(env, value);
}

// makeLabel(request): the answer; the picture, empty where the label was refused, is in the scratch. One that
// is larger comes in an array behind the answer. The request is a string, or as a number the length of that
// in the scratch.
napi_value MakeLabelNow(napi_env env, napi_callback_info info) {
  std::array<napi_value, 1> arguments = {};
  void* scratch = nullptr;
  if (!ReadArguments(env, info, arguments, &scratch)) {
    return Failed(env);
  }
  const LabelPtr label = MakeFromValue(env, arguments[0], scratch);
  std::size_t length = 0;
  const unsigned char* const bytes = barcode_label_data(label.get(), &length);
  napi_value result = Answer(env, label.get());
  if (!PutIntoScratch(scratch, bytes, length)) {
    result = ToArray(env, std::array{result, ToUint8Array(env, bytes, length)});
  }
  return result != nullptr ? result : Failed(env);
}

// Labels that are made one after the other on a thread of Node's pool: a chunk. A call from JavaScript and
// back costs as much as a good part of a small label: what there is of many goes as one string, a line for
// each. The labels themselves are freed where they were made, which costs least.
struct Work {
  std::string requests;
  std::size_t requestsRead = 0;  // in characters
  std::string answers;
  std::vector<unsigned char> pictures;
  std::vector<std::uint32_t> lengths;  // of pictures; 0 where a label was refused
  unsigned char* room = nullptr;       // for lengths and pictures; an ArrayBuffer that `roomKeeper` holds
  std::size_t roomSize = 0;
  napi_ref roomKeeper = nullptr;
  bool isPacked = false;  // the results are in the room
  double microseconds = 0;
  napi_deferred deferred = nullptr;
};

bool IsMade(const Work& work) {
  return work.requestsRead == work.requests.size();
}

void MakeNext(Work& work) {
  const std::string_view rest = std::string_view(work.requests).substr(work.requestsRead);
  const std::size_t requestLength = std::min(rest.find('\n'), rest.size());
  const LabelPtr label = MakeLabel(rest.substr(0, requestLength));
  std::size_t length = 0;
  const unsigned char* const bytes = barcode_label_data(label.get(), &length);
  work.pictures.insert(work.pictures.end(), bytes, bytes + length);
  work.answers.append(barcode_label_media_type(label.get()))
      .append(barcode_label_report(label.get()))
      .push_back('\n');
  // Last: what memory did not suffice for does not count.
  work.lengths.push_back(static_cast<std::uint32_t>(length));
  work.requestsRead += std::min(requestLength + 1, rest.size());
}

// What JavaScript gets of the pictures: of 32 bits each, how many there are, and their lengths; behind these
// the pictures.
std::size_t PackedSize(const Work& work) {
  return (work.lengths.size() + 1) * sizeof(std::uint32_t) + work.pictures.size();
}

void Pack(const Work& work, unsigned char* target) {
  const auto count = static_cast<std::uint32_t>(work.lengths.size());
  std::memcpy(target, &count, sizeof count);
  target += sizeof count;
  if (count > 0) {
    std::memcpy(target, work.lengths.data(), count * sizeof count);
  }
  std::copy(work.pictures.begin(), work.pictures.end(), target + count * sizeof count);
}

bool HasRoom(const Work& work) {
  return PackedSize(work) <= work.roomSize;
}

// `goesOn` is asked after each label.
template <class GoesOn>
void MakeLabels(Work& work, const GoesOn& goesOn) {
  try {
    while (!IsMade(work)) {
      MakeNext(work);
      if (!goesOn()) {
        return;
      }
    }
  } catch (const std::bad_alloc&) {
    work.requestsRead = work.requests.size();  // the results are those until now
  }
}

template <class GoesOn>
void MakeWork(Work& work, const GoesOn& goesOn) {
  const auto begin = std::chrono::steady_clock::now();
  MakeLabels(work, goesOn);
  if (IsMade(work) && HasRoom(work)) {
    Pack(work, work.room);
    std::vector<unsigned char>().swap(work.pictures);  // where it was allocated, which costs least
    work.isPacked = true;
  }
  work.microseconds +=
      std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
}

napi_value ToDouble(napi_env env, double number) {
  napi_value value = nullptr;
  return napi_create_double(env, number, &value) == napi_ok ? value : nullptr;
}

// An ArrayBuffer: that of the room, or where there is not enough of it, one of their own.
napi_value Pictures(napi_env env, const Work& work) {
  napi_value buffer = nullptr;
  if (work.isPacked) {
    return napi_get_reference_value(env, work.roomKeeper, &buffer) == napi_ok ? buffer : nullptr;
  }
  void* bytes = nullptr;
  if (napi_create_arraybuffer(env, PackedSize(work), &bytes, &buffer) != napi_ok) {
    return nullptr;
  }
  Pack(work, static_cast<unsigned char*>(bytes));
  return buffer;
}

// The answers, a line each, the microseconds that they took, and the pictures.
napi_value Results(napi_env env, const Work& work) {
  return ToArray(
      env, std::array{ToString(env, work.answers), ToDouble(env, work.microseconds), Pictures(env, work)});
}

// Without an ArrayBuffer there is no room.
bool UseRoom(napi_env env, napi_value buffer, Work& work) {
  bool isBuffer = false;
  if (napi_is_arraybuffer(env, buffer, &isBuffer) != napi_ok || !isBuffer) {
    return true;
  }
  void* bytes = nullptr;
  if (napi_get_arraybuffer_info(env, buffer, &bytes, &work.roomSize) != napi_ok ||
      napi_create_reference(env, buffer, 1, &work.roomKeeper) != napi_ok) {
    return false;
  }
  work.room = static_cast<unsigned char*>(bytes);
  return true;
}

void FreeRoom(napi_env env, Work& work) {
  if (work.roomKeeper != nullptr) {
    napi_delete_reference(env, std::exchange(work.roomKeeper, nullptr));
  }
}

class Lanes;
struct Environment;

struct Lane {
  std::shared_ptr<Lanes> lanes;
  Environment* environment = nullptr;
  napi_async_work handle = nullptr;
  bool isInterrupted = false;
};

// What each environment of Node has of its own, for as long as it lives. It waits for the threads of its pool
// before it ends.
struct Environment {
  napi_threadsafe_function deliver = nullptr;
  std::size_t pending = 0;  // works that are not delivered: for these the process stays
  // Node's pool takes what it is given in order: with more lanes in it than it has threads, whatever else
  // needs one would wait for them all.
  std::size_t mostLanes = 1;
  std::size_t lanesInPool = 0;
  std::deque<std::unique_ptr<Lane>> waiting;  // until there is room in the pool
  std::atomic<bool> isEnding = false;         // nothing is made any more
};

Environment* EnvironmentOf(napi_env env) {
  void* environment = nullptr;
  return napi_get_instance_data(env, &environment) == napi_ok ? static_cast<Environment*>(environment)
                                                              : nullptr;
}

// An environment that is going down, which waits for its threads first, tells so by this alone: it runs
// nothing.
bool NoticesEnd(napi_env env, Environment& environment) {
  bool isThrowing = false;
  bool hasObject = false;
  napi_value global = nullptr;
  if (napi_is_exception_pending(env, &isThrowing) != napi_ok || isThrowing) {
    return environment.isEnding;
  }
  if (napi_get_global(env, &global) != napi_ok ||
      napi_has_named_property(env, global, "Object", &hasObject) != napi_ok) {
    environment.isEnding = true;
  }
  return environment.isEnding;
}

// An environment that is going down takes no results; the work is freed all the same.
void Conclude(napi_env env, Work& work) {
  if (napi_value results = Results(env, work); results != nullptr) {
    napi_resolve_deferred(env, work.deferred, results);
  } else if (napi_value error = Failure(env); error != nullptr) {
    napi_reject_deferred(env, work.deferred, error);
  }
  FreeRoom(env, work);
}

void Deliver(napi_env env, napi_value /*function*/, void* context, void* data) {
  const std::unique_ptr<Work> work(static_cast<Work*>(data));
  if (env == nullptr) {
    return;  // it has gone down, and the references with it
  }
  auto& environment = *static_cast<Environment*>(context);
  --environment.pending;
  if (environment.pending == 0) {
    napi_unref_threadsafe_function(env, environment.deliver);
  }
  NoticesEnd(env, environment);
  Conclude(env, *work);
}

// Works, and how many threads of the pool make them at a time. Such a lane goes from one work to the next
// without waiting until the event loop comes round to it.
class Lanes {
 public:
  explicit Lanes(std::size_t most) : m_most(most) {}

  // Whether it needs a further lane. Where memory is exhausted the work stays where it is.
  bool Add(std::unique_ptr<Work>& work) {
    const std::lock_guard lock(m_mutex);
    m_waiting.push_back(std::move(work));
    if (m_running == m_most) {
      return false;
    }
    ++m_running;
    return true;
  }

  // Nullptr where there is none: that ends the lane.
  std::unique_ptr<Work> Next() {
    const std::lock_guard lock(m_mutex);
    if (m_waiting.empty()) {
      --m_running;
      return nullptr;
    }
    std::unique_ptr<Work> work = std::move(m_waiting.front());
    m_waiting.pop_front();
    return work;
  }

  // The first of those that wait again; not where memory is exhausted.
  bool PutBack(std::unique_ptr<Work>& work) {
    const std::lock_guard lock(m_mutex);
    try {
      m_waiting.push_front(std::move(work));
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

  // Whether there is one for a lane; without any the lane ends.
  bool HasNext() {
    const std::lock_guard lock(m_mutex);
    if (m_waiting.empty()) {
      --m_running;
      return false;
    }
    return true;
  }

  // Nobody wants the labels of the works that wait.
  void Stop() { m_isStopped = true; }
  bool IsStopped() const { return m_isStopped; }

 private:
  std::mutex m_mutex;
  std::deque<std::unique_ptr<Work>> m_waiting;
  std::size_t m_running = 0;
  std::size_t m_most;
  std::atomic<bool> m_isStopped = false;
};

// After a while a lane lets others have the thread, and queues up again. It leaves a work in the middle only
// when that takes much longer than works are meant to.
constexpr std::chrono::milliseconds kLaneTime(20);
constexpr std::chrono::milliseconds kLongestLaneTime(30);

bool IsWanted(const Lane& lane) {
  return !lane.lanes->IsStopped() && !lane.environment->isEnding;
}

void RunLane(napi_env /*env*/, void* data) {
  using Clock = std::chrono::steady_clock;
  auto& lane = *static_cast<Lane*>(data);
  const auto begin = Clock::now();
  const auto goesOn = [&] { return Clock::now() - begin <= kLongestLaneTime && IsWanted(lane); };
  // At the end of the environment works stay where they are, and end with it.
  while (!lane.isInterrupted && !lane.environment->isEnding) {
    std::unique_ptr<Work> work = lane.lanes->Next();
    if (work == nullptr) {
      return;
    }
    if (IsWanted(lane)) {
      MakeWork(*work, goesOn);
    }
    lane.isInterrupted = Clock::now() - begin > kLaneTime;
    const bool isOver = IsMade(*work) || lane.lanes->IsStopped();
    if (isOver || !lane.lanes->PutBack(work)) {
      napi_call_threadsafe_function(lane.environment->deliver, work.release(), napi_tsfn_nonblocking);
    }
  }
}

void EndLane(napi_env env, napi_status status, void* data);

bool QueueLane(napi_env env, std::unique_ptr<Lane> lane) {
  napi_value name = ToString(env, "libbarcode");
  lane->isInterrupted = false;
  if (name == nullptr ||
      napi_create_async_work(env, nullptr, name, RunLane, EndLane, lane.get(), &lane->handle) != napi_ok) {
    return false;
  }
  if (napi_queue_async_work(env, lane->handle) != napi_ok) {
    napi_delete_async_work(env, lane->handle);
    return false;
  }
  static_cast<void>(lane.release());  // EndLane frees it
  return true;
}

// Without a lane its works are over: nothing more of them is made, as where memory is exhausted.
void GiveUp(napi_env env, Environment& environment, Lanes& lanes) {
  for (std::unique_ptr<Work> work = lanes.Next(); work != nullptr; work = lanes.Next()) {
    Deliver(env, nullptr, &environment, work.release());
  }
}

void FillPool(napi_env env, Environment& environment) {
  while (environment.lanesInPool < environment.mostLanes && !environment.waiting.empty()) {
    std::unique_ptr<Lane> lane = std::move(environment.waiting.front());
    environment.waiting.pop_front();
    const std::shared_ptr<Lanes> lanes = lane->lanes;
    if (!lanes->HasNext()) {
      continue;
    }
    if (QueueLane(env, std::move(lane))) {
      ++environment.lanesInPool;
    } else {
      GiveUp(env, environment, *lanes);
    }
  }
}

void StartLane(napi_env env, std::unique_ptr<Lane> lane) {
  Environment& environment = *lane->environment;
  try {
    environment.waiting.push_back(std::move(lane));
  } catch (const std::bad_alloc&) {
    GiveUp(env, environment, *lane->lanes);  // NOLINT(bugprone-use-after-move): it has not been moved
  }
  FillPool(env, environment);
}

void EndLane(napi_env env, napi_status /*status*/, void* data) {
  std::unique_ptr<Lane> lane(static_cast<Lane*>(data));
  Environment& environment = *lane->environment;
  napi_delete_async_work(env, lane->handle);
  --environment.lanesInPool;
  if (NoticesEnd(env, environment)) {
    return;
  }
  if (lane->isInterrupted) {
    StartLane(env, std::move(lane));
  } else {
    FillPool(env, environment);
  }
}

// createLanes(most), for makeLabels and stopLanes.
napi_value CreateLanes(napi_env env, napi_callback_info info) {
  std::array<napi_value, 1> arguments = {};
  std::uint32_t most = 0;
  if (!ReadArguments(env, info, arguments) || napi_get_value_uint32(env, arguments[0], &most) != napi_ok) {
    return Failed(env);
  }
  const auto free = [](napi_env /*env*/, void* lanes, void* /*hint*/) {
    const std::unique_ptr<std::shared_ptr<Lanes>> ended(static_cast<std::shared_ptr<Lanes>*>(lanes));
  };
  try {
    auto lanes = std::make_unique<std::shared_ptr<Lanes>>(std::make_shared<Lanes>(most));
    napi_value value = nullptr;
    if (napi_create_external(env, lanes.get(), free, nullptr, &value) != napi_ok) {
      return Failed(env);
    }
    static_cast<void>(lanes.release());
    return value;
  } catch (const std::bad_alloc&) {
    return Failed(env);
  }
}

// Nullptr, with an exception, for anything else.
std::shared_ptr<Lanes> ReadLanes(napi_env env, napi_value value) {
  void* lanes = nullptr;
  if (napi_get_value_external(env, value, &lanes) != napi_ok) {
    napi_throw_type_error(env, nullptr, "Lanes must be those of createLanes.");
    return nullptr;
  }
  return *static_cast<std::shared_ptr<Lanes>*>(lanes);
}

napi_value StopLanes(napi_env env, napi_callback_info info) {
  std::array<napi_value, 1> arguments = {};
  const std::shared_ptr<Lanes> lanes =
      ReadArguments(env, info, arguments) ? ReadLanes(env, arguments[0]) : nullptr;
  if (lanes == nullptr) {
    return Failed(env);
  }
  lanes->Stop();
  return nullptr;
}

// useLanes(count): how many of all lanes of this environment may be in Node's pool.
napi_value UseLanes(napi_env env, napi_callback_info info) {
  std::array<napi_value, 1> arguments = {};
  std::uint32_t count = 0;
  Environment* const environment = EnvironmentOf(env);
  if (environment == nullptr || !ReadArguments(env, info, arguments) ||
      napi_get_value_uint32(env, arguments[0], &count) != napi_ok) {
    return Failed(env);
  }
  environment->mostLanes = std::max<std::size_t>(count, 1);
  return nullptr;
}

// endLanes(): JavaScript takes nothing any more.
napi_value EndLanes(napi_env env, napi_callback_info /*info*/) {
  Environment* const environment = EnvironmentOf(env);
  if (environment == nullptr) {
    return Failed(env);
  }
  environment->isEnding = true;
  return nullptr;
}

// Where memory is exhausted the work stays where it is.
void AddWork(napi_env env, std::unique_ptr<Lane> lane, std::unique_ptr<Work>& work) {
  Environment& environment = *lane->environment;
  const bool needsLane = lane->lanes->Add(work);
  if (environment.pending == 0) {
    napi_ref_threadsafe_function(env, environment.deliver);
  }
  ++environment.pending;
  if (needsLane) {
    StartLane(env, std::move(lane));
  }
}

// makeLabels(requests, lanes, room): a promise of the results. `room` is an ArrayBuffer for the pictures:
// nobody else may use it until then. It need not be there.
napi_value MakeLabelsInPool(napi_env env, napi_callback_info info) {
  std::array<napi_value, 3> arguments = {};
  napi_value promise = nullptr;
  std::unique_ptr<Work> work;
  try {
    work = std::make_unique<Work>();
    auto lane = std::make_unique<Lane>();
    lane->environment = EnvironmentOf(env);
    if (lane->environment == nullptr || !ReadArguments(env, info, arguments) ||
        !ReadRequests(env, arguments[0], work->requests)) {
      return Failed(env);
    }
    lane->lanes = ReadLanes(env, arguments[1]);
    if (lane->lanes == nullptr || napi_create_promise(env, &work->deferred, &promise) != napi_ok ||
        !UseRoom(env, arguments[2], *work)) {
      return Failed(env);
    }
    AddWork(env, std::move(lane), work);
    return promise;
  } catch (const std::bad_alloc&) {
    if (work != nullptr) {
      FreeRoom(env, *work);
    }
    return Failed(env);
  }
}

// The environment has it as its data; nullptr stands for failure.
Environment* CreateEnvironment(napi_env env) {
  const auto free = [](napi_env /*env*/, void* data, void* /*hint*/) {
    const std::unique_ptr<Environment> ended(static_cast<Environment*>(data));
  };
  try {
    auto environment = std::make_unique<Environment>();
    napi_value name = ToString(env, "libbarcode");
    if (name == nullptr ||
        napi_create_threadsafe_function(env, nullptr, nullptr, name, 0, 1, nullptr, nullptr,
                                        environment.get(), Deliver, &environment->deliver) != napi_ok ||
        napi_unref_threadsafe_function(env, environment->deliver) != napi_ok ||
        napi_set_instance_data(env, environment.get(), free, nullptr) != napi_ok) {
      return nullptr;
    }
    return environment.release();
  } catch (const std::bad_alloc&) {
    return nullptr;
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
                                     Function("createLanes", barcode::node::CreateLanes),
                                     Function("stopLanes", barcode::node::StopLanes),
                                     Function("makeLabels", barcode::node::MakeLabelsInPool),
                                     Function("useLanes", barcode::node::UseLanes),
                                     Function("endLanes", barcode::node::EndLanes),
                                     Function("types", barcode::node::Types),
                                     Function("version", barcode::node::Version)};
  void* bytes = nullptr;
  napi_value scratch = nullptr;
  napi_ref keeper = nullptr;  // goes with the environment
  if (barcode::node::CreateEnvironment(env) == nullptr ||
      napi_create_arraybuffer(env, barcode::node::kScratchSize, &bytes, &scratch) != napi_ok ||
      napi_create_reference(env, scratch, 1, &keeper) != napi_ok ||
      napi_set_named_property(env, exports, "scratch", scratch) != napi_ok) {
    return nullptr;
  }
  for (const auto& [name, function] : kFunctions) {
    napi_value value = nullptr;
    if (napi_create_function(env, name, NAPI_AUTO_LENGTH, function, bytes, &value) != napi_ok ||
        napi_set_named_property(env, exports, name, value) != napi_ok) {
      return nullptr;
    }
  }
  return exports;
}

}  // extern "C"
