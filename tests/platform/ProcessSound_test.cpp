// Players are small scripts in a PATH of the test's own.
#include "platform/posix/ProcessSound.h"

#include <chrono>
#include <fstream>
#include <sstream>
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
    std::ofstream(folder / name) << "#!/bin/sh\necho \"" + name + "|$1|$2\" >> '" + calls + "'\n" + script + "\n";
    chmod((folder / name).c_str(), 0755);
  }
  void PlayToTheEnd() {
    EXPECT_TRUE(sound.Play(file));
    for (int turn = 0; sound.IsPlaying() && turn < 500; ++turn)
      reactor.WaitPending(std::chrono::milliseconds(20));
    EXPECT_FALSE(sound.IsPlaying());
  }

  TemporaryFolder folder;
  TemporaryVariable path{"PATH", folder.Path()};
  PollReactor reactor;
  ProcessSound sound{reactor};
  const std::string file = folder / "ring $x.wav", calls = folder / "calls";
};

TEST_F(ProcessSoundTest, TheFirstPlayerThatCanIsKept) {
  AddPlayer("pw-play", "exit 1");
  AddPlayer("aplay", "exit 0");
  PlayToTheEnd();
  PlayToTheEnd();
  std::ostringstream noted;
  noted << std::ifstream(calls).rdbuf();
  EXPECT_EQ(noted.str(), "pw-play|" + file + "|\naplay|-q|" + file + "\naplay|-q|" + file + "\n");
}

TEST_F(ProcessSoundTest, NothingWaitsForASoundAndItCanBeStopped) {
  AddPlayer("paplay", "exec /bin/sleep 60");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_TRUE(sound.Play(file));
  EXPECT_TRUE(sound.Play(file));  // in place of the first
  EXPECT_TRUE(sound.IsPlaying());
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
  for (const std::string& played : {folder / "missing.wav", file, file})
    EXPECT_FALSE(sound.Play(played));
  ErrorHandling().Detach();
  std::string text;
  for (const auto& [name, content] : logs.files)
    text += content;
  EXPECT_TRUE(text.find("No sound") != std::string::npos && text.find("No sound") == text.rfind("No sound")) << text;
}

}  // namespace
}  // namespace vorlix
