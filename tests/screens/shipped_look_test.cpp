// What is shipped to be seen and heard: it is there under the names that the program asks for, and it is usable.
#include <cmath>
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

double Luminance(Rgb color) {
  double sum = 0;
  for (const auto& [shift, weight] : {std::pair(16, 0.2126), std::pair(8, 0.7152), std::pair(0, 0.0722)})
    sum += weight * std::pow((color >> shift & 0xFF) / 255.0, 2.2);
  return sum;
}

double Contrast(Rgb a, Rgb b) {
  const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

TEST_F(ShippedLook, EverySkinIsWholeAndItsTextStandsOut) {
  const auto names = disk.List(base + "designs");
  std::map<std::string, bool> classic;
  for (const std::string& name : names) {
    if (!disk.Stat(base + "designs/" + name).IsFolder()) continue;
    Skin skin;
    EXPECT_TRUE(SkinLoader({disk, folders, room.messages}).SkinData(name, skin, true)) << name;
    classic[name] = skin.isClassic;
    for (const auto& [picture, path] : skin.pictures)
      EXPECT_TRUE(IsPicture(path, Bytes(path))) << path;
    EXPECT_GE(Contrast(skin.colorText, skin.colorTextBack), 7) << name;
    EXPECT_GE(Contrast(skin.colorText, skin.colorMainBack), 7) << name;
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
    ASSERT_GT(bytes.size(), 44U) << setting;
    EXPECT_EQ(bytes.substr(0, 4) + bytes.substr(8, 8), "RIFFWAVEfmt ");
    EXPECT_EQ(bytes.substr(20, 8), std::string("\1\0\1\0\x22\x56\0\0", 8)) << "one channel at 22,050";
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
