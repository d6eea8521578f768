// The folders that the program needs: those shipped with it are looked for, those of the user are made.
#pragma once

#include "data/Folders.h"
#include "platform/FileStore.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

// Looks for the seven folders below "\base\"; if one is missing the user is told and nothing is made. Otherwise makes
// the folders of the data, and tells which could not be made. False when the data folder itself is one of these.
bool CheckDirectories(FileStore& files, const Folders& folders, modAll_MsgBox& messages);

}  // namespace vorlix
