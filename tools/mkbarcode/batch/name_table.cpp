#include "mkbarcode/batch/name_table.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include "base/line.h"
#include "mkbarcode/batch/name_template.h"
#include "mkbarcode/batch/new_file.h"
#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

constexpr std::size_t kSlotBytes = sizeof(std::uint64_t) + sizeof(std::uint16_t);

__extension__ using Wide = unsigned __int128;

// The product of two numbers, its halves folded into one: every bit of it depends on all of both.
std::uint64_t Fold(std::uint64_t a, std::uint64_t b) {
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

std::uint64_t Word(std::string_view bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes.data(), std::min(bytes.size(), sizeof word));
  return word;
}

std::uint64_t Mix(std::string_view name, std::uint64_t seed) {
  constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15;  // 2^64 divided by the golden ratio
  constexpr std::uint64_t kOther = 0xD6E8FEB86659FD93;
  std::uint64_t state = Fold(seed ^ name.size(), kOdd);
  while (!name.empty()) {
    state = Fold(state ^ Word(name) ^ kOther, kOdd + (state << 1U));
    state = Fold(state ^ kOdd, kOther);
    name.remove_prefix(std::min(name.size(), sizeof(std::uint64_t)));
  }
  return Fold(state ^ seed, kOther);
}

// What memory is given out in, and where in a file it may begin.
std::size_t PageSize() {
  static const auto kSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  return kSize;
}

}  // namespace

TableMemory::TableMemory(const std::string& directory) : m_file(OpenNameless(directory)) {
  if (m_file.Number() < 0) {
    FailWithErrno(Line("cannot make a file in ", directory));
  }
}

std::byte* TableMemory::Allocate(std::size_t size) {
  int flags = MAP_PRIVATE | MAP_ANONYMOUS;
  if (IsFile()) {
    if (const int error = posix_fallocate(m_file.Number(), m_end, static_cast<off_t>(size)); error != 0) {
      errno = error;
      FailWithErrno("cannot note the names");
    }
    flags = MAP_SHARED;
  }
  void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, flags, m_file.Number(), m_end);
  if (memory == MAP_FAILED) {
    throw std::bad_alloc();
  }
  m_end += IsFile() ? static_cast<off_t>(size) : 0;
  return static_cast<std::byte*>(memory);
}

void TableMemory::Free(std::byte* memory, std::size_t size) {
  munmap(memory, size);
}

NameTable::NameTable() : m_unit(PageSize()) {}

NameTable::NameTable(std::size_t unit) : m_unit(unit) {}

NameTable::NameTable(const std::string& directory) : m_memory(directory), m_unit(PageSize()) {}

NameTable::~NameTable() {
  for (const Shard& shard : m_shards) {
    if (shard.memory != nullptr) {
      TableMemory::Free(shard.memory, shard.bytes);
    }
  }
}

NameTable::Hash NameTable::HashOf(std::string_view name) {
  constexpr std::uint64_t kFirst = 0xA0761D6478BD642F;
  constexpr std::uint64_t kSecond = 0xE7037ED1A0B428DB;
  const std::uint64_t key = Mix(name, kFirst);
  return {key == 0 ? 1 : key, static_cast<std::uint16_t>(Mix(name, kSecond))};
}

// The bits that do not say which shard, as a part of the capacity.
std::size_t NameTable::HomeOf(std::uint64_t key, std::size_t capacity) {
  return static_cast<std::size_t>(static_cast<Wide>(key << kShardBits) * capacity >> 64U);
}

std::size_t NameTable::Find(const Shard& shard, const Hash& hash) {
  const std::uint64_t* const keys = shard.Keys();
  const std::uint16_t* const tags = shard.Tags();
  std::size_t slot = HomeOf(hash.key, shard.capacity);
  while (keys[slot] != 0 && (keys[slot] != hash.key || tags[slot] != hash.tag)) {
    slot = slot + 1 == shard.capacity ? 0 : slot + 1;
  }
  return slot;
}

bool NameTable::Add(std::string_view name) {
  const Hash hash = HashOf(name);
  Shard& shard = ShardOf(hash);
  CountAccess();
  // Nine tenths full.
  if (10 * (shard.size + 1) > 9 * shard.capacity) {
    Grow(shard);
  }
  const std::size_t slot = Find(shard, hash);
  if (shard.Keys()[slot] != 0) {
    return false;
  }
  shard.Keys()[slot] = hash.key;
  shard.Tags()[slot] = hash.tag;
  ++shard.size;
  return true;
}

bool NameTable::Contains(std::string_view name) {
  const Hash hash = HashOf(name);
  const Shard& shard = ShardOf(hash);
  CountAccess();
  return shard.capacity > 0 && shard.Keys()[Find(shard, hash)] != 0;
}

// By a third: then the slots are two thirds full, and a name takes 15 bytes.
void NameTable::Grow(Shard& shard) {
  Shard larger;
  larger.bytes = shard.bytes + std::max(shard.bytes / 3 / m_unit, std::size_t{1}) * m_unit;
  larger.capacity = larger.bytes / kSlotBytes;
  larger.memory = m_memory.Allocate(larger.bytes);
  larger.size = shard.size;
  m_bytes += larger.bytes;
  m_largestBytes = std::max(m_largestBytes, m_bytes);
  for (std::size_t i = 0; i < shard.capacity; ++i) {
    const Hash hash = {shard.Keys()[i], shard.Tags()[i]};
    if (hash.key != 0) {
      const std::size_t slot = Find(larger, hash);
      larger.Keys()[slot] = hash.key;
      larger.Tags()[slot] = hash.tag;
    }
  }
  if (shard.memory != nullptr) {
    TableMemory::Free(shard.memory, shard.bytes);
  }
  m_bytes -= shard.bytes;
  shard = larger;
}

// The pages of a file may leave the process again: they stay in the file.
void NameTable::CountAccess() {
  constexpr unsigned kAccessesBetween = 1000;
  if (!m_memory.IsFile() || ++m_accesses % kAccessesBetween != 0) {
    return;
  }
  for (const Shard& shard : m_shards) {
    if (shard.memory != nullptr) {
      madvise(shard.memory, shard.bytes, MADV_DONTNEED);
    }
  }
}

// Numbers are given one behind the other: the first free one is found by halving, not by trying all.
std::optional<std::string> NameClaims::Claim(std::string name) {
  if (m_table.Add(name)) {
    return name;
  }
  if (m_repeated == Repeated::kRefused) {
    return std::nullopt;
  }
  std::uint64_t taken = 1;
  std::uint64_t open = 2;
  while (m_table.Contains(WithNumber(name, open))) {
    taken = open;
    open *= 2;
  }
  while (open - taken > 1) {
    const std::uint64_t middle = taken + (open - taken) / 2;
    (m_table.Contains(WithNumber(name, middle)) ? taken : open) = middle;
  }
  name = WithNumber(name, open);
  m_table.Add(name);
  return name;
}

}  // namespace barcode::tool
