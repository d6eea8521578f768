// The skins as shipped: each a folder with its INI file and its pictures.
#pragma once

#include <QString>

namespace pictures {

// Makes each skin's folder below `designs` and draws all that lies in it.
void MakeSkins(const QString& designs);

}  // namespace pictures
