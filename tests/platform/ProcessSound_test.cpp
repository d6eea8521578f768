// Players are small scripts in a PATH of the test's own.
#include "platform/posix/ProcessSound.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "fakes/MemoryLogStore.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/PollReactor.h"
#include "platform/posix/SystemClock.h"
#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

class ProcessSoundTest : public testing::Test {
 protected:
  ProcessSoundTest() { std::ofstream(folder / "ring $x.wav") << "RIFF"; }

  // Notes its call, then does what the script says.
  void AddPlayer(const std::string& name, const std::string& script) {
    std::ofstream(folder / name) << "#!/bin/sh\necho \"" << name << "|$1|$2\" >> '" << folder / "calls"
                                 << "'\n"
                                 << script << "\n";
    chmod((folder / name).c_str(), 0755);
  }
  std::string Calls() const {
    std::ifstream in(folder / "calls");
    return {std::istreambuf_iterator<char>(in), {}};
  }
  // Lets the loop run until nothing plays any more.
  void Finish() {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (sound.IsPlaying() && std::chrono::steady_clock::now() < end)
      reactor.WaitPending(std::chrono::milliseconds(20));
    EXPECT_FALSE(sound.IsPlaying());
  }

  TemporaryFolder folder;
  TemporaryVariable path{"PATH", folder.Path()};
  PollReactor reactor;
  ProcessSound sound{reactor};
  const std::string file = folder / "ring $x.wav";
};

TEST_F(ProcessSoundTest, TheFirstPlayerThatCanIsKept) {
  AddPlayer("pw-play", "exit 1");
  AddPlayer("aplay", "exit 0");
  EXPECT_TRUE(sound.Play(file));
  Finish();
  EXPECT_TRUE(sound.Play(file));
  Finish();
  EXPECT_EQ(Calls(), "pw-play|" + file + "|\naplay|-q|" + file + "\naplay|-q|" + file + "\n");
}

TEST_F(ProcessSoundTest, NothingWaitsForASoundAndItCanBeStopped) {
  AddPlayer("paplay", "exec /bin/sleep 60");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_TRUE(sound.Play(file));
  EXPECT_TRUE(sound.IsPlaying());
  EXPECT_TRUE(sound.Play(file));  // in place of the first
  sound.Stop();
  EXPECT_FALSE(sound.IsPlaying());
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

// It has let go of everything it inherited, as one that hangs in its sound server may have.
TEST_F(ProcessSoundTest, APlayerThatHangsHoldsNeitherTheLoopNorTheEndUp) {
  AddPlayer("paplay", "for fd in 3 4 5 6 7 8 9; do eval \"exec $fd>&-\"; done\ntrap '' TERM\nexec /bin/sleep 60");
  const auto begin = std::chrono::steady_clock::now();
  {
    ProcessSound hanging(reactor);
    EXPECT_TRUE(hanging.Play(file));
    for (int turn = 0; turn < 10; ++turn)
      reactor.WaitPending(std::chrono::milliseconds(20));
    EXPECT_TRUE(hanging.IsPlaying());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);  // nobody is left behind
}

TEST_F(ProcessSoundTest, AMachineWithoutSoundIsSilentAndSaysSoOnce) {
  MemoryLogStore logs;
  SystemClock clock;
  ErrorHandling().Attach(logs, clock, "TST");
  EXPECT_FALSE(sound.Play(folder / "missing.wav"));
  EXPECT_FALSE(sound.Play(file));
  EXPECT_FALSE(sound.Play(file));
  ErrorHandling().Detach();
  std::size_t lines = 0;
  for (const auto& [name, text] : logs.files)
    for (std::size_t at = text.find("No sound"); at != std::string::npos; at = text.find("No sound", at + 1))
      ++lines;
  EXPECT_EQ(lines, 1U);
}

}  // namespace
}  // namespace vorlix
