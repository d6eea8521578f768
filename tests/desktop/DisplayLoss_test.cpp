#include "desktop/DisplayLoss.h"

#include <QCoreApplication>
#include <QDebug>
#include <QThread>
#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include "fakes/OffscreenApplication.h"

namespace vorlix {
namespace {

class DisplayLossTest : public testing::Test, protected OffscreenApplication {};

TEST_F(DisplayLossTest, IsHeardOnceInTheToolkitsLastWordsOnly) {
  for (const char* words : {"The X11 connection broke (error 1). Did the X11 server die?",
                            "The Wayland connection broke. Did the Wayland compositor die?"}) {
    int losses = 0;
    {
      const DisplayLoss loss([&] { ++losses; });
      qWarning("A warning of no weight");
      EXPECT_EQ(losses, 0);
      qWarning("%s", words);
      qWarning("%s", words);
    }
    qWarning("%s", words);
    EXPECT_EQ(losses, 1) << words;
  }
}

// As under Wayland.
TEST_F(DisplayLossTest, IsPassedOnFromAThreadOfTheToolkitBeforeThatGoesOn) {
  QThread* where = nullptr;
  const DisplayLoss loss([&] { where = QThread::currentThread(); });
  std::atomic<bool> goesOn = false;
  const std::jthread toolkit([&] {
    qWarning("The Wayland connection broke. Did the Wayland compositor die?");
    goesOn = true;
  });
  while (!goesOn)
    QCoreApplication::processEvents();
  EXPECT_EQ(where, QThread::currentThread());
}

}  // namespace
}  // namespace vorlix
