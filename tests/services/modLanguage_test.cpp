#include "services/modLanguage.h"

#include <gtest/gtest.h>

#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

class modLanguageTest : public testing::Test {
 protected:
  ~modLanguageTest() override { Init("de", std::nullopt); }
  void Init(std::string_view code, const std::optional<std::string>& text) {
    modLanguage::LanguageInit(code, [&](std::string_view path) {
      asked = path;
      return text;
    });
  }
  std::string asked;
};

TEST_F(modLanguageTest, TheFileReplacesWhatItHoldsAndLeavesNoTextsToTheNext) {
  Init("en", "[Data]\r\nButton_OK=Fine<CR>indeed\r\nEmpty=\r\n[Other]\r\nButton_No=wrong\r\n");
  EXPECT_EQ(asked, R"(\base\language_en.ini)");
  EXPECT_EQ(LoadLangKey("button_ok", "OK"), "Fine\r\nindeed");
  EXPECT_EQ(LoadLangKey("Empty", "Vorgabe") + LoadLangKey("Button_No", "a<TAB>b<CR>c"), "Vorgabea\tb\r\nc");
  modLanguage::LanguageInit("fr", [](std::string_view) -> std::optional<std::string> { throw Fault(5, "read"); });
  EXPECT_EQ(LoadLangKey("Button_OK", "OK"), "OK");
  Init("xx", std::nullopt);
  EXPECT_TRUE(modLanguage::IsFileMissing());
}

}  // namespace
}  // namespace vorlix
