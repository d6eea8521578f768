// What a restore of a user backup sets for the rest of the run, so that the end of the program does not overwrite what
// was restored.
#pragma once

namespace vorlix {

struct WriteBlocks {
  bool SettingsWriteBlocked = false;
  bool JournalWriteBlocked = false;
  bool BookWriteBlocked = false;
};

}  // namespace vorlix
