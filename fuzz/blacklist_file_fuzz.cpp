// The file of refused numbers, after any hand has edited it.
#include "check.h"
#include "fakes/DataRoom.h"
#include "reactions/Blacklist.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorlix;
  DataRoom room;
  Blacklist list{{room.files, room.folders, room.messages}};
  room.store.AddFile(list.Path(), std::string(fuzz::Text(data, size)));
  list.Load();
  for (const char* number : {"03012345", "0171", "*55", ""})
    list.Find(number, "1234");
  list.Replace(list.Items());
  const std::string once = room.store.Content(list.Path());
  list.Load();
  list.Replace(list.Items());
  fuzz::Check(room.store.Content(list.Path()) == once, "what was written is read as it was");
  return 0;
}
