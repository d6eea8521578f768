#include "desktop/icons.h"

#include <QFile>

#include "desktop/text.h"

namespace vorlix {

QIcon LoadIcon(const std::string& folder, std::string_view name) {
  QIcon icon;
  for (const char* size : {"16", "22", "24", "32", "48", "64", "128", "256"}) {
    const QString file = ToQString(folder + "/" + std::string(name) + "_" + size + ".png");
    if (QFile::exists(file)) icon.addFile(file);
  }
  return icon;
}

}  // namespace vorlix
