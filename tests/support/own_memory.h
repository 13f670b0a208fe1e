#pragma once

#include <cstddef>
#include <fstream>
#include <string>
#include <string_view>

namespace barcode::test {

// Bytes of a process ("self", or its number) that no file backs, in main memory or swapped out. They are
// counted page by page: what the system adds up for its overviews lags behind, by more the more processors
// there are, and pages of programs and libraries come and go with what else the machine does.
inline std::size_t OwnMemory(const std::string& process) {
  constexpr std::size_t kKilobyte = 1024;
  std::size_t sum = 0;
  std::ifstream maps("/proc/" + process + "/smaps");
  for (std::string line; std::getline(maps, line);) {
    for (const std::string_view name : {"Anonymous:", "Swap:"}) {
      sum += line.starts_with(name) ? std::stoul(line.substr(name.size())) * kKilobyte : 0;
    }
  }
  return sum;
}

}  // namespace barcode::test
