// Draws the pictures as shipped: skins, icons, flags and the labels of mobile networks.
//
//   make_skin BASE ICON
//
// BASE is the folder base/ of the sources, ICON the drawing of the program's icon. Needs no screen, but the font
// "DejaVu Sans" for the labels.
#include <QGuiApplication>
#include <cstdio>

#include "flags.h"
#include "icons.h"
#include "skins.h"

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() != 3) {
    std::fputs("usage: make_skin BASE ICON\n", stderr);
    return 2;
  }
  const QString& base = arguments[1];
  pictures::MakeSkins(base + "/designs");
  pictures::MakeIcons(base + "/icons", arguments[2]);
  pictures::MakeFlags(base + "/states/images");
  pictures::MakeNetworkLabels(base + "/provider/images");
  return 0;
}
