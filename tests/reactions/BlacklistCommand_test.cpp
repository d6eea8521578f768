#include "reactions/BlacklistCommand.h"

#include <gmock/gmock.h>

#include "core/null_ports.h"
#include "fakes/BookFakes.h"
#include "fakes/DataRoom.h"
#include "fakes/ManualReactor.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const std::string kBook = "/vorlix/data/Vorlixbook.txt";

class BlacklistCommandTest : public testing::Test, protected DataRoom {
 protected:
  BlacklistCommandTest() {
    store.AddFile(kBook, "Anna;0171;0;1;0;0;;\r\nBert;0172;0;1;0;0;;\r\n");
    book.BookData_Read();
  }
  void Click(const std::string& number, const std::string& name) {
    oDataCall call;
    call.DataNumber(number);
    call.Name(name);
    command.mnuBlackList_Click(call);
  }

  ManualReactor loop;
  PlainNumbers numbers;
  NoSchedules schedules;
  NotedDoubles doubles;
  FakeBookWindow window;
  NotedBlackList list;
  NotedProgress progress;
  JournalCache cache;
  JournalFlags flags;
  modBook book{{files, folders, blocks, loop, numbers, schedules, messages, doubles, window, list, progress, cache,
                flags, nullptr, nullptr, nullptr, nullptr, nullptr}};
  BlacklistCommand command{list, book};
};

TEST_F(BlacklistCommandTest, TheNumberLeavesTheBookForTheBlacklistAndWhatTheBookHasNotIsNoReasonToSaveIt) {
  store.requests.clear();
  Click("", "nobody");
  Click("0301", "");
  EXPECT_EQ(store.Writes(), 0);
  Click("0171", "Anna");
  EXPECT_THAT(list.added, ElementsAre("0301 ", "0171 Anna"));
  EXPECT_THAT(store.Content(kBook), AllOf(Not(HasSubstr("Anna")), HasSubstr("Bert")));
}

TEST_F(BlacklistCommandTest, AnOpenBookIsRefreshedInsteadOfSaved) {
  window.open = true;
  const auto entry = std::make_shared<oDataCall>();
  entry->Key = "0171";
  window.copy.Add(entry);
  Click("0171", "Anna");
  EXPECT_EQ(window.copy.Count(), 0u);
  EXPECT_EQ(window.refreshed, 1);
  EXPECT_THAT(store.Content(kBook), HasSubstr("Anna"));
}

}  // namespace
}  // namespace vorlix
