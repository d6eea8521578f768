#include "desktop/text.h"

#include <gtest/gtest.h>

namespace vorlix {
namespace {

TEST(DesktopTextTest, EveryByteSurvivesAndWhatTheCodePageLacksIsAQuestionMark) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
  }
  EXPECT_EQ(FromQString(ToQString(all)), all);
  EXPECT_EQ(ToQString("\x80 \xE4"), QString::fromUtf8("€ ä"));
  EXPECT_EQ(FromQString(QString::fromUtf8("Ł ü")), "? \xFC");
}

}  // namespace
}  // namespace vorlix
