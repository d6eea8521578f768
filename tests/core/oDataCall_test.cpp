#include "core/oDataCall.h"

#include <gmock/gmock.h>
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
  EXPECT_EQ(call.VW_FormatedFull() + call.VW_CityName(), "0301");
  EXPECT_EQ(numbers.asked, 1);
  call.Name("Meier");
  EXPECT_FALSE(call.IsLoadedBookData());
  EXPECT_EQ(call.Name(), "Meier");
  EXPECT_TRUE(call.IsLoadedBookData());
  call.DataNumber("0302");
  EXPECT_FALSE(call.IsLoadedBookData());
  EXPECT_EQ(call.VW_FormatedNumber() + oDataCall().VW_FormatedFull(), "0302");
  EXPECT_EQ(numbers.asked, 2);
}

TEST(oDataCall, ACloneStandsOnItsOwn) {
  PlainNumbers numbers;
  oDataCall call(&numbers);
  call.Key = "1";
  call.DataNumber("0301");
  call.Notiz("note");
  call.MutableCard().BookVCsName = "card";
  EXPECT_EQ(call.VW_FormatedFull(), "0301");
  const auto clone = std::dynamic_pointer_cast<oDataCall>(call.Clone());
  EXPECT_EQ(clone->Key + clone->Notiz(), "1note");
  EXPECT_TRUE(clone->IsLoadedVW());
  clone->MutableCard().BookVCsName = "other";
  EXPECT_EQ(call.Card().BookVCsName, "card");
  EXPECT_TRUE(call.HaveVCard() && !oDataCall().HaveVCard());
}

TEST(oDataCall, TakesAliasAndBlockFieldsOverFromItsOwnNumber) {
  clsCollection table;
  const auto all = std::make_shared<oDataMSN>(), own = std::make_shared<oDataMSN>();
  all->Key = "all";
  all->BlockByMSN_b_BlockMainMenu = 2;
  own->Key = own->MSN = "77";
  own->color = 5;
  own->BlockByMSN_b_BlockNoNumber = true;
  const auto shown = [&](const char* msn) {
    oDataCall call;
    call.MSN = msn;
    call.GetMSNData(table);
    return call.MSNAlias + " " + std::to_string(call.MSNColor) + (call.MSN_BlockNoNumber ? " no number " : " ") +
           std::to_string(call.MSN_BlockMainMenu);
  };
  table.Add(own);
  EXPECT_EQ(shown("77"), "77 5 no number 0");
  const std::string unknown = " " + std::to_string(kMSNColorUnknown);
  EXPECT_THAT(shown("78"), testing::EndsWith(unknown + " 0"));
  table.Add(all);
  EXPECT_EQ(shown("78"), "78" + unknown + " 2");
}

TEST(oDataCall, ShowsItselfInTipsAndDates) {
  PlainNumbers numbers;
  oDataCall call(&numbers);
  call.DataNumber("0301");
  call.MSN = "77";
  call.MSNAlias = "Buero";
  call.CallDateTime = DateTime::FromCivil(2010, 8, 5, 9, 7, 3);
  EXPECT_EQ(call.CallDateView() + call.CallTimeView(), "05.08.201009:07:03");
  EXPECT_EQ(call.ToolTippHead() + ": " + call.ToolTippText(), "0301: MSN Buero 77");
  call.NameMode = kNamed;
  call.Name("Meier");
  call.Address("Weg 1");
  EXPECT_EQ(call.ToolTippHead() + ": " + call.ToolTippText(), "Meier: Weg 1\r\n0301\r\nMSN Buero 77");
  call.MutableCard().BookVCsDate2 = "05.08.";
  EXPECT_EQ(call.BookVCsDateFormated(1, FakeClock()) + call.BookVCsDateFormated(2, FakeClock()), "05.08.2024");
  for (const int direction : {0, 1, 2})
    CallCounting(call, direction);
  EXPECT_EQ(call.CallCountIn * 10 + call.CallCountOut, 11);
}

TEST(UnknownNumber, IsFoundAnywhereInAnyCase) {
  EXPECT_TRUE(IsUnknownNumber("unbekannt") && IsUnknownNumber("xUNBEKANNTx"));
  EXPECT_FALSE(IsUnknownNumber("") || IsUnknownNumber("0301"));
}

}  // namespace
}  // namespace vorlix
