#include "screens/LogoFiles.h"

#include <gtest/gtest.h>

#include "fakes/MemoryFileStore.h"

namespace vorlix {
namespace {

TEST(LogoFilesTest, ACallersPictureLiesInItsFolderAndNowhereElse) {
  MemoryFileStore store;
  const Folders folders{store, {.programFolder = "/program", .dataHome = "", .home = "", .chosenFolder = "/data"}};
  store.AddFile("/data/data/callerpics/meier.jpg", "x");
  store.AddFile("/data/secret.jpg", "x");
  LogoFiles logos({store, folders, [](const std::string& number) { return number == "0171" ? "/net.png" : ""; },
                   [](const std::string&) { return "/flag.png"; }});
  const auto picture = [&](const std::string& image) {
    oDataCall call;
    call.MutableCard().BookVCsImage = image;
    return logos.BookPicture(call);
  };
  EXPECT_EQ(picture("meier.jpg"), "/data/data/callerpics/meier.jpg");
  for (const char* image : {"", "gone.jpg", "../../secret.jpg", R"(..\..\secret.jpg)"}) {
    EXPECT_EQ(picture(image), "");
  }
  EXPECT_EQ(logos.NumberPicture("0171"), "/net.png");
  EXPECT_EQ(logos.NumberPicture("0044"), "/flag.png");
}

}  // namespace
}  // namespace vorlix
