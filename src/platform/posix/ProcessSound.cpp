#include "platform/posix/ProcessSound.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "platform/posix/ChildSetup.h"
#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {

using namespace std::chrono_literals;

namespace {

struct Player {
  const char* program;
  const char* option;  // in front of the file; nullptr for none
};

constexpr std::array<Player, 3> kPlayers{{{"pw-play", nullptr}, {"paplay", nullptr}, {"aplay", "-q"}}};

std::string FindProgram(const std::string& name) {
  const char* path = std::getenv("PATH");
  for (const std::string& folder : Split(path == nullptr ? "/usr/bin" : path, ":")) {
    std::string file = folder + "/" + name;
    if (folder.starts_with('/') && access(file.c_str(), X_OK) == 0) return file;
  }
  return {};
}

// The player keeps `alive` open as long as it runs, and nothing else of ours.
[[noreturn]] void BecomePlayer(int alive, char* const* arguments) {
  const int nothing = open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    dup2(nothing, stream);
  CloseDescriptorsOnExec();
  fcntl(alive, F_SETFD, 0);
  RestoreSignals();
  execv(arguments[0], arguments);
  _exit(127);
}

constexpr std::chrono::milliseconds kLook{50}, kMostFarewell{500};
constexpr int kMostLooks = 100;

bool IsGone(pid_t player, int* status) {
  return waitpid(player, status, WNOHANG) != 0;
}

}  // namespace

ProcessSound::ProcessSound(Reactor& reactor)
    : reactor_(reactor),
      reaper_(reactor.MakeTimer(kLook, [this] { Trapped("ProcessSound_Reap", [this] { Reap(); }); })) {}

ProcessSound::~ProcessSound() {
  Silence();
  for (auto waited = 0ms; !killed_.empty() && waited < kMostFarewell; waited += 1ms) {
    std::erase_if(killed_, [](pid_t player) { return IsGone(player, nullptr); });
    if (!killed_.empty()) std::this_thread::sleep_for(1ms);
  }
}

bool ProcessSound::Play(const std::string& file) {
  return Trapped(
      "ProcessSound_Play",
      [&] {
        Silence();
        file_ = SystemText(file);
        if (access(file_.c_str(), R_OK) != 0) return false;
        left_ = {preferred_};
        for (std::size_t player = 0; player < kPlayers.size(); ++player) {
          if (player != preferred_) left_.push_back(player);
        }
        return StartNext();
      },
      file);
}

bool ProcessSound::StartNext() {
  while (!left_.empty()) {
    const std::size_t player = left_.front();
    left_.erase(left_.begin());
    if (Start(player)) return true;
  }
  LogOnce("No sound: none of pw-play, paplay and aplay could play a file");
  return false;
}

bool ProcessSound::Start(std::size_t player) {
  std::string program = FindProgram(kPlayers[player].program);
  int ends[2];
  if (program.empty() || pipe2(ends, O_CLOEXEC) != 0) return false;
  end_ = Descriptor(ends[0]);
  const Descriptor alive(ends[1]);
  std::string option = kPlayers[player].option == nullptr ? "" : kPlayers[player].option;
  char* const arguments[] = {program.data(), option.empty() ? file_.data() : option.data(),
                             option.empty() ? nullptr : file_.data(), nullptr};
  child_ = fork();
  if (child_ == 0) BecomePlayer(alive.Get(), arguments);
  if (child_ < 0) return false;
  current_ = player;
  watch_ = reactor_.WatchDescriptor(end_.Get(), [this](Reactor::Ready) { Ended(); });
  return true;
}

// The pipe is closed a moment before the player can be waited for, and one that hangs never can.
void ProcessSound::Ended() {
  Trapped("ProcessSound_Ended", [&] {
    LetGo();
    looks_ = 0;
    Reap();
  });
}

void ProcessSound::LetGo() {
  watch_.reset();
  end_.Close();
}

void ProcessSound::Reap() {
  std::erase_if(killed_, [](pid_t player) { return IsGone(player, nullptr); });
  int status = 0;
  if (child_ > 0 && watch_ == nullptr && IsGone(child_, &status)) Finish(status);
  const bool isLingering = child_ > 0 && watch_ == nullptr;
  if (isLingering && ++looks_ > kMostLooks) Silence();
  reaper_->SetEnabled(isLingering || !killed_.empty());
}

// A player that has failed, as one without its sound server does, leaves the file to the next.
void ProcessSound::Finish(int status) {
  child_ = 0;
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
    preferred_ = current_;
  } else {
    StartNext();
  }
}

void ProcessSound::Stop() {
  Trapped("ProcessSound_Stop", [&] { Silence(); });
}

void ProcessSound::Silence() {
  if (child_ <= 0) return;
  kill(child_, SIGKILL);
  killed_.push_back(std::exchange(child_, 0));
  LetGo();
  reaper_->SetEnabled(true);
}

void ProcessSound::LogOnce(const std::string& text) {
  if (!std::exchange(logged_, true)) ErrorHandling().LogDebug_Temp(text);
}

}  // namespace vorlix
