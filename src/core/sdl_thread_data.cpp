#include "core/sdl_thread_data.h"

#include <SDL.h>
#include <pthread.h>

namespace barcode {
namespace {

// A key of the C library rather than a thread_local object: the registration of the latter's destructor takes
// memory, and ends the process when there is none.
class ThreadExit {
 public:
  ThreadExit() : m_exists(pthread_key_create(&m_key, [](void*) { SDL_TLSCleanup(); }) == 0) {}

  bool Register() { return m_exists && pthread_setspecific(m_key, this) == 0; }

 private:
  pthread_key_t m_key = 0;
  bool m_exists;
};

thread_local bool isPrepared = false;

}  // namespace

bool PrepareSdlThreadData() {
  if (isPrepared) {
    return true;
  }
  static ThreadExit threadExit;
  SDL_ClearError();
  isPrepared = threadExit.Register();
  return isPrepared;
}

}  // namespace barcode
