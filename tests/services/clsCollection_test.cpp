#include "services/clsCollection.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace vorlix {
namespace {

class Named : public CollectionItem {
 public:
  explicit Named(std::string key) { Key = std::move(key); }
};

class Copied : public Named {
 public:
  using Named::Named;
  std::shared_ptr<CollectionItem> Clone() const override { return std::make_shared<Copied>(*this); }
};

TEST(clsCollection, KeepsTheFirstObjectOfAKeyAndKnowsNoOther) {
  clsCollection list;
  const auto first = std::make_shared<Named>("a");
  EXPECT_TRUE(list.Add(first) && list.Add(std::make_shared<Named>("b")));
  EXPECT_FALSE(list.Add(std::make_shared<Named>("a")) || list.Add(nullptr) || list.Add(std::make_shared<Named>("")));
  EXPECT_FALSE(list.AddByKeyValue("nothing", clsCollection::Object()));
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
  list.ChangeByKeyValue("k", "empty lists stay empty");
  EXPECT_EQ(shown(), "");
  EXPECT_TRUE(list.AddByINIData("k", "1") && list.AddByINIData("m", "2"));
  list.ChangeByKeyValue("unknown", "3");
  list.ChangeByKeyValue("k", "3");
  EXPECT_EQ(shown(), "m=2 k=3 ");
  EXPECT_EQ(list.ItemByKeyValue("k", "x") + list.ItemByKeyValue("none", "x"), "3x");
  EXPECT_TRUE(list.ChangeKey("m", "n"));
  EXPECT_FALSE(list.ChangeKey("n", "k"));
  EXPECT_EQ(shown(), "k=3 m=2 ");
  EXPECT_FALSE(list.RemoveByIndex("two") || list.RemoveByIndex("-1"));
  EXPECT_TRUE(list.RemoveByIndex("2") && list.RemoveByKeyName("k"));
  EXPECT_FALSE(list.RemoveFirst());
  const std::string key(40, 'k');
  list.AddByINIData(key, "1");
  list.ChangeByKeyValue(list.GetCollection().front().key, "2");  // the key given is the one that goes
  EXPECT_EQ(shown(), key + "=2 ");
}

TEST(clsCollection, ClonesWhatCanBeClonedAndSharesTheRest) {
  clsCollection list;
  const auto shared = std::make_shared<Named>("shared");
  const auto copied = std::make_shared<Copied>("copied");
  list.Add(shared);
  list.Add(copied);
  list.AddByKeyValue("text", std::string("t"));
  const clsCollection clone = list.Clone();
  EXPECT_EQ(clone.ItemByKey("shared"), shared);
  EXPECT_NE(clone.ItemByKey("copied"), copied);
  EXPECT_EQ(clone.GetItemByIndexByKeyValue(3), "t");
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
  EXPECT_EQ(queue.Count(), 2u);
  queue.Queue_Limit = 0;
  while (queue.Count() < 10000)
    EXPECT_TRUE(queue.Queue_Add("x"));
  EXPECT_FALSE(queue.Queue_Add("y"));
  EXPECT_EQ(queue.Count() + full, 10001u);
  queue.Clear();
  EXPECT_EQ(queue.Queue_ReadLast(), "");
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

TEST(clsCollection, BehavesAsAPlainListUnderRandomUse) {
  std::mt19937 random(7);
  clsCollection list;
  std::vector<std::string> plain;
  for (int i = 0; i < 5000; ++i) {
    const std::string key = std::to_string(random() % 40);
    const auto known = std::find(plain.begin(), plain.end(), key);
    if (random() % 2 == 0) {
      EXPECT_EQ(list.Add(std::make_shared<Named>(key)), known == plain.end());
      if (known == plain.end()) plain.push_back(key);
    } else {
      EXPECT_EQ(list.RemoveByKeyName(key), known != plain.end());
      if (known != plain.end()) plain.erase(known);
    }
    ASSERT_EQ(list.Count(), plain.size());
  }
  for (std::size_t i = 0; i < plain.size(); ++i)
    EXPECT_EQ(list.GetItemByIndex(i + 1)->Key, plain[i]);
}

}  // namespace
}  // namespace vorlix
