// Pictures beside a number: flags of plain stripes and crosses, and labels with the names of mobile networks.
#pragma once

#include <QString>

namespace pictures {

// The flags that can be drawn from stripes, crosses and discs; the others are left out.
void MakeFlags(const QString& folder);
// Each a word on a plain ground, nobody's sign.
void MakeNetworkLabels(const QString& folder);

}  // namespace pictures
