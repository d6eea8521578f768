#include "services/modLanguage.h"

#include <gtest/gtest.h>

#include "fakes/AttachedLog.h"
#include "fakes/FakeClock.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

class modLanguageTest : public testing::Test {
 protected:
  ~modLanguageTest() override {
    modLanguage::SetDevelopmentRun(false);
    Init("de", std::nullopt);
  }
  void Init(std::string_view code, const std::optional<std::string>& text) {
    modLanguage::LanguageInit(code, [&](std::string_view path) {
      asked = path;
      return text;
    });
  }
  std::string asked;
};

TEST_F(modLanguageTest, WithoutAFileEveryTextIsItsDefault) {
  Init("xx", std::nullopt);
  EXPECT_EQ(asked, R"(\base\language_xx.ini)");
  EXPECT_TRUE(modLanguage::IsFileMissing());
  EXPECT_EQ(LoadLangKey("CountryID", "de"), "de");
  EXPECT_EQ(LoadLangKey("x", "a<TAB>b<CR>c"), "a\tb\r\nc");
}

TEST_F(modLanguageTest, TheFileReplacesWhatItHolds) {
  Init("en", "[Data]\r\nButton_OK=Fine<CR>indeed\r\nEmpty=\r\n[Other]\r\nButton_No=wrong\r\n");
  EXPECT_EQ(LoadLangKey("button_ok", "OK"), "Fine\r\nindeed");
  EXPECT_EQ(LoadLangKey("Empty", "Vorgabe"), "Vorgabe");
  EXPECT_EQ(LoadLangKey("Button_No", "Nein"), "Nein");
  Init("", "[Data]\r\nButton_OK=2\r\n");
  EXPECT_EQ(modLanguage::CurrentCode(), "en");
}

TEST_F(modLanguageTest, AFileThatCannotBeReadLeavesNoTextsOfTheFormerLanguage) {
  Init("en", "[Data]\r\nButton_No=No\r\n");
  modLanguage::LanguageInit("fr", [](std::string_view) -> std::optional<std::string> { throw Fault(5, "read"); });
  EXPECT_EQ(LoadLangKey("Button_No", "Nein"), "Nein");
}

TEST_F(modLanguageTest, ADevelopmentRunShowsWhatIsTranslated) {
  const FakeClock clock;
  const AttachedLog log(clock);
  Init("en", "[Data]\r\nA=b\r\nLanguage=english\r\n");
  modLanguage::SetDevelopmentRun(true);
  EXPECT_EQ(LoadLangKey("A", "x") + LoadLangKey("B", "x"), "[b]?x?");
  EXPECT_EQ(LoadLangKey("Language", "deutsch") + LoadLangKey("CountryID", "de"), "englishde");
  EXPECT_EQ(log.Language(), "PRG v3.0 | B | x\n");
}

}  // namespace
}  // namespace vorlix
