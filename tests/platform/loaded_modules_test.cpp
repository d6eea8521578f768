#include "platform/posix/loaded_modules.h"

#include <algorithm>
#include <unistd.h>

#include <gtest/gtest.h>

namespace vorlix {
namespace {

using Names = std::vector<std::string>;

TEST(LoadedModulesTest, TakesTheNamesOfTheFilesOnceAndInLowerCase) {
  const std::string at = "7f00-7f01 r-xp 00000000 08:01 4711    ";
  std::string maps = "/short\n\n7f00-7f01 rw-p 00000000 00:00 0 \n";
  for (const char* path : {"[heap]", "[anon: /x/d3d9.dll]", "/folder/", "/opt/A Game/D3D9.dll", "/lib/libGL.so.1",
                           "/opt/A Game/D3D9.dll", "/tmp/OpenGL32.DLL (deleted)", "/x/\xC3\x84.\xFF\\012.so"})
    maps += at + path + "\n";
  EXPECT_EQ(ModulesInMaps(maps), (Names{"d3d9.dll", "libgl.so.1", "opengl32.dll", "\xE4.\xFF\\012.so"}));
  EXPECT_EQ(ModulesInMaps(at + "/no/line end.so"), Names{"line end.so"});
  EXPECT_EQ(ModulesInMaps(""), Names());
}

TEST(LoadedModulesTest, KnowsThisProgramAndNothingOfOneThatIsNotThere) {
  const Names own = LoadedModules(static_cast<std::uint32_t>(getpid()));
  EXPECT_TRUE(std::ranges::count(own, "platform_tests") == 1 && std::ranges::is_sorted(own));
  EXPECT_EQ(LoadedModules(0), Names());
  EXPECT_EQ(LoadedModules(0xFFFFFFFF), Names());
}

}  // namespace
}  // namespace vorlix
