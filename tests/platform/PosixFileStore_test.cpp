#include "platform/posix/PosixFileStore.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "fakes/MemoryFileStore.h"
#include "fakes/TemporaryFolder.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

// What callers build on, kept by the disk and by the store of the tests alike.
template <class Store>
class FileStoreContract : public testing::Test {
 protected:
  FileStoreContract() {
    if constexpr (std::is_same_v<Store, MemoryFileStore>) store.AddFolder(folder.Path());
  }
  std::string At(const std::string& name) const { return folder / name; }
  std::string Content(const std::string& name) const {
    std::string bytes = "of a former read";
    return this->store.Read(At(name), bytes) ? bytes : "-";
  }
  void Put(const std::string& name, std::string_view bytes) { EXPECT_TRUE(this->store.Overwrite(At(name), bytes)); }

  TemporaryFolder folder;
  Store store;
};

using Stores = testing::Types<PosixFileStore, MemoryFileStore>;
TYPED_TEST_SUITE(FileStoreContract, Stores);

TYPED_TEST(FileStoreContract, OverwritesShorterLongerAndWithAnyByte) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  for (const std::string& bytes : {std::string("first\r\n"), all, std::string("x"), std::string()}) {
    this->Put("a", bytes);
    EXPECT_EQ(this->Content("a"), bytes);
    EXPECT_EQ(this->store.Stat(this->At("a")).size, bytes.size());
  }
}

TYPED_TEST(FileStoreContract, AppendsAndBeginsALineOfItsOwn) {
  for (const auto& [before, ownLine, after] :
       {std::tuple{"", true, "x"}, {"old", true, "old\r\nx"}, {"old\r\n", true, "old\r\nx"}, {"old", false, "oldx"}}) {
    this->Put("a", before);
    EXPECT_TRUE(this->store.Append(this->At("a"), "x", ownLine));
    EXPECT_EQ(this->Content("a"), after);
  }
  EXPECT_TRUE(this->store.Append(this->At("fresh"), "x"));
  EXPECT_EQ(this->Content("fresh"), "x");
}

TYPED_TEST(FileStoreContract, TellsWhatWasTriedAndWhyItFailed) {
  TypeParam& disk = this->store;
  const std::string none = this->At("none"), file = this->At("file"), dir = this->At("folder");
  std::string bytes;
  this->Put("file", "content");
  EXPECT_TRUE(disk.MakeFolder(dir));
  EXPECT_EQ(disk.Read(none, bytes).text, "open " + none + ": No such file or directory");
  for (const IoResult& result : {disk.Append(none + "/file", "x"), disk.Rename(none, file), disk.Copy(none, file, true),
                                 disk.MakeFolder(none + "/folder")})
    EXPECT_EQ(result.error, ENOENT) << result.text;
  for (const IoResult& result : {disk.Read(dir, bytes), disk.Overwrite(dir, "x"), disk.Remove(dir)})
    EXPECT_EQ(result.error, EISDIR) << result.text;
  for (const IoResult& result : {disk.Copy(file, file, false), disk.MakeFolder(dir)})
    EXPECT_EQ(result.error, EEXIST) << result.text;
  EXPECT_TRUE(disk.Remove(none));
  EXPECT_EQ(this->Content("file"), "content");
}

TYPED_TEST(FileStoreContract, CopiesRenamesRemovesAndLists) {
  TypeParam& disk = this->store;
  const std::string a = this->At("a"), b = this->At("b"), copy = this->At("copy");
  this->Put("b", "content");
  this->Put("a", "former");
  EXPECT_TRUE(disk.Copy(b, a, true) && disk.Copy(b, copy, false));
  EXPECT_EQ(this->Content("a") + this->Content("copy"), "contentcontent");
  EXPECT_TRUE(disk.MakeFolder(this->At("f")));
  this->Put("f/inside", "1");
  EXPECT_TRUE(disk.Rename(b, copy) && disk.Rename(this->At("f"), this->At("g")) && disk.Remove(a));
  EXPECT_EQ(this->Content("g/inside"), "1");
  EXPECT_EQ(disk.List(this->folder.Path()), (std::vector<std::string>{"copy", "g"}));
  EXPECT_TRUE(disk.List(a).empty());
  EXPECT_TRUE(disk.IsWritableFolder(this->folder.Path()));
  EXPECT_FALSE(disk.IsWritableFolder(copy));
}

TYPED_TEST(FileStoreContract, StatNoticesAWriteAndAnotherFileUnderTheSameName) {
  const std::string a = this->At("a"), b = this->At("b");
  this->Put("a", "1");
  const FileInfo first = this->store.Stat(a);
  usleep(20'000);  // the disk's own stamps are coarse
  EXPECT_TRUE(this->store.Append(a, "2"));
  const FileInfo second = this->store.Stat(a);
  EXPECT_NE(first.modified, second.modified);
  EXPECT_EQ(first.identity, second.identity);
  this->Put("b", "12");
  EXPECT_TRUE(this->store.Rename(b, a));
  EXPECT_NE(this->store.Stat(a).identity, second.identity);
  EXPECT_TRUE(this->store.Stat(this->folder.Path()).IsFolder());
  EXPECT_EQ(this->store.Stat(b), FileInfo());
}

using PosixFileStoreTest = FileStoreContract<PosixFileStore>;

TEST_F(PosixFileStoreTest, KeepsNewFilesAndFoldersPrivateOnTheirDriveAndNamesThemInUtf8) {
  const std::string name("M\xFCller \x80");
  Put(name, "x");
  EXPECT_TRUE(store.MakeFolder(At("folder")));
  const auto rightsOf = [this](const char* utf8) { return std::filesystem::status(At(utf8)).permissions(); };
  EXPECT_EQ(rightsOf("M\xC3\xBCller \xE2\x82\xAC"), std::filesystem::perms(0600));
  EXPECT_EQ(rightsOf("folder"), std::filesystem::perms(0700));
  EXPECT_EQ(store.List(folder.Path()), (std::vector<std::string>{name, "folder"}));
  EXPECT_EQ(store.Stat(At(name)).device, store.Stat(folder.Path()).device);
  EXPECT_NE(store.Stat(At(name)).device, store.Stat("/proc").device);
}

TEST_F(PosixFileStoreTest, OverwritesTheVerySameFileAlsoThroughALink) {
  Put("real", "long former content");
  ASSERT_EQ(symlink(At("real").c_str(), At("link").c_str()), 0);
  ASSERT_EQ(link(At("real").c_str(), At("second").c_str()), 0);
  Put("link", "new");
  EXPECT_EQ(Content("second"), "new");
}

TEST_F(PosixFileStoreTest, RefusesAFifoAndAPathWithAZeroByteWithoutWaiting) {
  ASSERT_EQ(mkfifo(At("fifo").c_str(), 0600), 0);
  const int reader = open(At("fifo").c_str(), O_RDONLY | O_NONBLOCK);
  std::string bytes;
  EXPECT_FALSE(store.Read(At("fifo"), bytes));
  EXPECT_FALSE(store.Overwrite(At("fifo"), "x"));
  EXPECT_FALSE(store.Append(At("fifo"), "x", true));
  close(reader);
  EXPECT_FALSE(store.Append(At("fifo"), "x"));
  EXPECT_EQ(store.Stat(At("fifo")), FileInfo());
  EXPECT_FALSE(store.Overwrite(At(std::string("a\0b", 3)), "x"));
  EXPECT_FALSE(store.Stat(At("a")).IsFile());
}

TEST_F(PosixFileStoreTest, ReportsAFullDiskAndLeavesNoHalfContentWhenTheWholeDoesNotFit) {
  const std::string old(6000, 'o'), big(9000, 'n');
  Put("a", old);
  Put("b", old);
  Put("big", big);
  const auto former = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit small{8192, limit.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const std::vector<IoResult> results = {store.Overwrite(At("a"), big), store.Append(At("b"), std::string(3000, 'n')),
                                         store.Overwrite(At("c"), big), store.Copy(At("big"), At("copy"), true)};
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, former);
  for (const IoResult& result : results)
    EXPECT_TRUE(result.error == EFBIG || result.error == ENOSPC) << result.text;
  EXPECT_EQ(Content("b"), old);
  EXPECT_EQ(Content("c"), "");
  EXPECT_FALSE(store.Stat(At("copy")).IsFile()) << "it would count as a backup";
  EXPECT_EQ(store.Overwrite("/dev/full", "x").text, "write /dev/full: No space left on device");
  EXPECT_EQ(store.Append("/dev/full", "x", true).error, ENOSPC);
}

}  // namespace
}  // namespace vorlix
