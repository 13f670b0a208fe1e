// Any number of threads make labels at the same time and get what one alone gets.
#include <gtest/gtest.h>

#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "label_api/made_label.h"
#include "label_api/valid_requests.h"

namespace barcode::test {
namespace {

using nlohmann::json;

std::string Made(const json& request) {
  const MadeLabel label(request);
  return std::string(label.Data()) + std::string(label.ReportText());
}

// The thread sanitizer runs this test, too.
TEST(LabelThreads, MakeLabelsAsOneAloneDoes) {
  constexpr int kThreads = 64;
  std::vector<const char*> types(kThreads);
  std::vector<std::vector<std::string>> made(kThreads);
  // The threads come first: what the first call of a process sets up is set up by several at a time.
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      start.arrive_and_wait();
      types[i] = barcode_label_types();
      const std::vector<json> requests = ValidRequests();
      for (std::size_t at = 0; at < requests.size(); ++at) {
        json request = requests[(at + i) % requests.size()];
        request["format"] = kFormats[i % 3];
        request["caption"] = std::to_string(i);
        made[i].push_back(Made(request));
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  const std::vector<json> requests = ValidRequests();
  for (std::size_t i = 0; i < kThreads; ++i) {
    EXPECT_EQ(types[i], types[0]);
    for (std::size_t at = 0; at < requests.size(); ++at) {
      json request = requests[(at + i) % requests.size()];
      request["format"] = kFormats[i % 3];
      request["caption"] = std::to_string(i);
      // Compared here: pictures are not to be printed.
      EXPECT_TRUE(made[i][at] == Made(request)) << request;
    }
  }
}

// One label is read by many, the last of them done before it is freed.
TEST(LabelThreads, ReadOneLabel) {
  const MadeLabel label({{"type", "code128"}, {"text", "ABC"}});
  std::vector<std::thread> threads;
  std::vector<int> same(64);
  threads.reserve(same.size());
  const std::string data(label.Data());
  for (int& result : same) {
    threads.emplace_back(
        [&] { result = label.Ok() && label.Data() == data && label.MediaType() == "image/png" ? 1 : 0; });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(same, std::vector(64, 1));
}

}  // namespace
}  // namespace barcode::test
