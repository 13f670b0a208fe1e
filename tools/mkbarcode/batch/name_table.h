#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "mkbarcode/descriptor.h"

namespace barcode::tool {

// Memory for tables: of the process, or of a nameless file, where it does not count.
class TableMemory {
 public:
  TableMemory() = default;
  // The file lies in the directory.
  explicit TableMemory(const std::string& directory);

  // Zeros. Throws RunError.
  std::byte* Allocate(std::size_t size);
  static void Free(std::byte* memory, std::size_t size);
  bool IsFile() const { return m_file.Number() >= 0; }

 private:
  Descriptor m_file{-1};
  std::int64_t m_end = 0;  // of the file
};

// Which names have been taken, in at most 16 bytes each at any time, growth included. What is kept of a name
// is a hash of 80 bits: two names that share one are taken for the same. Of a million names that happens once
// in 10^12 runs, and the later row fails; no file is lost.
class NameTable {
 public:
  NameTable();
  // That grows by multiples of so many bytes, themselves one of a page.
  explicit NameTable(std::size_t unit);
  // With the memory of a nameless file in the directory, of which no more than a few pages stand in the
  // process at a time.
  explicit NameTable(const std::string& directory);
  NameTable(const NameTable&) = delete;
  NameTable& operator=(const NameTable&) = delete;
  ~NameTable();

  // False when the name was taken before.
  bool Add(std::string_view name);
  bool Contains(std::string_view name);

  // What all of it has taken at most so far.
  std::size_t LargestBytes() const { return m_largestBytes; }

 private:
  struct Hash {
    std::uint64_t key = 0;  // never 0
    std::uint16_t tag = 0;
  };
  // Slots with open addressing: first all keys, behind them all tags.
  struct Shard {
    std::byte* memory = nullptr;
    std::size_t bytes = 0;
    std::size_t capacity = 0;
    std::size_t size = 0;

    std::uint64_t* Keys() const { return reinterpret_cast<std::uint64_t*>(memory); }
    std::uint16_t* Tags() const { return reinterpret_cast<std::uint16_t*>(Keys() + capacity); }
  };
  static constexpr unsigned kShardBits = 6;

  static Hash HashOf(std::string_view name);
  static std::size_t HomeOf(std::uint64_t key, std::size_t capacity);
  // The slot of the hash, or the empty one where it belongs.
  static std::size_t Find(const Shard& shard, const Hash& hash);
  Shard& ShardOf(const Hash& hash) { return m_shards[hash.key >> (64U - kShardBits)]; }
  void Grow(Shard& shard);
  void CountAccess();

  TableMemory m_memory;
  std::size_t m_unit;  // what it grows by
  std::array<Shard, std::size_t{1} << kShardBits> m_shards{};
  std::size_t m_bytes = 0;
  std::size_t m_largestBytes = 0;
  unsigned m_accesses = 0;
};

// Gives each row its name, in the order of rows.
class NameClaims {
 public:
  enum class Repeated { kRefused, kNumbered };

  NameClaims(NameTable& table, Repeated repeated) : m_table(table), m_repeated(repeated) {}

  // The name, or the same with the first number from 2 on that leads to a free one; nothing for one that was
  // taken and is not to be numbered.
  std::optional<std::string> Claim(std::string name);

 private:
  NameTable& m_table;
  Repeated m_repeated;
};

}  // namespace barcode::tool
