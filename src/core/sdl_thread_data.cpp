#include "core/sdl_thread_data.h"

#include <SDL.h>
#include <pthread.h>

#include <cstddef>
#include <new>

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

// SDL, when it finds no memory for what it keeps of a thread, looks there for room to say so, and so on until
// the stack is full. It gets to that only where there was memory for much more a moment ago.
bool HasMemoryForSdl() {
  constexpr std::size_t kMoreThanSdlTakes = 4096;
  void* const memory = SDL_malloc(kMoreThanSdlTakes);  // NOLINT: what could be optimised away proves nothing
  SDL_free(memory);
  return memory != nullptr;
}

}  // namespace

void PrepareSdlThreadData() {
  if (isPrepared) {
    return;
  }
  static ThreadExit threadExit;
  if (!threadExit.Register() || !HasMemoryForSdl()) {
    throw std::bad_alloc();
  }
  SDL_ClearError();
  isPrepared = true;
}

}  // namespace barcode
