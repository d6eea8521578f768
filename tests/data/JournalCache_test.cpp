#include "data/JournalCache.h"

#include <gtest/gtest.h>

#include "data/JournalLookup.h"
#include "fakes/BookOfNames.h"
#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

struct JournalCacheTest : testing::Test {
  oDataCall Call(const std::string& number) {
    oDataCall call(&numbers);
    call.DataNumber(number);
    return call;
  }
  oDataCall Got(const std::string& number) {
    oDataCall call = Call(number);
    cache.SpeedBuffer_Journal_Get(call);
    return call;
  }

  CountingNumbers numbers;
  JournalCache cache;
  JournalFlags flags;
  BookOfNames book{cache, flags};
  JournalLookup lookup{book, cache, flags};
};

TEST_F(JournalCacheTest, AnEntryIsOverwrittenOnlyByWhatIsNotEmpty) {
  const oDataCall nobody = Call("0301");
  oDataCall meier = nobody, moved = nobody;
  meier.Name("Meier");
  meier.Address("Berlin");
  meier.MutableCard().BookVCardData = "[vcd(1)]";
  meier.MutableCard().BookVCsName = "Moritz";
  moved.Address("Bonn");
  // What is set, and what is then got: name, address, formatted number, card.
  using Step = std::tuple<const oDataCall*, std::string, std::string>;
  for (const auto& [source, formatted, expected] :
       {Step{nullptr, "030 / 1", "  030 / 1 "}, Step{&meier, "", "Meier Berlin 030 / 1 Moritz"},
        Step{&nobody, "(030) 1", "Meier Berlin (030) 1 Moritz"}, Step{&moved, "", "Meier Bonn (030) 1 Moritz"}}) {
    cache.SpeedBuffer_Journal_Set("0301", source, formatted);
    const oDataCall got = Got("0301");
    EXPECT_EQ(got.Name() + " " + got.Address() + " " + got.VW_FormatedFull() + " " + got.Card().BookVCsName, expected);
    EXPECT_EQ(got.NameMode == kNamed, source != nullptr);
    EXPECT_EQ(got.VW_FormatedLocation(), "Ort 0301") << "a record has all texts of its number";
  }
  cache.SpeedBuffer_Journal_Set("", &meier, "x");
  cache.SpeedBuffer_Journal_Clear();
  EXPECT_EQ(Got("0301").Name() + Got("").Name(), "");
}

TEST_F(JournalCacheTest, EachNumberIsAnalysedOnceForALoadAndEachNameLookedUpOnce) {
  book.names = {{"0301", "Meier"}};
  {
    const JournalNames::Load load(lookup);
    const JournalNames::Load inner(lookup);
    for (int line = 0; line < 3; ++line) {
      for (const std::string number : {"0301", "0999"}) {
        oDataCall call = Call(number);
        lookup.Fill(call);
        EXPECT_EQ(call.Name(), number == "0301" ? "Meier" : "");
        EXPECT_EQ(call.VW_FormatedFull(), "Ort " + number + " " + number);
      }
    }
    EXPECT_TRUE(flags.JournalLoading);
  }
  EXPECT_FALSE(flags.JournalLoading);
  EXPECT_EQ(numbers.analyses, 2);
  EXPECT_EQ(book.lookups, 1 + 3) << "a number without a name may get one at any time";
  book.names = {{"0301", "Schmidt"}};
  flags.JournalLoading = true;  // by a window that loads in parts
  oDataCall call = Call("0301");
  {
    const JournalNames::Load load(lookup);
    lookup.Fill(call);
  }
  EXPECT_TRUE(flags.JournalLoading);
  EXPECT_EQ(call.Name(), "Schmidt") << "a new name is seen by the next load";
}

}  // namespace
}  // namespace vorlix
