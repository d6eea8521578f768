// Sound through the player program of the machine: the first of pw-play, paplay and aplay that is there and can. A
// machine without any is silent and says so once in the log.
#pragma once

#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

#include "platform/Reactor.h"
#include "platform/SoundDevice.h"
#include "platform/posix/Descriptor.h"

namespace vorlix {

class ProcessSound : public SoundDevice {
 public:
  // The reactor must outlive the object. Players are looked for in PATH.
  explicit ProcessSound(Reactor& reactor);
  // Ends what plays, and waits half a second at most until it is gone.
  ~ProcessSound() override;
  ProcessSound(const ProcessSound&) = delete;
  ProcessSound& operator=(const ProcessSound&) = delete;

  bool Play(const std::string& file) override;
  void Stop() override;
  bool IsPlaying() override { return child_ > 0; }

 private:
  bool StartNext();
  bool Start(std::size_t player);
  void Ended();
  void LetGo();
  void Reap();
  void Finish(int status);
  void Silence();
  void LogOnce(const std::string& text);

  Reactor& reactor_;
  std::string file_;               // in the system's form
  std::size_t preferred_ = 0;      // the player that worked last
  std::vector<std::size_t> left_;  // the players that this file was not yet tried with
  std::size_t current_ = 0;
  pid_t child_ = 0;
  Descriptor end_;  // reads end-of-file when the player ends
  std::unique_ptr<Watch> watch_;
  std::unique_ptr<Timer> reaper_;  // while there is somebody who has let go of the pipe, or was killed, to bury
  int looks_ = 0;                  // of the reaper, for a player that lives on without its pipe
  std::vector<pid_t> killed_;
  bool logged_ = false;
};

}  // namespace vorlix
