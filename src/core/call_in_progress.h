#pragma once

namespace barcode {

// Lives during every exported call. A fork on another thread waits for its end, so that the child finds no
// lock held by a thread that it does not have, and nothing half done: neither here nor in SDL, whose locks
// nobody else can reach.
class CallInProgress {
 public:
  CallInProgress();
  ~CallInProgress();
  CallInProgress(const CallInProgress&) = delete;
  CallInProgress& operator=(const CallInProgress&) = delete;

 private:
  bool m_isOutermost;
};

}  // namespace barcode
