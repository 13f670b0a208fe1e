#include "mkbarcode/batch/parcel_queue.h"

#include <utility>

namespace barcode::tool {

void ParcelQueue::Deliver(std::uint64_t index, Parcel parcel) {
  std::unique_lock lock(m_mutex);
  m_moved.wait(lock, [&] { return m_isAbandoned || index < m_next + m_capacity; });
  if (m_isAbandoned) {
    return;
  }
  m_waiting.emplace(index, std::move(parcel));
  if (m_isTaking) {
    return;
  }
  m_isTaking = true;
  while (!m_isAbandoned && !m_waiting.empty() && m_waiting.begin()->first == m_next) {
    auto next = m_waiting.extract(m_waiting.begin());
    lock.unlock();
    m_take(next.mapped());
    lock.lock();
    ++m_next;
    m_moved.notify_all();
  }
  m_isTaking = false;
}

void ParcelQueue::Abandon() {
  const std::scoped_lock lock(m_mutex);
  m_isAbandoned = true;
  m_moved.notify_all();
}

}  // namespace barcode::tool
