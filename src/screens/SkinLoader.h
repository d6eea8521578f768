// Loads a skin: the folder NAME below "\data\designs\", the user's own, or else below "\base\designs\" that holds the
// file "skin_NAME.ini", with the pictures beside it. A broken skin never stops the start: the neutral look serves.
#pragma once

#include <string>
#include <string_view>

#include "data/Folders.h"
#include "data/clsFiles.h"
#include "screens/Skin.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

// Six hexadecimal digits, "RRGGBB"; any other text gives the fallback.
Rgb HexToLong(std::string_view digits, Rgb fallback);

class SkinLoader {
 public:
  struct Ports {
    const FileStore& files;
    const Folders& folders;
    modAll_MsgBox& messages;
  };

  // All ports must outlive the object.
  explicit SkinLoader(Ports ports) : ports_(ports) {}

  // With `report` a box lists all that is missing; without, the fault has its fallback and a line of the error log.
  // False for the neutral look.
  bool SkinData(const std::string& name, Skin& skin, bool report);

 private:
  std::string FindFile(const std::string& name) const;
  std::string Load(const std::string& name, Skin& skin) const;
  void Tell(const std::string& name, const std::string& fault, bool report);

  Ports ports_;
};

}  // namespace vorlix
