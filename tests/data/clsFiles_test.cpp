#include "data/clsFiles.h"

#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

using testing::HasSubstr;
using Op = MemoryFileStore::Operation;
const std::string kBook = "/vorlix/data/book.txt";
const std::string kBase = "/vorlix/data/book";

class FilesTest : public testing::Test, protected DataRoom {
 protected:
  // The book and its generations, a character for each.
  void Generations(const std::string& contents) {
    for (std::size_t i = 0; i < contents.size(); ++i)
      store.AddFile(i == 0 ? kBook : kBase + kEnds[i - 1], contents.substr(i, 1));
  }
  // The generations that are there, newest first, by what is in them.
  std::string Generations() const {
    std::string all;
    for (const char* end : kEnds)
      all += store.Exists(kBase + end) ? store.Content(kBase + end) : "-";
    return all;
  }

  static constexpr std::array<const char*, 4> kEnds{".bak", ".b01", ".b02", ".b03"};
};

TEST_F(FilesTest, BackupsMoveOnByOneGeneration) {
  for (const auto& [count, after] : {std::pair{0, "1234"}, {1, "0234"}, {4, "0123"}}) {
    Generations("01234");
    files.FileMakeBackup(kBook, count);
    EXPECT_EQ(Generations(), after) << count;
  }
  files.FileDelete(kBook);
  files.FileMakeBackup(kBook, 4);
  EXPECT_EQ(Generations(), "-012");
  store.AddFile("/vorlix/data/Vorlix.ini", "settings");
  files.FileMakeBackup("/vorlix/data/Vorlix.ini", 1);
  EXPECT_EQ(store.Content("/vorlix/data/Vorlix.ini.bak"), "settings");
}

TEST_F(FilesTest, ABackupGoesOnAfterAFailure) {
  Generations("012");
  store.Fail(Op::kRename, EACCES, ".b01");
  int waits = 0;
  files.FileMakeBackup(kBook, 3, [&] { ++waits; });
  EXPECT_EQ(Generations(), "01--");
  EXPECT_EQ(waits, 2);
}

TEST_F(FilesTest, EveryStepOfTheSharedCounterMakesABackup) {
  backupCountStep = 3;
  const std::string other = "/vorlix/data/other.txt";
  EXPECT_TRUE(files.FileWrite_Data(kBook, "a", 1));  // a new file counts nothing
  files.FileWrite_Data(kBook, "b", 1);
  files.FileWrite_Data(other, "x", 1);
  files.FileWrite_Data(other, "y", 1);
  files.FileWrite_Data(kBook, "c", 1);
  files.FileWrite_Data(kBook, "d", 0);
  EXPECT_EQ(store.Content(kBase + ".bak"), "a\r\nb\r\n");
  EXPECT_EQ(store.Content(kBook), "a\r\nb\r\nc\r\nd\r\n");
  EXPECT_EQ(rotation.BackupWriteCounter, 1);
  EXPECT_EQ(store.Count(Op::kAppend, "book.txt"), 4);
}

TEST_F(FilesTest, ALineThatCannotBeWrittenIsToldAndTheNextIsTriedAgain) {
  store.Fail(Op::kAppend, ENOSPC, "book.txt", 1);
  EXPECT_FALSE(files.FileWrite_Data(kBook, "lost", 1));
  EXPECT_THAT(ErrorLog(), HasSubstr("clsFiles_MakeFile + 28 + open /vorlix/data/book.txt: No space left"));
  ASSERT_EQ(boxes.shown.size(), 1u);
  EXPECT_TRUE(files.FileWrite_Data(kBook, "kept", 1));
  EXPECT_EQ(store.Content(kBook), "kept\r\n");
  store.AddFile(kBook, "cut by an editor");
  files.FileWrite_Data(kBook, "next", 1);
  EXPECT_EQ(store.Content(kBook), "cut by an editor\r\nnext\r\n");
  EXPECT_TRUE(files.FileWrite_Data("/vorlix/gone/a/b.txt", "x", 1));
  EXPECT_EQ(store.Content("/vorlix/gone/a/b.txt"), "x\r\n");
}

TEST_F(FilesTest, ALogIsTrimmedToThreeQuartersOnlyAboveItsLimit) {
  const std::string entry = "2024/03/13  12:00:00  text\r\n", line = std::string(62, 'x') + "\r\n";
  std::string full;
  while (full.size() < 4096)
    full += line;
  const auto written = [this](const std::string& before, int limit) {
    store.AddFile("/vorlix/log/error.log", before);
    files.FileWrite_Log("/vorlix/log/error.log", "text", limit);
    return store.Content("/vorlix/log/error.log");
  };
  EXPECT_EQ(written(full, 4), full + entry);
  EXPECT_EQ(written(full + full, 0), full + full + entry);
  EXPECT_EQ(written("y" + full, 4), full.substr(0, 3072) + entry);
  EXPECT_EQ(written(std::string(5000, 'z'), 4), entry);
}

TEST_F(FilesTest, CountsAndSplitsFilesWithAnyLineEnds) {
  // The first count is wrong with LF alone; callers size their arrays by it.
  using Case = std::tuple<std::string, int, int, std::vector<std::string>>;
  for (const auto& [bytes, lineCount, rows, lines] :
       {Case{"", 0, 0, {""}}, Case{"a", 1, 1, {"a"}}, Case{" a\r\n b \r\n", 2, 2, {"a", " b ", ""}},
        Case{"a\nb\nc\nd\n", 3, 1, {"a", "b", "c", "d", ""}}, Case{"a\r\nb\nc", 2, 2, {"a", "b\nc"}}}) {
    store.AddFile(kBook, bytes);
    int count = -1;
    std::string stream = files.fOpenFileToStream(kBook, count);
    EXPECT_EQ(count, lineCount) << bytes;
    EXPECT_EQ(files.GetFileRowCount(kBook), rows) << bytes;
    EXPECT_EQ(clsFiles::fStreamToArray(stream), lines) << bytes;
  }
  int count = 0;
  EXPECT_TRUE(files.CheckFileMaxLines(kBook, 2, count) && !files.CheckFileMaxLines(kBook, 3, count));
  store.Fail(Op::kRead, EIO);
  EXPECT_EQ(files.fOpenFileToStream(kBook, count), "");
  EXPECT_THAT(ErrorLog(), HasSubstr("clsFiles_fOpenFileToStream + 5"));
}

TEST_F(FilesTest, AnArrayLosesItsEmptyElementsAndMayNotOverflow) {
  EXPECT_TRUE(files.WriteArrayToFile(kBook, {"a", "", "b"}));
  EXPECT_EQ(store.Content(kBook), "a\r\nb\r\n");
  EXPECT_FALSE(files.WriteArrayToFile(kBook, std::vector<std::string>(32768, "x")));
  EXPECT_THAT(ErrorLog(), HasSubstr("clsFiles_WriteArrayToFile + 6 + Overflow"));
  EXPECT_EQ(store.Content(kBook), "a\r\nb\r\n");
  EXPECT_TRUE(files.WriteArrayToFile(kBook, std::vector<std::string>(32767, "x")));
}

TEST_F(FilesTest, MakesAMissingFolderWhereItIsWantedAndNoFileIsOne) {
  EXPECT_FALSE(files.fDirExist("/vorlix/new/deep", false));
  EXPECT_TRUE(files.fDirExist("/vorlix/new/deep", true));
  store.AddFile(kBook, "");
  EXPECT_FALSE(files.fDirExist(kBook, true) || files.FileExist("/vorlix/new"));
}

TEST_F(FilesTest, ASessionThatDidNotEndIsSeenAtTheNextStart) {
  EXPECT_FALSE(files.IsLastSessionCrashed());
  files.SetSession(true);
  EXPECT_EQ(store.Content("/vorlix/data/session.ini"), "[Session]\r\nRun=1\r\n");
  EXPECT_TRUE(files.IsLastSessionCrashed());
  files.SetSession(false);
  EXPECT_FALSE(files.IsLastSessionCrashed());
}

TEST_F(FilesTest, AFileThatHasLostItsContentIsPoorerThanItsBackup) {
  const auto isPoorer = [this](const char* text, const char* backup) {
    EXPECT_TRUE(store.Remove(kBook) && store.Remove("/vorlix/data/book.bak"));
    if (text != nullptr) store.AddFile(kBook, text);
    if (backup != nullptr) store.AddFile("/vorlix/data/book.bak", backup);
    return files.IsPoorerThanBackup(kBook);
  };
  EXPECT_TRUE(isPoorer("", "b") && isPoorer(nullptr, "b"));
  EXPECT_FALSE(isPoorer("", nullptr) || isPoorer(nullptr, "") || isPoorer("t", nullptr) || isPoorer("t", "b"));
  store.Fail(Op::kRead, EIO, kBook);
  EXPECT_TRUE(files.IsPoorerThanBackup(kBook));
}

}  // namespace
}  // namespace vorlix
