#include "desktop/DisplayLoss.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QString>
#include <QThread>
#include <algorithm>
#include <memory>
#include <utility>

#include "desktop/DisplayGestures.h"

namespace vorlix {
namespace {

// What its two platforms begin that line with.
constexpr const char* kLastWords[] = {"The X11 connection broke", "The Wayland connection broke",
                                      "The Wayland connection experienced a fatal error"};

constexpr int kMostPatience = 3000;  // milliseconds

QtMessageHandler former = nullptr;
std::function<void()> whatToDo;

void TellOfLoss() {
  PassOn(std::exchange(whatToDo, {}));
}

// Under Wayland a thread of the toolkit notices it, and ends the process when it comes back from here.
void TellInProgramsThread(QCoreApplication& application) {
  const auto told = std::make_shared<QSemaphore>();
  QMetaObject::invokeMethod(
      &application,
      [told] {
        TellOfLoss();
        told->release();
      },
      Qt::QueuedConnection);
  told->tryAcquire(1, kMostPatience);
}

void Hear(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  former(type, context, text);
  const bool isEnd =
      std::ranges::any_of(kLastWords, [&](const char* words) { return text.startsWith(QLatin1String(words)); });
  QCoreApplication* application = QCoreApplication::instance();
  if (!isEnd || application == nullptr) return;
  if (QThread::currentThread() == application->thread()) {
    TellOfLoss();
  } else {
    TellInProgramsThread(*application);
  }
}

}  // namespace

DisplayLoss::DisplayLoss(std::function<void()> lost) {
  whatToDo = std::move(lost);
  former = qInstallMessageHandler(Hear);
}

DisplayLoss::~DisplayLoss() {
  qInstallMessageHandler(former);
  whatToDo = {};
}

}  // namespace vorlix
