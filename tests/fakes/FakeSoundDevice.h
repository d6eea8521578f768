// A sound device with memory: plays nothing, keeps what it should have played.
#pragma once

#include <string>
#include <vector>

#include "platform/SoundDevice.h"

namespace vorlix {

class FakeSoundDevice : public SoundDevice {
 public:
  std::vector<std::string> played;
  bool isPlaying = false;

  bool Play(const std::string& file) override {
    played.push_back(file);
    return isPlaying = true;
  }
  void Stop() override { isPlaying = false; }
  bool IsPlaying() override { return isPlaying; }
};

}  // namespace vorlix
