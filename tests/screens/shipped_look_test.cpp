// What is shipped to be seen and heard: it is there under the names that the program asks for, and it is usable.
#include <filesystem>
#include <regex>

#include <gtest/gtest.h>

#include "data/Settings.h"
#include "fakes/DataRoom.h"
#include "platform/posix/PosixFileStore.h"
#include "screens/SkinLoader.h"
#include "services/text.h"

namespace vorlix {
namespace {

namespace fs = std::filesystem;

class ShippedLook : public testing::Test {
 protected:
  std::string Bytes(const std::string& path) const {
    std::string bytes;
    EXPECT_TRUE(disk.Read(path, bytes)) << path;
    return bytes;
  }
  std::vector<std::string> Matches(const std::string& folder, const std::string& pattern) const {
    std::vector<std::string> found;
    for (const std::string& name : disk.List(base + folder)) {
      if (std::regex_match(name, std::regex(pattern))) found.push_back(name);
    }
    return found;
  }

  PosixFileStore disk;
  DataRoom room;
  const std::string root = fs::canonical(fs::path(VORLIX_TEST_DATA) / ".." / "..").string();
  const std::string base = root + "/base/";
  Folders folders{disk, {.programFolder = root, .dataHome = {}, .home = {}, .chosenFolder = "/nowhere"}};
};

bool IsPicture(const std::string& path, const std::string& bytes) {
  return path.ends_with(".png") ? bytes.starts_with("\x89PNG\r\n") : bytes.starts_with("\xFF\xD8\xFF");
}

TEST_F(ShippedLook, EverySkinIsWhole) {
  std::map<std::string, bool> classic;
  for (const std::string& name : disk.List(base + "designs")) {
    if (!disk.Stat(base + "designs/" + name).IsFolder()) continue;
    Skin skin;
    EXPECT_TRUE(SkinLoader({disk, folders, room.messages}).SkinData(name, skin, true)) << name;
    classic[name] = skin.isClassic;
    for (const auto& [picture, path] : skin.pictures)
      EXPECT_TRUE(IsPicture(path, Bytes(path))) << path;
  }
  EXPECT_TRUE(room.boxes.shown.empty()) << room.boxes.shown.front();
  EXPECT_EQ(classic, (std::map<std::string, bool>{{"Default", false}, {"Klassik", true}}));
}

TEST_F(ShippedLook, EveryStateOfTheTrayHasItsIconInTheSameSizes) {
  const auto sizes = Matches("icons", "tray_idle_\\d+\\.png").size();
  EXPECT_GE(sizes, 4U);
  for (const std::string state : {"line_lost", "ringing", "missed"})
    EXPECT_EQ(Matches("icons", "tray_" + state + "_\\d+\\.png").size(), sizes) << state;
}

TEST_F(ShippedLook, EverySoundOfTheSettingsIsAShortWaveFile) {
  const Settings settings;
  const auto& sound = settings.Sound;
  for (const std::string& setting : {sound.SndCall, sound.SndVipCall, sound.SndBlock, sound.SndAlert}) {
    const std::string bytes = Bytes(root + "/" + Replace(setting, "\\", "/"));
    EXPECT_TRUE(bytes.starts_with("RIFF") && bytes.substr(8, 8) == "WAVEfmt ") << setting;
    // A ring that is repeated every three seconds must be over by then.
    EXPECT_LT(bytes.size(), 44U + 3 * 22050 * 2) << setting;
  }
}

TEST_F(ShippedLook, EveryNetworkInTheTablesHasItsLabel) {
  const std::regex picture("=([^\\r\\n=]+\\.png)");
  std::size_t count = 0;
  for (const std::string& name : Matches("provider", "provider_\\d+\\.ini")) {
    const std::string table = Bytes(base + "provider/" + name);
    for (std::sregex_iterator row(table.begin(), table.end(), picture), end; row != end; ++row, ++count) {
      const std::string path = base + "provider/images/" + (*row)[1].str();
      EXPECT_TRUE(IsPicture(path, Bytes(path))) << path;
    }
  }
  EXPECT_GT(count, 0U);
}

}  // namespace
}  // namespace vorlix
