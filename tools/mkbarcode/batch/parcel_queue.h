#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>

#include "mkbarcode/batch/parcel.h"

namespace barcode::tool {

// Brings parcels into their order. The thread whose parcel is the next one passes it on, and those that wait
// behind it; no other thread is needed for that. Whoever is too far ahead waits.
class ParcelQueue {
 public:
  // take is called in order, by one thread at a time, without a lock. Most parcels that may wait: capacity.
  ParcelQueue(std::function<void(Parcel&)> take, std::size_t capacity)
      : m_take(std::move(take)), m_capacity(capacity) {}

  // What take throws goes to the caller; nothing is taken any more then. Indices are 0, 1, 2...
  void Deliver(std::uint64_t index, Parcel parcel);

  // Nobody waits any more, and nothing is taken.
  void Abandon();

 private:
  std::function<void(Parcel&)> m_take;
  std::size_t m_capacity;
  std::mutex m_mutex;
  std::condition_variable m_moved;
  std::map<std::uint64_t, Parcel> m_waiting;
  std::uint64_t m_next = 0;
  bool m_isTaking = false;
  bool m_isAbandoned = false;
};

}  // namespace barcode::tool
