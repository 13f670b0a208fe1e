#pragma once

#include <cstddef>
#include <limits>
#include <string>

namespace barcode::test {

// This program replaces the C library's allocator: every malloc, calloc, realloc and aligned allocation of
// the process passes here, those of the libraries underneath, of operator new and of the C library itself
// included.

// The allocations that fail, counted from 1 on the thread that asks: `count` of them from number `first` on.
struct AllocationFault {
  long first = std::numeric_limits<long>::max();
  long count = 1;
};

inline constexpr AllocationFault kNoFault;
inline constexpr long kForGood = std::numeric_limits<long>::max();

// Makes allocations of this thread fail while it lives, and remembers the blocks that are allocated.
class FailingAllocations {
 public:
  explicit FailingAllocations(const AllocationFault& fault);
  ~FailingAllocations();
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;

  // True when at least one allocation has failed.
  static bool Fired();
};

// Blocks that the whole process holds.
long LiveBlocks();

// Of the blocks that were allocated during the last FailingAllocations, those that are still held: their
// number, and those that were taken through a library whose file name holds `library`, of `size` bytes.
long SurvivingBlocks();
long SurvivingBlocks(const char* library, std::size_t size);

// One line for each of them: size and caller.
std::string DescribeSurvivingBlocks();

// Where the first failed allocation was asked for, when the environment has BARCODE_FAULT_TRACE; else "".
std::string DescribeFault();

}  // namespace barcode::test
