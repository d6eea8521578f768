#include "platform/posix/loaded_modules.h"

#include <algorithm>
#include <unistd.h>

#include <gtest/gtest.h>

namespace vorlix {
namespace {

using Names = std::vector<std::string>;

TEST(LoadedModulesTest, TakesTheNamesOfTheFilesOnceAndInLowerCase) {
  const std::string_view at = "7f00-7f01 r-xp 00000000 08:01 4711    ";
  const std::pair<std::string, Names> table[] = {
      {"", {}},
      {"\n\n", {}},
      {"/short", {}},
      {"7f00-7f01 rw-p 00000000 00:00 0 \n7f01-7f02 rw-p 00000000 00:00 0", {}},
      {std::string(at) + "[heap]\n" + std::string(at) + "[anon: /x/d3d9.dll]\n" + std::string(at) + "/folder/\n", {}},
      {std::string(at) + "/opt/A Game/D3D9.dll\n" + std::string(at) + "/lib/libGL.so.1\n" + std::string(at) +
           "/opt/A Game/D3D9.dll",
       {"d3d9.dll", "libgl.so.1"}},
      {std::string(at) + "/tmp/OpenGL32.DLL (deleted)\n", {"opengl32.dll"}},
      {std::string(at) + "/x/\xC3\x84"
                         "b\xFF\\012.so\n",
       {"\xE4"
        "b\xFF\\012.so"}},
  };
  for (const auto& [maps, names] : table)
    EXPECT_EQ(ModulesInMaps(maps), names) << maps;
}

TEST(LoadedModulesTest, KnowsThisProgramAndNothingOfOneThatIsNotThere) {
  const Names own = LoadedModules(static_cast<std::uint32_t>(getpid()));
  EXPECT_TRUE(std::ranges::count(own, "platform_tests") == 1 && std::ranges::is_sorted(own));
  EXPECT_EQ(LoadedModules(0), Names());
  EXPECT_EQ(LoadedModules(0xFFFFFFFF), Names());
}

}  // namespace
}  // namespace vorlix
