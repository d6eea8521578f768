// What a forked child does first, before it is a program of its own: nothing of the parent may reach it or be kept
// alive by it.
#pragma once

namespace vorlix {

// Blocks no signal and gives those back their meaning that this program ignores.
void RestoreSignals();

// Closes every descriptor from 3 up when the child becomes another program.
void CloseDescriptorsOnExec();

// Closes every descriptor from 3 up at once, but for one.
void CloseDescriptorsBut(int kept);

}  // namespace vorlix
