#include "faults/allocations.h"

#include <dlfcn.h>
#include <execinfo.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

// NOLINTBEGIN: what stands for the allocator takes and returns memory as it comes

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace barcode::test {
namespace {

struct Block {
  void* memory = nullptr;
  std::size_t size = 0;
  void* caller = nullptr;
};

// The blocks of armed calls: open addressing in fixed memory, for an allocator cannot allocate.
class BlockTable {
 public:
  void Clear() {
    const Lock lock(*this);
    std::fill(m_blocks.begin(), m_blocks.end(), Block{});
    m_count = 0;
  }

  void Add(void* memory, std::size_t size, void* caller) {
    const Lock lock(*this);
    for (std::size_t i = Hash(memory), probes = 0; probes < kProbes; i = (i + 1) % kCapacity, ++probes) {
      if (m_blocks[i].memory == nullptr) {
        m_blocks[i] = {memory, size, caller};
        ++m_count;
        return;
      }
    }
    std::abort();
  }

  void Remove(const void* memory) {
    if (m_count.load(std::memory_order_relaxed) == 0) {
      return;
    }
    const Lock lock(*this);
    for (std::size_t i = Hash(memory), probes = 0; probes < kProbes; i = (i + 1) % kCapacity, ++probes) {
      if (m_blocks[i].memory == memory) {
        m_blocks[i] = {};
        --m_count;
        return;
      }
    }
  }

  template <class Visit>
  void ForEach(Visit visit) const {
    for (const Block& block : m_blocks) {
      if (block.memory != nullptr) {
        visit(block);
      }
    }
  }

  long Count() const { return m_count; }

 private:
  static constexpr std::size_t kCapacity = 1U << 14U;
  static constexpr std::size_t kProbes = 256;

  class Lock {
   public:
    explicit Lock(BlockTable& table) : m_table(table) {
      while (m_table.m_busy.test_and_set(std::memory_order_acquire)) {
      }
    }
    ~Lock() { m_table.m_busy.clear(std::memory_order_release); }

   private:
    BlockTable& m_table;
  };

  static std::size_t Hash(const void* memory) {
    return (reinterpret_cast<std::uintptr_t>(memory) >> 4U) * 0x9E3779B97F4A7C15U >> 50U;
  }

  std::array<Block, kCapacity> m_blocks{};
  std::atomic<long> m_count = 0;
  std::atomic_flag m_busy;
};

constinit BlockTable armedBlocks;
constinit std::atomic<long> liveBlocks = 0;

constinit thread_local bool isArmed = false;
constinit thread_local long asked = 0;
constinit thread_local AllocationFault fault;

// A block that is taken and given back at once shows that there is memory: as many allocations as a caller
// may have asked it for are granted then, not more.
constexpr std::size_t kProof = 4096;
constexpr int kGrants = 2;
constinit thread_local void* newestBlock = nullptr;
constinit thread_local std::size_t newestSize = 0;
constinit thread_local int grants = 0;

// Of the last armed call, on whatever thread it was.
constinit std::atomic<bool> hasFired = false;
constinit std::array<void*, 40> faultStack{};
constinit int faultDepth = 0;

bool IsTracing() {
  static const bool isTracing = std::getenv("BARCODE_FAULT_TRACE") != nullptr;
  return isTracing;
}

// Counts an allocation; true when it is to fail.
bool Fails() {
  if (!isArmed || grants > 0) {
    grants -= isArmed ? 1 : 0;
    return false;
  }
  ++asked;
  if (asked < fault.first || asked - fault.first >= fault.count) {
    return false;
  }
  if (!hasFired.exchange(true) && IsTracing()) {
    isArmed = false;
    faultDepth = backtrace(faultStack.data(), static_cast<int>(faultStack.size()));
    isArmed = true;
  }
  errno = ENOMEM;
  return true;
}

void* Taken(void* memory, std::size_t size, void* caller) {
  if (memory != nullptr) {
    ++liveBlocks;
    if (isArmed) {
      newestBlock = memory;
      newestSize = size;
      armedBlocks.Add(memory, size, caller);
    }
  }
  return memory;
}

void Returned(const void* memory) {
  if (memory != nullptr) {
    --liveBlocks;
    armedBlocks.Remove(memory);
    if (isArmed) {
      grants = memory == newestBlock && newestSize == kProof ? kGrants : grants;
      newestBlock = nullptr;
    }
  }
}

std::string Describe(void* address) {
  Dl_info info{};
  std::ostringstream text;
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) {
    text << address;
    return text.str();
  }
  const char* const slash = std::strrchr(info.dli_fname, '/');
  text << (slash == nullptr ? info.dli_fname : slash + 1) << '(';
  if (info.dli_sname != nullptr) {
    text << info.dli_sname;
  }
  text << ")+0x" << std::hex << static_cast<const char*>(address) - static_cast<const char*>(info.dli_fbase);
  return text.str();
}

void* Aligned(std::size_t alignment, std::size_t size, void* caller) {
  return Fails() ? nullptr : Taken(__libc_memalign(alignment, size), size, caller);
}

}  // namespace

FailingAllocations::FailingAllocations(const AllocationFault& wanted) {
  if (IsTracing()) {
    (void)backtrace(faultStack.data(), 1);  // loads what it needs
  }
  armedBlocks.Clear();
  hasFired = false;
  faultDepth = 0;
  asked = 0;
  grants = 0;
  newestBlock = nullptr;
  fault = wanted;
  isArmed = true;
}

FailingAllocations::~FailingAllocations() {
  isArmed = false;
}

bool FailingAllocations::Fired() {
  return hasFired;
}

long LiveBlocks() {
  return liveBlocks;
}

long SurvivingBlocks() {
  return armedBlocks.Count();
}

long SurvivingBlocks(const char* library, std::size_t size) {
  long count = 0;
  armedBlocks.ForEach([&](const Block& block) {
    Dl_info info{};
    const bool isFound = dladdr(block.caller, &info) != 0 && info.dli_fname != nullptr &&
                         std::strstr(info.dli_fname, library) != nullptr;
    count += isFound && block.size == size ? 1 : 0;
  });
  return count;
}

std::string DescribeSurvivingBlocks() {
  std::string text;
  armedBlocks.ForEach([&](const Block& block) {
    text += "    " + std::to_string(block.size) + " bytes, from " + Describe(block.caller) + '\n';
  });
  return text;
}

std::string DescribeFault() {
  std::string text;
  for (int i = 0; i < faultDepth; ++i) {
    text += "    " + Describe(faultStack[static_cast<std::size_t>(i)]) + '\n';
  }
  return text;
}

}  // namespace barcode::test

using barcode::test::Aligned;
using barcode::test::Fails;
using barcode::test::Returned;
using barcode::test::Taken;

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

EXPORTED void* malloc(std::size_t size) {
  return Fails() ? nullptr : Taken(__libc_malloc(size), size, __builtin_return_address(0));
}

EXPORTED void* calloc(std::size_t count, std::size_t size) {
  return Fails() ? nullptr : Taken(__libc_calloc(count, size), count * size, __builtin_return_address(0));
}

EXPORTED void* realloc(void* memory, std::size_t size) {
  if (Fails()) {
    return nullptr;
  }
  void* const moved = __libc_realloc(memory, size);
  if (moved != nullptr || size == 0) {
    Returned(memory);
  }
  return Taken(moved, size, __builtin_return_address(0));
}

EXPORTED void free(void* memory) {
  Returned(memory);
  __libc_free(memory);
}

EXPORTED void* memalign(std::size_t alignment, std::size_t size) {
  return Aligned(alignment, size, __builtin_return_address(0));
}

EXPORTED void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return Aligned(alignment, size, __builtin_return_address(0));
}

EXPORTED int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  const int error = errno;
  void* const taken = Aligned(alignment, size, __builtin_return_address(0));
  if (taken == nullptr) {
    errno = error;
    return ENOMEM;
  }
  *memory = taken;
  return 0;
}

}  // extern "C"
// NOLINTEND
