#include "services/clsCollection.h"

#include <gtest/gtest.h>

namespace vorlix {
namespace {

class Named : public CollectionItem {
 public:
  explicit Named(std::string key) { Key = std::move(key); }
};

TEST(clsCollection, KeepsTheFirstObjectOfAKeyAndKnowsNoOther) {
  clsCollection list;
  const auto first = std::make_shared<Named>("a");
  EXPECT_TRUE(list.Add(first) && list.Add(std::make_shared<Named>("b")));
  EXPECT_FALSE(list.Add(std::make_shared<Named>("a")) || list.Add(nullptr) || list.Add(std::make_shared<Named>("")));
  EXPECT_EQ(list.ItemByKey("a"), first);
  EXPECT_EQ(list.GetItemByIndex(2)->Key, "b");
  EXPECT_FALSE(list.ItemByKey("c") || list.GetItemByIndex(0) || list.GetItemByIndex(3));
}

TEST(clsCollection, TextsAreKeptByKeyAndMoveToTheEndWhenChanged) {
  clsCollection list;
  const auto shown = [&list] {
    std::string all;
    for (std::size_t i = 1; i <= list.Count(); ++i)
      all += list.GetItemByIndexByKeyValue(i) + " ";
    return all;
  };
  EXPECT_TRUE(list.AddByINIData("k", "1") && list.AddByINIData("m", "2"));
  list.ChangeByKeyValue("unknown", "3");
  list.ChangeByKeyValue("k", "3");
  EXPECT_EQ(shown(), "m=2 k=3 ");
  EXPECT_EQ(list.ItemByKeyValue("k", "x") + list.ItemByKeyValue("none", "x"), "3x");
  EXPECT_TRUE(list.ChangeKey("m", "n"));
  EXPECT_FALSE(list.ChangeKey("n", "k"));
  EXPECT_EQ(shown(), "k=3 m=2 ");
  EXPECT_FALSE(list.RemoveByIndex("two") || list.RemoveByIndex("-1"));
  EXPECT_TRUE(list.RemoveByIndex("2") && list.RemoveFirst());
  EXPECT_FALSE(list.RemoveFirst());
}

TEST(clsCollection, TheQueueGivesUpItsOldestTextAndRefusesTheTenThousandFirst) {
  clsCollection queue;
  int full = 0;
  queue.QueueFull = [&] { ++full; };
  queue.Queue_Limit = 3;
  for (const char* text : {"1", "2", "3", "4"})
    queue.Queue_Add(text);
  EXPECT_EQ(queue.Queue_ViewLast(), "2");
  EXPECT_EQ(queue.Queue_ReadLast(), "2");
  queue.Queue_Limit = 0;
  while (queue.Count() < 10000)
    EXPECT_TRUE(queue.Queue_Add("x"));
  EXPECT_FALSE(queue.Queue_Add("y"));
  EXPECT_EQ(queue.Count() + full, 10001u);
}

TEST(clsCollection, AShortQueueWaitsForTheTimerALongOneIsCollectedAtOnce) {
  clsCollection queue;
  std::string events;
  queue.QueueAdded = [&] { events += "A"; };
  queue.QueueTimerStart = [&] { events += "T"; };
  queue.Queue_InfoDealy = 2;
  for (int i = 0; i < 4; ++i)
    queue.Queue_Add("x");
  EXPECT_EQ(events, "TTAA");
}

TEST(clsCollection, FindsTheItemsBehindOneThatIsRemoved) {
  clsCollection list;
  for (const char* key : {"a", "b", "c", "d"})
    list.Add(std::make_shared<Named>(key));
  EXPECT_TRUE(list.RemoveByKeyName("b") && !list.RemoveByKeyName("b"));
  EXPECT_TRUE(list.Add(std::make_shared<Named>("b")));
  std::string keys;
  for (std::size_t i = 1; i <= list.Count(); ++i) {
    keys += list.GetItemByIndex(i)->Key;
    EXPECT_EQ(list.ItemByKey(keys.substr(i - 1)), list.GetItemByIndex(i));
  }
  EXPECT_EQ(keys, "acdb");
}

}  // namespace
}  // namespace vorlix
