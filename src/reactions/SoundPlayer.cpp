#include "reactions/SoundPlayer.h"

#include <algorithm>

#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {

void SoundPlayer::Play(const std::string& file) {
  Trapped(
      "SoundPlayer.Play",
      [&] {
        if (!file.empty()) ports_.device.Play(ports_.fullPath(file));
      },
      file);
}

bool SoundPlayer::PlayPersonal(const std::string& number) {
  return Trapped(
      "SoundPlayer.PlayPersonal",
      [&] {
        const std::string file = PersonalFile(number);
        if (file.empty()) return false;
        const std::pair call(number, RangAt(number));
        // A sound that is longer than the repeat is not cut off by the next.
        if (played_ == call) return ports_.device.IsPlaying();
        played_ = call;
        return ports_.device.Play(file);
      },
      number);
}

bool SoundPlayer::IsVip(const std::string& number) {
  return Trapped(
      "SoundPlayer.IsVip", [&] { return ports_.isKnownPerson(number); }, number);
}

// The number comes from the line: only one of digits names a file.
std::string SoundPlayer::PersonalFile(const std::string& number) const {
  if (!IsDigits(number)) return {};
  std::string file = ports_.folders.GetMainPath(R"(\data\callersound\)" + number + ".wav");
  return ports_.files.Stat(file).IsFile() ? file : std::string();
}

DateTime SoundPlayer::RangAt(const std::string& number) const {
  DateTime rang;
  for (const auto& entry : ports_.state.ActiveCallList.GetCollection()) {
    const auto call = ports_.state.ActiveCallList.ItemByKeyAs<oDataCall>(entry.key);
    if (call && call->DataNumber() == number) rang = call->CallDateTime;
  }
  return rang;
}

}  // namespace vorlix
