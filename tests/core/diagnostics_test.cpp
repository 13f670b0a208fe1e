#include "core/diagnostics.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "support/capture.h"

namespace barcode {
namespace {

using test::Capture;
using test::CaptureInternal;

TEST(Diagnostics, OutputReachesItsStreamWhenFlushed) {
  const auto captured = Capture([] {
    Print("a");
    PrintLine("b");
    FlushOutput();
  });
  EXPECT_EQ(captured.out, "ab\n");
  EXPECT_EQ(captured.err, "");
}

TEST(Diagnostics, ErrorLinesAreImmediate) {
  const auto captured = Capture([] {
    ErrorLine("[Code39] ", "Empty string");
    ErrorLine("alone");
  });
  EXPECT_EQ(captured.err, "[Code39] Empty string\nalone\n");
}

TEST(Diagnostics, AnErrorLineDoesNotOvertakeWhatWasPrinted) {
  const auto captured = Capture([] {
    PrintLine("before");
    ErrorLine("error");
  });
  EXPECT_EQ(captured.out, "before\n");
}

TEST(Diagnostics, LinesAreMadeOfPieces) {
  const auto captured = Capture([] {
    PrintLine("width=", 300U, ", height=", -1, ", ", 0.5F, '!');
    PrintLine();
    ErrorLine("[Tag] ", std::string("bad "), 7);
  });
  EXPECT_EQ(captured.out, "width=300, height=-1, 0.5!\n\n");
  EXPECT_EQ(captured.err, "[Tag] bad 7\n");
}

// Datagrams keep the boundaries of writes.
TEST(Diagnostics, EachErrorLineIsOneWrite) {
  int sockets[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_DGRAM, 0, sockets), 0);
  const int original = dup(STDERR_FILENO);
  dup2(sockets[0], STDERR_FILENO);
  const std::string message(5000, 'x');
  ErrorLine("[Tag] ", message);
  ErrorLine("second");
  dup2(original, STDERR_FILENO);
  close(original);

  std::string buffer(10000, '\0');
  const auto receive = [&] {
    const ssize_t size = recv(sockets[1], buffer.data(), buffer.size(), MSG_DONTWAIT);
    return size < 0 ? std::string("nothing") : buffer.substr(0, static_cast<std::size_t>(size));
  };
  EXPECT_EQ(receive(), "[Tag] " + message + "\n");
  EXPECT_EQ(receive(), "second\n");
  close(sockets[0]);
  close(sockets[1]);
}

}  // namespace
}  // namespace barcode
