// The sounds of calls: which file is played. That a sound repeats, and when none is to be heard at all, is the
// pipeline's to say. Sounds of single callers lie below "\data\callersound\", named after the number.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "core/CallPipeline.h"
#include "data/Folders.h"
#include "platform/SoundDevice.h"

namespace vorlix {

class SoundPlayer : public Sound {
 public:
  struct Ports {
    SoundDevice& device;
    const FileStore& files;
    const Folders& folders;
    const PipelineState& state;
    std::function<std::string(const std::string& path)> fullPath;  // GetFullPathFromRelativePath
    std::function<bool(const std::string& number)> isKnownPerson;
  };

  // All ports must outlive the object.
  explicit SoundPlayer(Ports ports) : ports_(std::move(ports)) {}

  // A file of the settings, as a rule relative to the program folder; an empty one is no sound.
  void Play(const std::string& file) override;
  // Once for each call: when it has ended it counts as none.
  bool PlayPersonal(const std::string& number) override;
  bool IsVip(const std::string& number) override;

  bool HaveCallerSoundFile(const std::string& number) const { return !PersonalFile(number).empty(); }
  void Stop() { ports_.device.Stop(); }

 private:
  std::string PersonalFile(const std::string& number) const;
  DateTime RangAt(const std::string& number) const;

  Ports ports_;
  std::pair<std::string, DateTime> played_;  // number and time of the call whose own sound was played last
};

}  // namespace vorlix
