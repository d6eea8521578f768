// The loop on the toolkit's keeps the contract, also inside a loop of the toolkit's own.
#include "desktop/QtReactor.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QWidget>
#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "fakes/OffscreenApplication.h"
#include "platform/ReactorContract.h"
#include "platform/posix/SystemClock.h"

namespace vorlix {
namespace {

struct OffscreenParts {
  OffscreenApplication application;
  SystemClock clock;
};
struct OffscreenReactor : OffscreenParts, QtReactor {
  OffscreenReactor() : QtReactor(OffscreenParts::clock) {}
};

INSTANTIATE_TYPED_TEST_SUITE_P(Desktop, ReactorContract, testing::Types<OffscreenReactor>);

TEST(QtReactorTest, TimersCallsAndWatchesRunInTheLoopOfADialogThatACallbackOpened) {
  OffscreenReactor reactor;
  SocketPair outer, inner;
  QEventLoop dialog;
  std::string log;
  int sleeps = 0;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &dialog,
                   [&] { ++sleeps; });
  auto tick = reactor.MakeTimer(20ms, [&] {
    log += 't';
    reactor.Post([&] { dialog.quit(); });
  });
  const auto answer = reactor.WatchDescriptor(inner.ends[0], [&](Reactor::Ready) {
    log += 'w';
    inner.Drain();
    tick->SetEnabled(true);
  });
  const auto question = reactor.WatchDescriptor(outer.ends[0], [&](Reactor::Ready) {
    inner.Fill();
    dialog.exec();
    outer.Drain();
    reactor.Quit();
  });
  outer.Fill();
  reactor.Run();
  EXPECT_EQ(log, "wt");
  EXPECT_LT(sleeps, 50);  // the watch whose callback waits does not wake the loop again and again
}

TEST(QtReactorTest, QuittingClosesTheDialogThatIsOpenOverTheLoop) {
  OffscreenReactor reactor;
  QWidget window;
  window.setWindowModality(Qt::ApplicationModal);
  reactor.Post([&] {
    window.show();
    reactor.Quit();
  });
  reactor.Run();
  EXPECT_FALSE(window.isVisible());
}

TEST(QtReactorTest, APlainFileIsAlwaysReadyAndADescriptorMayBeWatchedTwice) {
  OffscreenReactor reactor;
  const int null = open("/dev/null", O_RDONLY | O_CLOEXEC);
  SocketPair pair;
  std::string log;
  const auto first = reactor.WatchDescriptor(pair.ends[0], [&](Reactor::Ready) { log += '1'; });
  auto second = reactor.WatchDescriptor(pair.ends[0], [&](Reactor::Ready) { log += '2'; });
  auto file = reactor.WatchDescriptor(null, [&](Reactor::Ready) {
    log += 'f';
    reactor.Quit();
  });
  reactor.Run();
  EXPECT_EQ(log, "f");
  file.reset();
  pair.Fill();
  reactor.RunPending();
  EXPECT_TRUE(log == "f12" || log == "f21") << log;
  log.clear();
  second.reset();
  reactor.RunPending();
  EXPECT_EQ(log, "1");
  close(null);
}

}  // namespace
}  // namespace vorlix
