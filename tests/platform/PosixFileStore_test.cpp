#include "platform/posix/PosixFileStore.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "fakes/MemoryFileStore.h"
#include "fakes/TemporaryFolder.h"
#include "services/ansi.h"

namespace {
std::function<ssize_t(int file, const char* bytes, size_t count)> instead;  // of the system's write
}

// Stands before the system's own: what another process does within an append can be told no other way.
extern "C" ssize_t write(int file, const void* bytes, size_t count) {
  return instead ? instead(file, static_cast<const char*>(bytes), count) : syscall(SYS_write, file, bytes, count);
}

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
  for (const auto& [before, ownLine, after] : std::vector<std::tuple<std::string, bool, std::string>>{
           {"", true, "x"}, {"old", true, "old\r\nx"}, {"old\r\n", true, "old\r\nx"}, {"old", false, "oldx"}}) {
    this->Put("a", before);
    EXPECT_TRUE(this->store.Append(this->At("a"), "x", ownLine));
    EXPECT_EQ(this->Content("a"), after);
  }
  EXPECT_TRUE(this->store.Append(this->At("fresh"), "x"));
  EXPECT_EQ(this->Content("fresh"), "x");
}

TYPED_TEST(FileStoreContract, TellsWhatWasTriedAndWhyItFailed) {
  std::string bytes;
  this->Put("file", "content");
  EXPECT_TRUE(this->store.MakeFolder(this->At("folder")));
  EXPECT_EQ(this->store.Read(this->At("none"), bytes).text, "open " + this->At("none") + ": No such file or directory");
  EXPECT_EQ(this->store.Read(this->At("folder"), bytes).error, EISDIR);
  EXPECT_EQ(this->store.Overwrite(this->At("folder"), "x").error, EISDIR);
  EXPECT_EQ(this->store.Append(this->At("none/file"), "x").error, ENOENT);
  EXPECT_EQ(this->store.Rename(this->At("none"), this->At("x")).error, ENOENT);
  EXPECT_EQ(this->store.Copy(this->At("none"), this->At("x"), true).error, ENOENT);
  EXPECT_EQ(this->store.Copy(this->At("file"), this->At("file"), false).error, EEXIST);
  EXPECT_EQ(this->store.Remove(this->At("folder")).error, EISDIR);
  EXPECT_EQ(this->store.MakeFolder(this->At("folder")).error, EEXIST);
  EXPECT_EQ(this->store.MakeFolder(this->At("none/folder")).error, ENOENT);
  EXPECT_TRUE(this->store.Remove(this->At("none")));
  EXPECT_EQ(this->Content("file"), "content");
}

TYPED_TEST(FileStoreContract, CopiesRenamesRemovesAndLists) {
  this->Put("b", "content");
  this->Put("target", "former");
  EXPECT_TRUE(this->store.Copy(this->At("b"), this->At("target"), true));
  EXPECT_TRUE(this->store.Copy(this->At("b"), this->At("copy"), false));
  EXPECT_EQ(this->Content("target") + this->Content("copy"), "contentcontent");
  EXPECT_TRUE(this->store.MakeFolder(this->At("f")));
  this->Put("f/inside", "1");
  EXPECT_TRUE(this->store.Rename(this->At("b"), this->At("copy")));
  EXPECT_TRUE(this->store.Rename(this->At("f"), this->At("g")));
  EXPECT_TRUE(this->store.Remove(this->At("target")));
  EXPECT_EQ(this->Content("g/inside"), "1");
  EXPECT_EQ(this->store.List(this->folder.Path()), (std::vector<std::string>{"copy", "g"}));
  EXPECT_TRUE(this->store.List(this->At("none")).empty());
  EXPECT_TRUE(this->store.IsWritableFolder(this->folder.Path()));
  EXPECT_FALSE(this->store.IsWritableFolder(this->At("copy")));
}

TYPED_TEST(FileStoreContract, StatNoticesAWriteAndAnotherFileUnderTheSameName) {
  this->Put("a", "1");
  const FileInfo first = this->store.Stat(this->At("a"));
  usleep(20'000);  // the disk's own stamps are coarse
  EXPECT_TRUE(this->store.Append(this->At("a"), "2"));
  const FileInfo second = this->store.Stat(this->At("a"));
  EXPECT_NE(first.modified, second.modified);
  EXPECT_EQ(first.identity, second.identity);
  this->Put("b", "12");
  EXPECT_TRUE(this->store.Rename(this->At("b"), this->At("a")));
  EXPECT_NE(this->store.Stat(this->At("a")).identity, second.identity);
  EXPECT_TRUE(this->store.Stat(this->folder.Path()).IsFolder());
  EXPECT_EQ(this->store.Stat(this->At("b")), FileInfo());
}

using PosixFileStoreTest = FileStoreContract<PosixFileStore>;

TEST_F(PosixFileStoreTest, EachDriveHasItsDevice) {
  Put("a", "x");
  EXPECT_EQ(store.Stat(At("a")).device, store.Stat(folder.Path()).device);
  EXPECT_NE(store.Stat(At("a")).device, store.Stat("/proc").device);
}

TEST_F(PosixFileStoreTest, KeepsNewFilesAndFoldersPrivateAndNamesThemInUtf8) {
  const std::string name("M\xFCller \x80");
  Put(name, "x");
  EXPECT_TRUE(store.MakeFolder(At("folder")));
  struct stat info {};
  ASSERT_EQ(stat(At("M\xC3\xBCller \xE2\x82\xAC").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
  ASSERT_EQ(stat(At("folder").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0700u);
  EXPECT_EQ(store.List(folder.Path()), (std::vector<std::string>{name, "folder"}));
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
  const std::string old(6000, 'o');
  Put("a", old);
  Put("b", old);
  Put("big", std::string(9000, 'n'));
  const auto former = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit small{8192, limit.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const IoResult overwritten = store.Overwrite(At("a"), std::string(9000, 'n'));
  const IoResult appended = store.Append(At("b"), std::string(3000, 'n'));
  const IoResult made = store.Overwrite(At("c"), std::string(9000, 'n'));
  const IoResult copied = store.Copy(At("big"), At("copy"), true);
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, former);
  EXPECT_EQ(overwritten.error, EFBIG);
  EXPECT_NE(appended.error, 0);
  EXPECT_NE(made.error, 0);
  EXPECT_NE(copied.error, 0);
  EXPECT_EQ(Content("b"), old);
  EXPECT_EQ(Content("c"), "");
  EXPECT_FALSE(store.Stat(At("copy")).IsFile()) << "it would count as a backup";
  EXPECT_EQ(store.Overwrite("/dev/full", "x").text, "write /dev/full: No space left on device");
  EXPECT_EQ(store.Append("/dev/full", "x", true).error, ENOSPC);
}

TEST_F(PosixFileStoreTest, AHalfLineIsTakenBackAndTheLinesOfAnotherProcessStay) {
  for (const bool isOtherFirst : {true, false}) {
    Put("a", "old\r\n");
    const auto other = [this] {
      const int file = open(At("a").c_str(), O_WRONLY | O_APPEND);
      syscall(SYS_write, file, "other\r\n", 7);
      close(file);
    };
    instead = [&](int file, const char* bytes, size_t) {
      if (isOtherFirst) other();
      const ssize_t part = syscall(SYS_write, file, bytes, 2);
      if (!isOtherFirst) other();
      return part;
    };
    EXPECT_EQ(store.Append(At("a"), "mine\r\n", true).error, ENOSPC);
    instead = nullptr;
    EXPECT_EQ(Content("a"), isOtherFirst ? "old\r\nother\r\n" : "old\r\nmiother\r\n");
  }
}

}  // namespace
}  // namespace vorlix
