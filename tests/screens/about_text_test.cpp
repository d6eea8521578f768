#include "screens/about_text.h"

#include <gmock/gmock.h>

namespace vorlix {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(AboutTextTest, TellsTheLinesTheFolderAndTheLicences) {
  const AboutFacts facts{"Vorlix 3.0.0", "/home/x/Vorlix", {.CAPI = {}, .AVM = {true, false}, .NCID = {}}, "Qt 6.4.2"};
  for (const char* part : {"Vorlix 3.0.0\r\n", "AVM Fehler\r\n", "/home/x/Vorlix\r\n", "LGPL", "Apache", "6.4.2"}) {
    EXPECT_THAT(AboutText(facts), HasSubstr(part));
  }
  EXPECT_THAT(AboutText({}), Not(HasSubstr("LGPL")));
}

}  // namespace
}  // namespace vorlix
