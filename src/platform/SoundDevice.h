// What plays sound files. One sound at a time; nothing waits for it.
#pragma once

#include <string>

namespace vorlix {

class SoundDevice {
 public:
  virtual ~SoundDevice() = default;  // silences it
  // Starts a file in place of the one that plays; a real path that begins with "/". False when it cannot be begun: no
  // such file, or a machine without sound.
  virtual bool Play(const std::string& file) = 0;
  virtual void Stop() = 0;
  virtual bool IsPlaying() = 0;
};

}  // namespace vorlix
