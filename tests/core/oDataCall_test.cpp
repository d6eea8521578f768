#include "core/oDataCall.h"

#include <gtest/gtest.h>

#include "fakes/FakeClock.h"

namespace vorlix {
namespace {

class CountingNumbers : public PlainNumbers {
 public:
  int asked = 0;
  NumberTexts GetOVW(const std::string& number) override {
    ++asked;
    return PlainNumbers::GetOVW(number);
  }
};

TEST(oDataCall, IsAnalysedOnceForEachNumber) {
  CountingNumbers numbers;
  oDataCall call(&numbers);
  call.DataNumber("0301");
  EXPECT_FALSE(call.IsLoadedVW());
  EXPECT_EQ(call.VW_FormatedFull(), "0301");
  EXPECT_EQ(call.VW_CityName(), "");
  EXPECT_EQ(numbers.asked, 1);
  call.Name("Meier");
  EXPECT_FALSE(call.IsLoadedBookData());
  EXPECT_EQ(call.Name(), "Meier");
  EXPECT_TRUE(call.IsLoadedBookData());
  call.DataNumber("0302");
  EXPECT_FALSE(call.IsLoadedBookData());
  EXPECT_EQ(call.VW_FormatedNumber(), "0302");
  EXPECT_EQ(numbers.asked, 2);
  EXPECT_EQ(oDataCall().VW_FormatedFull(), "");
}

TEST(oDataCall, ACloneStandsOnItsOwn) {
  CountingNumbers numbers;
  oDataCall call(&numbers);
  call.Key = "1";
  call.DataNumber("0301");
  call.Notiz("note");
  call.MutableCard().BookVCsName = "card";
  EXPECT_EQ(call.VW_FormatedFull(), "0301");
  const auto clone = std::dynamic_pointer_cast<oDataCall>(call.Clone());
  EXPECT_EQ(clone->Key, "1");
  EXPECT_TRUE(clone->IsLoadedVW());
  EXPECT_EQ(clone->Notiz(), "note");
  clone->MutableCard().BookVCsName = "other";
  EXPECT_EQ(call.Card().BookVCsName, "card");
  EXPECT_TRUE(call.HaveVCard());
  EXPECT_FALSE(oDataCall().HaveVCard());
}

TEST(oDataCall, TakesAliasAndBlockFieldsOverFromItsOwnNumber) {
  clsCollection table;
  const auto all = std::make_shared<oDataMSN>();
  all->Key = "all";
  all->BlockByMSN_b_BlockMainMenu = 2;
  const auto own = std::make_shared<oDataMSN>();
  own->Key = own->MSN = "77";
  own->color = 5;
  own->BlockByMSN_b_BlockNoNumber = true;
  table.Add(own);
  oDataCall call;
  call.MSN = "77";
  call.GetMSNData(table);
  EXPECT_EQ(call.MSNAlias, "77");
  EXPECT_EQ(call.MSNColor, 5u);
  EXPECT_TRUE(call.MSN_BlockNoNumber);
  oDataCall other;
  other.MSN = "78";
  other.GetMSNData(table);
  EXPECT_EQ(other.MSNColor, kMSNColorUnknown);
  EXPECT_EQ(other.MSN_BlockMainMenu, 0);
  table.Add(all);
  other.GetMSNData(table);
  EXPECT_EQ(other.MSNAlias, "78");
  EXPECT_EQ(other.MSN_BlockMainMenu, 2);
}

TEST(oDataCall, ShowsItselfInTipsAndDates) {
  PlainNumbers numbers;
  FakeClock clock;
  oDataCall call(&numbers);
  call.DataNumber("0301");
  call.MSN = "77";
  call.MSNAlias = "Buero";
  call.CallDateTime = DateTime::FromCivil(2010, 8, 5, 9, 7, 3);
  EXPECT_EQ(call.CallDateView() + call.CallTimeView(), "05.08.201009:07:03");
  EXPECT_EQ(call.ToolTippHead(), "0301");
  EXPECT_EQ(call.ToolTippText(), "MSN Buero 77");
  call.NameMode = 1;
  call.Name("Meier");
  call.Address("Weg 1");
  EXPECT_EQ(call.ToolTippHead(), "Meier");
  EXPECT_EQ(call.ToolTippText(), "Weg 1\r\n0301\r\nMSN Buero 77");
  EXPECT_EQ(call.BookVCsDateFormated(1, clock), "");
  call.MutableCard().BookVCsDate2 = "05.08.";
  EXPECT_EQ(call.BookVCsDateFormated(2, clock), "05.08.2024");
  CallCounting(call, 0);
  CallCounting(call, 1);
  CallCounting(call, 2);
  EXPECT_EQ(call.CallCountIn, 1);
  EXPECT_EQ(call.CallCountOut, 1);
}

TEST(UnknownNumber, IsFoundAnywhereInAnyCase) {
  EXPECT_TRUE(IsUnknownNumber("unbekannt"));
  EXPECT_TRUE(IsUnknownNumber("xUNBEKANNTx"));
  EXPECT_FALSE(IsUnknownNumber(""));
  EXPECT_FALSE(IsUnknownNumber("0301"));
}

}  // namespace
}  // namespace vorlix
