#include "desktop/dialogs/AboutBox.h"

#include <QLabel>

#include <gtest/gtest.h>

#include "fakes/DialogRoom.h"

namespace vorlix {
namespace {

TEST(AboutBoxTest, ShowsItsText) {
  const DialogRoom room;
  AboutBox about;
  about.Open("Vorlix 3\r\nzwei");
  EXPECT_TRUE(DialogRoom::Top()->findChild<QLabel*>("qt_msgbox_label")->text().contains("3\nzwei"));
  DialogRoom::Press("OK");
  EXPECT_FALSE(DialogRoom::Top());
}

}  // namespace
}  // namespace vorlix
