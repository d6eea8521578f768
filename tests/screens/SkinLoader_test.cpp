#include "screens/SkinLoader.h"

#include <gmock/gmock.h>

#include "fakes/DisplayRoom.h"
#include "fakes/MemoryFileStore.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

const std::string kOwn = "/data/data/designs/";
const std::string kShipped = "/program/base/designs/";
const std::string kPicture = "GIF89a";

class SkinLoaderTest : public testing::Test {
 protected:
  SkinLoaderTest() { store.AddFolder("/program"); }

  void AddSkin(const std::string& place, const std::string& name, const std::string& settings, bool classic = false) {
    const std::string folder = place + name + "/";
    store.AddFile(folder + "skin_" + name + ".ini", "[skin]\r\n" + settings);
    for (const char* picture : {"display_grip.jpg", "display_grip_color.gif", "nobody.jpg", "button_stop.png",
                                "button_bell.png", "button_eraser.png"})
      store.AddFile(folder + picture, kPicture);
    if (classic) return store.AddFile(folder + "classic_background.gif", kPicture);
    for (const char* picture : {"display_background", "background_top", "background_mid", "background_bot",
                                "display_glass", "display_glass_color", "newslist_background", "vcard_background"})
      store.AddFile(folder + picture + ".gif", kPicture);
  }
  bool Load(const std::string& name, bool report = false) { return loader.SkinData(name, skin, report); }

  MemoryFileStore store;
  DisplaySurroundings world;
  modAll_MsgBox messages{world};
  Folders folders{store, {.programFolder = "/program", .dataHome = "", .home = "", .chosenFolder = "/data"}};
  SkinLoader loader{{store, folders, messages}};
  Skin skin;
};

TEST_F(SkinLoaderTest, TheUsersOwnFolderComesFirst) {
  AddSkin(kShipped, "Default", "colorText=112233\r\ncolorMainBack=oops");
  EXPECT_TRUE(Load("Default"));
  EXPECT_EQ(skin.Picture("nobody"), kShipped + "Default/nobody.jpg");
  EXPECT_EQ(skin.colorText, 0x112233U);
  EXPECT_EQ(skin.colorMainBack, 0x636563U);
  AddSkin(kOwn, "Default", "colorText=aabbcc");
  EXPECT_TRUE(Load("dEFAULT"));
  EXPECT_EQ(skin.Picture("nobody"), kOwn + "Default/nobody.jpg");
  EXPECT_EQ(skin.colorText, 0xAABBCCU);
}

TEST_F(SkinLoaderTest, TheVeryNameGoesBeforeOneOfAnotherCaseAndEachKindHasItsPictures) {
  AddSkin(kOwn, "Blue", "colorText=000001");
  AddSkin(kOwn, "blue", "colorText=000002");
  store.AddFile(kOwn + "Red/SKIN_red.INI", "[skin]\r\nmode=classic\r\n");
  EXPECT_TRUE(Load("blue"));
  EXPECT_EQ(skin.colorText, 2U);
  EXPECT_FALSE(Load("red", true));
  EXPECT_THAT(world.tape.back(), HasSubstr("classic_background"));  // found, and its pictures are asked for
  AddSkin(kOwn, "Klassik", "mode=Classic", true);
  EXPECT_TRUE(Load("klassik") && skin.isClassic);
}

TEST_F(SkinLoaderTest, AFirstKindOfPictureIsTakenBeforeTheSecond) {
  AddSkin(kOwn, "Mine", "");
  store.AddFile(kOwn + "Mine/display_glass.jpg", "no picture");
  EXPECT_TRUE(Load("Mine"));
  EXPECT_EQ(skin.Picture("display_glass"), kOwn + "Mine/display_glass.gif");
  store.AddFile(kOwn + "Mine/display_glass.jpg", "\xFF\xD8\xFF\xE0");
  EXPECT_TRUE(Load("Mine"));
  EXPECT_EQ(skin.Picture("display_glass"), kOwn + "Mine/display_glass.jpg");
}

TEST_F(SkinLoaderTest, WhatIsMissingIsToldWholeAndTheNeutralLookServes) {
  AddSkin(kOwn, "Mine", "colorText=112233");
  ASSERT_TRUE(store.Remove(kOwn + "Mine/button_bell.png"));
  store.AddFile(kOwn + "Mine/nobody.jpg", "");
  EXPECT_FALSE(Load("Mine"));
  EXPECT_TRUE(world.tape.empty());
  EXPECT_TRUE(skin.isNeutral && skin.pictures.empty());
  EXPECT_EQ(skin.colorTextBack, 0x808080U);
  EXPECT_FALSE(Load("Mine", true));
  EXPECT_EQ(world.tape.back(), "box nobody GIF/JPG fehlt!\r\nbutton_bell PNG fehlt!\r\n");
}

TEST_F(SkinLoaderTest, ANameThatIsNoSkinIsAFault) {
  AddSkin(kShipped, "Default", "");
  store.AddFile("/program/base/skin_...ini", "[skin]");
  for (const char* name : {"", "Other", "..", "../designs/Default", "a\\b"}) {
    EXPECT_FALSE(Load(name, true)) << name;
    EXPECT_EQ(ToUtf8(world.tape.back()), "box Die Skins sind unvollständig!\r\n");
  }
}

TEST_F(SkinLoaderTest, ColoursHaveSixDigits) {
  for (const char* text : {"12345", "1234567", "12345g"})
    EXPECT_EQ(HexToLong(text, 7), 7U) << text;
  EXPECT_EQ(HexToLong("fF8000", 7), 0xFF8000U);
}

}  // namespace
}  // namespace vorlix
