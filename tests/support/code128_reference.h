#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace barcode::test {

// The automatic encoder of Code 128 as plain recursion over copied lists: slow, and written from the rules
// alone.
class ReferenceCode128 {
 public:
  explicit ReferenceCode128(std::string text) : m_text(std::move(text)) {}

  // Start value and data, or nothing when no start set can encode the text.
  std::optional<std::vector<int>> Encode() {
    std::optional<Result> best;
    int start = 0;
    for (int set = 0; set < 3; ++set) {
      const std::optional<Result> result = Best(0, set);
      if (result && (!best || result->first < best->first)) {
        best = result;
        start = 103 + set;
      }
    }
    if (!best) {
      return std::nullopt;
    }
    best->second.insert(best->second.begin(), start);
    return best->second;
  }

 private:
  using Result = std::pair<int, std::vector<int>>;  // cost, values

  [[nodiscard]] int Value(std::size_t pos, int set) const {
    const int byte = static_cast<unsigned char>(m_text[pos]);
    if (set == 0) {
      return byte < 96 ? byte : -1;
    }
    if (set == 1) {
      return byte > 31 && byte < 127 ? byte - 32 : -1;
    }
    if (pos + 1 == m_text.size()) {
      return -1;
    }
    const int second = static_cast<unsigned char>(m_text[pos + 1]);
    const bool digits = byte >= '0' && byte <= '9' && second >= '0' && second <= '9';
    return digits ? 10 * (byte - '0') + second - '0' : -1;
  }

  std::optional<Result> Best(std::size_t pos, int set) {
    if (pos >= m_text.size()) {
      return Result{0, {}};
    }
    const auto known = m_memo.find({pos, set});
    if (known != m_memo.end()) {
      return known->second;
    }
    std::vector<int> order = {set};
    for (int other = 0; other < 3; ++other) {
      if (other != set) {
        order.push_back(other);
      }
    }
    std::optional<Result> best;
    for (const int candidate : order) {
      const int value = Value(pos, candidate);
      if (value < 0) {
        continue;
      }
      std::optional<Result> rest = Best(pos + (candidate == 2 ? 2 : 1), candidate);
      if (!rest) {
        continue;
      }
      std::vector<int> values;
      if (candidate != set) {
        values.push_back(101 - candidate);
      }
      values.push_back(value);
      const int cost = static_cast<int>(values.size()) + rest->first;
      values.insert(values.end(), rest->second.begin(), rest->second.end());
      if (!best || cost < best->first) {
        best = Result{cost, values};
      }
    }
    m_memo[{pos, set}] = best;
    return best;
  }

  std::string m_text;
  std::map<std::pair<std::size_t, int>, std::optional<Result>> m_memo;
};

}  // namespace barcode::test
