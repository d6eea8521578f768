// Where a window stood when it was closed last, in the members of the settings. A place on a monitor that is gone is
// not used. Where windows cannot place themselves, only the size comes back.
#pragma once

#include <QWidget>

namespace vorlix {

struct DialogPlace {
  int& left;
  int& top;
  int& width;  // 0: never stored
  int& height;

  void Restore(QWidget& window) const;
  // Does nothing for a window that is not open.
  void Keep(const QWidget* window) const;
};

}  // namespace vorlix
