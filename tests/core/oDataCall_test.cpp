#include "core/oDataCall.h"

#include <gtest/gtest.h>

#include "fakes/BookOfNames.h"

namespace vorlix {
namespace {

TEST(oDataCall, IsAnalysedOnceForEachNumber) {
  CountingNumbers numbers;
  oDataCall call(&numbers);
  call.DataNumber("0301");
  EXPECT_EQ(call.VW_FormatedFull() + call.VW_CityName(), "Ort 0301 0301");
  EXPECT_EQ(numbers.analyses, 1);
  call.Name("Meier");
  EXPECT_TRUE(call.Name() == "Meier" && call.IsLoadedBookData());
  call.DataNumber("0302");
  EXPECT_FALSE(call.IsLoadedBookData());
  EXPECT_EQ(call.VW_FormatedNumber() + oDataCall().VW_FormatedFull(), "0302");
  EXPECT_EQ(numbers.analyses, 2);
}

TEST(oDataCall, TakesAliasAndBlockFieldsOverFromItsOwnNumber) {
  clsCollection table;
  for (const char* msn : {"77", "all"}) {
    const auto row = std::make_shared<oDataMSN>();
    row->Key = row->MSN = msn;
    row->color = 5;
    row->BlockByMSN_b_BlockMainMenu = row->MSN == "all" ? 2 : 0;
    table.Add(row);
  }
  using Case = std::tuple<const char*, int, int>;
  for (const auto& [msn, color, menu] : {Case{"77", 5, 0}, Case{"78", kMSNColorUnknown, 2}}) {
    oDataCall call;
    call.MSN = msn;
    call.GetMSNData(table);
    EXPECT_EQ(call.MSNAlias, msn);
    EXPECT_EQ(call.MSNColor, color);
    EXPECT_EQ(call.MSN_BlockMainMenu, menu);
  }
}

}  // namespace
}  // namespace vorlix
