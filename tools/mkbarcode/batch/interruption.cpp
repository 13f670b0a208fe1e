#include "mkbarcode/batch/interruption.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>

#include "mkbarcode/batch/new_file.h"
#include "mkbarcode/descriptor.h"

namespace barcode::tool {
namespace {

constexpr std::array kEndingSignals = {SIGINT, SIGTERM, SIGHUP};
constexpr std::array kErrorSignals = {SIGPIPE, SIGXFSZ};

std::atomic<int> firstSignal = 0;
std::atomic<int> wakeUpOfHandler = -1;
std::atomic<bool> breaksOffCalls = false;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

void Notify(int descriptor) {
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(descriptor, &one, sizeof one);
}

// Once a second from the first signal on: one of these alarms comes during the call that is to end.
extern "C" void Insist(int /*signal*/) {
  if (breaksOffCalls) {
    alarm(1);
  }
}

extern "C" void Note(int signal) {
  const int reason = errno;
  int none = 0;
  if (!firstSignal.compare_exchange_strong(none, signal)) {
    RemoveTemporaryFiles();
    (void)std::signal(signal, SIG_DFL);
    (void)raise(signal);  // taken when this returns
    return;
  }
  Notify(wakeUpOfHandler);
  Insist(signal);
  errno = reason;
}

}  // namespace

Interruption::Interruption() : m_wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (m_wakeUp < 0) {
    FailWithErrno("cannot wait for signals");
  }
  firstSignal = 0;
  wakeUpOfHandler = m_wakeUp;
  struct sigaction noting {};
  noting.sa_handler = Note;
  struct sigaction ignoring {};
  ignoring.sa_handler = SIG_IGN;
  std::size_t i = 0;
  for (const int signal : kEndingSignals) {
    // A shell has its background jobs ignore SIGINT; one that is sent to a batch is meant all the same.
    // SIGHUP is another matter: nohup asks for it.
    sigaction(signal, nullptr, &m_before[i]);
    const bool stays = signal == SIGHUP && m_before[i].sa_handler == SIG_IGN;
    sigaction(signal, stays ? &ignoring : &noting, nullptr);
    ++i;
  }
  for (const int signal : kErrorSignals) {
    sigaction(signal, &ignoring, &m_before[i++]);
  }
}

Interruption::~Interruption() {
  std::size_t i = 0;
  for (const int signal : kEndingSignals) {
    sigaction(signal, &m_before[i++], nullptr);
  }
  for (const int signal : kErrorSignals) {
    sigaction(signal, &m_before[i++], nullptr);
  }
  wakeUpOfHandler = -1;
  close(m_wakeUp);
}

void Interruption::WakeUp() const {
  Notify(m_wakeUp);
}

int Interruption::Signal() {
  return firstSignal;
}

Interruption::BreaksOffCalls::BreaksOffCalls() {
  struct sigaction insisting {};
  insisting.sa_handler = Insist;  // no call is taken up again after it
  sigaction(SIGALRM, &insisting, &m_before);
  breaksOffCalls = true;
  if (Signal() != 0) {
    alarm(1);
  }
}

Interruption::BreaksOffCalls::~BreaksOffCalls() {
  breaksOffCalls = false;
  alarm(0);
  sigaction(SIGALRM, &m_before, nullptr);
}

}  // namespace barcode::tool
