#include "platform/posix/PosixProcesses.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <latch>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "fakes/ManualReactor.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/SignalWatch.h"

namespace vorlix {
namespace {

class PosixProcessesTest : public testing::Test {
 protected:
  // Runs a shell script with arguments; gives what it printed to the file "$0", whole.
  std::string Printed(const std::string& script, std::vector<std::string> arguments = {}) {
    const std::string file = folder / "out";
    arguments.insert(arguments.begin(), {"-c", "exec > $0.part; " + script + "; mv $0.part $0", file});
    EXPECT_TRUE(processes.Start("/bin/sh", arguments));
    for (int i = 0; i < 60'000 && access(file.c_str(), F_OK) != 0; ++i)
      usleep(1000);
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    unlink(file.c_str());
    return content.str();
  }

  TemporaryFolder folder;
  PosixProcesses processes;
};

TEST_F(PosixProcessesTest, HandsOverArgumentsAsTheyAreInUtf8) {
  EXPECT_EQ(Printed("printf '<%s>' \"$@\"", {"a b", "", "\"; rm -rf $HOME '", "M\xFCller \x80"}),
            "<a b><><\"; rm -rf $HOME '><M\xC3\xBCller \xE2\x82\xAC>");
}

TEST_F(PosixProcessesTest, LeavesNothingOfOursToTheProgram) {
  ManualReactor reactor;
  const SignalBlock block;
  const SignalWatch watch(reactor, block, [](int) {});
  const Descriptor leak(open("/dev/null", O_RDONLY));  // without the mark that closes it by itself
  ASSERT_EQ(fcntl(leak.Get(), F_DUPFD, 50), 50);
  EXPECT_EQ(Printed("ls /proc/$$/fd"), "0\n1\n2\n");
  close(50);
  EXPECT_EQ(Printed("readlink /proc/$$/fd/0"), "/dev/null\n");
  EXPECT_EQ(Printed("grep -E 'Sig(Blk|Ign)' /proc/$$/status | tr -d '\\n\\t'"),
            "SigBlk:0000000000000000SigIgn:0000000000000000");
  EXPECT_NE(Printed("ps -o sid= -p $$ 2>/dev/null || cut -d' ' -f6 /proc/$$/stat"), std::to_string(getsid(0)) + "\n");
  EXPECT_LT(waitpid(-1, nullptr, WNOHANG), 0);  // nor a child to us
}

TEST_F(PosixProcessesTest, TellsWhatCannotBeStarted) {
  std::ofstream(folder / "text") << "echo a text is not a program\n";
  std::ofstream(folder / "script") << "echo a text is not a program\n";
  std::filesystem::permissions(folder / "script", std::filesystem::perms::owner_all);
  for (const std::string& none : {folder / "none", folder / "text", folder / "script", folder.Path(), std::string()})
    EXPECT_FALSE(processes.Start(none, {})) << none;
  EXPECT_EQ(processes.Start("/\xE4", {}).text, "start /\xE4: No such file or directory");
  EXPECT_FALSE(processes.Start("/bin/true", {std::string("a\0b", 3)}));
  EXPECT_TRUE(processes.Start("true", {}));
}

TEST(SignalWatchTest, TellsSignalsFromTheLoopButNoneThatWasIgnoredAndSurvivesABrokenPipe) {
  for (const auto& [former, expected] : {std::pair{SIG_DFL, std::vector{SIGHUP, SIGTERM}}, {SIG_IGN, {SIGTERM}}}) {
    ManualReactor reactor;
    std::vector<int> told;
    std::signal(SIGHUP, former);
    const SignalBlock block;
    std::latch end(1);
    const std::jthread ofTheToolkit([&end] { end.wait(); });
    const SignalWatch watch(reactor, block, [&told](int signal) { told.push_back(signal); });
    for (const int signal : {SIGTERM, SIGHUP, SIGPIPE})
      kill(getpid(), signal);
    EXPECT_TRUE(told.empty());
    for (int i = 0; i < 3; ++i)
      reactor.RunPending();
    EXPECT_EQ(told, expected);
    end.count_down();
  }
  std::signal(SIGHUP, SIG_DFL);
}

}  // namespace
}  // namespace vorlix
