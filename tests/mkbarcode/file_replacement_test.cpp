#include "mkbarcode/file_replacement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>

#include "mkbarcode/errors.h"
#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::ThrowsMessage;

constexpr std::array kFatalSignals = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ};

// What happens when every byte is written and the file is about to be flushed; empty: nothing unusual.
std::function<int()> onFlush;

}  // namespace
}  // namespace barcode::tool

// Takes the place of the system's function in this program.
extern "C" int fsync(int descriptor) {
  if (barcode::tool::onFlush) {
    return barcode::tool::onFlush();
  }
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace barcode::tool {
namespace {

class FileReplacement : public testing::Test {
 protected:
  // Whoever runs the tests may have signals ignored: nohup does, and a shell for what is in the background.
  FileReplacement() {
    for (const int signal : kFatalSignals) {
      (void)std::signal(signal, SIG_DFL);
    }
  }
  ~FileReplacement() override { onFlush = nullptr; }

  const ScratchDirectory m_scratch;
  const std::string m_file = m_scratch.File("out.png");
};

mode_t PermissionsOf(const std::string& file) {
  struct stat status {};
  EXPECT_EQ(stat(file.c_str(), &status), 0);
  return status.st_mode & 07777U;
}

TEST_F(FileReplacement, MakesAFileWithTheUsualPermissions) {
  constexpr mode_t kMask = 0027;
  const mode_t before = umask(kMask);
  ReplaceFile(m_file, "bytes");
  umask(before);
  EXPECT_EQ(ReadFile(m_file), "bytes");
  EXPECT_EQ(PermissionsOf(m_file), 0640U);
  EXPECT_THAT(m_scratch.Names(), ElementsAre("out.png"));
}

TEST_F(FileReplacement, KeepsThePermissionsOfAnEarlierFile) {
  for (const mode_t mode : {0600U, 0664U, 0777U}) {
    WriteFile(m_file, "an earlier and longer text");
    ASSERT_EQ(chmod(m_file.c_str(), mode), 0);
    ReplaceFile(m_file, "bytes");
    EXPECT_EQ(ReadFile(m_file), "bytes");
    EXPECT_EQ(PermissionsOf(m_file), mode);
  }
  EXPECT_THAT(m_scratch.Names(), ElementsAre("out.png"));
}

TEST_F(FileReplacement, WritesWhereTheWorkingDirectoryIs) {
  const fs::path before = fs::current_path();
  fs::current_path(m_scratch.Path());
  ReplaceFile("out.png", "bytes");
  fs::current_path(before);
  EXPECT_EQ(ReadFile(m_file), "bytes");
}

TEST_F(FileReplacement, ReplacesWhatALinkLeadsToAndKeepsTheLink) {
  fs::create_directory(m_scratch.File("elsewhere"));
  const std::string target = m_scratch.File("elsewhere/target.png");
  WriteFile(target, "earlier");
  fs::create_symlink("elsewhere/second", m_file);
  fs::create_symlink("../elsewhere/target.png", m_scratch.File("elsewhere/second"));
  ReplaceFile(m_file, "bytes");
  EXPECT_EQ(fs::read_symlink(m_file), "elsewhere/second");
  EXPECT_TRUE(fs::is_symlink(m_scratch.File("elsewhere/second")));
  EXPECT_FALSE(fs::is_symlink(target));
  EXPECT_EQ(ReadFile(target), "bytes");
}

TEST_F(FileReplacement, LeavesTheTargetOfALinkWholeWhenItFails) {
  const std::string target = m_scratch.File("target.png");
  WriteFile(target, "earlier");
  fs::create_symlink(target, m_file);
  onFlush = [] {
    errno = EIO;
    return -1;
  };
  EXPECT_THROW(ReplaceFile(m_file, "bytes"), RunError);
  EXPECT_TRUE(fs::is_symlink(m_file));
  EXPECT_EQ(ReadFile(target), "earlier");
  EXPECT_THAT(m_scratch.Names(), ElementsAre("out.png", "target.png"));
}

TEST_F(FileReplacement, MakesTheFileThatADanglingLinkLeadsTo) {
  fs::create_symlink("target.png", m_file);
  ReplaceFile(m_file, "bytes");
  EXPECT_TRUE(fs::is_symlink(m_file));
  EXPECT_EQ(ReadFile(m_scratch.File("target.png")), "bytes");
}

TEST_F(FileReplacement, FailsForLinksThatLeadNowhere) {
  fs::create_symlink("out.png", m_file);
  EXPECT_THAT([&] { ReplaceFile(m_file, "bytes"); },
              ThrowsMessage<RunError>("cannot write " + m_file + ": Too many levels of symbolic links"));
  const std::string dangling = m_scratch.File("dangling.png");
  fs::create_symlink("missing/target.png", dangling);
  EXPECT_THAT([&] { ReplaceFile(dangling, "bytes"); },
              ThrowsMessage<RunError>("cannot write " + dangling + ": cannot make a file in " +
                                      m_scratch.File("missing") + ": No such file or directory"));
  EXPECT_THAT(m_scratch.Names(), ElementsAre("dangling.png", "out.png"));
}

TEST_F(FileReplacement, LeavesAnEarlierFileWhenTheBytesDoNotReachTheDisk) {
  WriteFile(m_file, "earlier");
  onFlush = [] {
    errno = ENOSPC;
    return -1;
  };
  EXPECT_THAT([&] { ReplaceFile(m_file, "bytes"); },
              ThrowsMessage<RunError>("cannot write " + m_file + ": No space left on device"));
  EXPECT_EQ(ReadFile(m_file), "earlier");
  EXPECT_THAT(m_scratch.Names(), ElementsAre("out.png"));
}

TEST_F(FileReplacement, WritesToFileSystemsThatCannotFlush) {
  onFlush = [] {
    errno = EINVAL;
    return -1;
  };
  ReplaceFile(m_file, "bytes");
  EXPECT_EQ(ReadFile(m_file), "bytes");
}

TEST_F(FileReplacement, TakesAnotherNameWhenAKilledProgramLeftAFile) {
  const std::string stale = ".mkbarcode-" + std::to_string(getpid()) + "-0";
  WriteFile(m_scratch.File(stale), "stale");
  ReplaceFile(m_file, "bytes");
  EXPECT_EQ(ReadFile(m_file), "bytes");
  EXPECT_EQ(ReadFile(m_scratch.File(stale)), "stale");
}

// The tests below end copies of this process.
using FileReplacementDeathTest = FileReplacement;

TEST_F(FileReplacementDeathTest, LeavesNothingBehindWhenASignalEndsTheProgram) {
  for (const int signal : kFatalSignals) {
    WriteFile(m_file, "earlier");
    onFlush = [signal] { return raise(signal); };
    EXPECT_EXIT(ReplaceFile(m_file, "bytes"), testing::KilledBySignal(signal), "");
    EXPECT_EQ(ReadFile(m_file), "earlier");
    EXPECT_THAT(m_scratch.Names(), ElementsAre("out.png")) << signal;
    fs::remove(m_file);
    EXPECT_EXIT(ReplaceFile(m_file, "bytes"), testing::KilledBySignal(signal), "");
    EXPECT_THAT(m_scratch.Names(), IsEmpty()) << signal;
  }
}

TEST_F(FileReplacementDeathTest, GoesOnWhenTheSignalIsIgnored) {
  onFlush = [] { return raise(SIGHUP); };
  EXPECT_EXIT(
      {
        (void)std::signal(SIGHUP, SIG_IGN);
        ReplaceFile(m_file, "bytes");
        _exit(std::signal(SIGHUP, SIG_DFL) == SIG_IGN ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_EQ(ReadFile(m_file), "bytes");
}

TEST_F(FileReplacementDeathTest, LeavesAnEarlierFileWhenTheProgramIsKilled) {
  WriteFile(m_file, "earlier");
  onFlush = [] { return raise(SIGKILL); };
  EXPECT_EXIT(ReplaceFile(m_file, "bytes"), testing::KilledBySignal(SIGKILL), "");
  EXPECT_EQ(ReadFile(m_file), "earlier");
}

}  // namespace
}  // namespace barcode::tool
