#include "screens/ErrorMessage.h"

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"
#include "services/text.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct ErrorMessageTest : testing::Test, protected DataRoom {
  Settings settings;
  modSettings module{{ini, store, folders, clock, messages, {}}, settings};
  std::vector<std::string> started;
  bool canStart = true;
  ErrorMessage dialog{{files, folders, settings, module, messages,
                       [this](const std::string& file, const std::string& argument) {
                         started.push_back(file + " " + argument);
                         return canStart;
                       },
                       [] { return std::string("maker/2.0"); }}};
};

TEST_F(ErrorMessageTest, AsksOnlyWhenWantedWithEnoughErrorsAndAReportProgram) {
  store.AddFile("/vorlix/log/error.log", Replace(std::string(30, 'x'), "x", "x\r\n"));
  dialog.Check();  // no report program
  store.AddFile("/program/errorreport", "program");
  settings.General.ErrorCount = 31;
  dialog.Check();
  settings.General.ErrorCount = 24;
  settings.ErrorMessage.Show = false;
  dialog.Check();
  EXPECT_TRUE(boxes.shown.empty());
  settings.ErrorMessage.Show = true;
  dialog.Check();
  ASSERT_EQ(boxes.shown.size(), 1u);
  EXPECT_THAT(boxes.shown[0], HasSubstr(" 20 "));
  EXPECT_THAT(boxes.shown[0], HasSubstr("[ErrorMessage] Show=0, /vorlix/data/Vorlix.ini"));
  EXPECT_EQ(ini.GetSettLng("General", "ErrorCount", 0), 10);
  EXPECT_TRUE(started.empty());
  boxes.answer = MsgBoxAnswer::kYes;
  dialog.Check();
  EXPECT_THAT(started, ElementsAre("/program/errorreport mode=1|user=|mail=|ver=3.0|hw=(CAPI:maker/2.0)"));
  canStart = false;
  dialog.Check();
  EXPECT_THAT(boxes.shown.back(), HasSubstr("Datei nicht gefunden!\r\n/program/errorreport"));
}

}  // namespace
}  // namespace vorlix
