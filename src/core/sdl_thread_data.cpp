#include "core/sdl_thread_data.h"

#include <SDL.h>

namespace barcode {
namespace {

struct AtThreadExit {
  AtThreadExit() = default;
  AtThreadExit(const AtThreadExit&) = delete;
  AtThreadExit& operator=(const AtThreadExit&) = delete;
  ~AtThreadExit() { SDL_TLSCleanup(); }

  bool armed = false;
};

}  // namespace

void FreeSdlDataAtThreadExit() {
  thread_local AtThreadExit atThreadExit;
  atThreadExit.armed = true;
}

}  // namespace barcode
