#include "core/call_in_progress.h"

#include <pthread.h>

#include <ctime>
#include <utility>

namespace barcode {
namespace {

// A fork gives up waiting after this many seconds: the call may itself wait for what the fork is to bring,
// such as a reader of the pipe that it prints to.
constexpr std::time_t kPatience = 10;

// Calls share it, a fork has it alone. Calls that begin while a fork waits come after it, or a fork among
// busy threads would never get its turn.
constexpr pthread_rwlock_t kOpenGate = PTHREAD_RWLOCK_WRITER_NONRECURSIVE_INITIALIZER_NP;
pthread_rwlock_t gate = kOpenGate;

thread_local bool isInCall = false;
thread_local bool isForking = false;  // and has the gate for itself

void BeforeFork() {
  // A signal handler may fork in the middle of a call, which cannot end before.
  if (isInCall) {
    return;
  }
  std::timespec deadline{};
  clock_gettime(CLOCK_MONOTONIC, &deadline);
  deadline.tv_sec += kPatience;
  isForking = pthread_rwlock_clockwrlock(&gate, CLOCK_MONOTONIC, &deadline) == 0;
}

void AfterForkInParent() {
  if (std::exchange(isForking, false)) {
    pthread_rwlock_unlock(&gate);
  }
}

// The gate knows the forking thread by its number, which is another one in the child: it is made anew.
void AfterForkInChild() {
  isForking = false;
  gate = kOpenGate;
  if (isInCall) {
    pthread_rwlock_rdlock(&gate);
  }
}

// When the library is loaded: no call, and no fork that has to wait for one, can come before.
[[maybe_unused]] const int isRegistered = pthread_atfork(BeforeFork, AfterForkInParent, AfterForkInChild);

}  // namespace

CallInProgress::CallInProgress() : m_isOutermost(!std::exchange(isInCall, true)) {
  if (m_isOutermost) {
    pthread_rwlock_rdlock(&gate);
  }
}

CallInProgress::~CallInProgress() {
  if (m_isOutermost) {
    pthread_rwlock_unlock(&gate);
    isInCall = false;
  }
}

}  // namespace barcode
