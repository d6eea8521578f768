#include "data/modVCard.h"

#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "fakes/BookFakes.h"

namespace vorlix {
namespace {

const std::string kCard =
    "1;;Anna Meier;1;Geburtstag;24.12./1970;0;Hochzeit;01.05./1999;1;;/;Zeile 1<CR>Zeile 2;;anna.jpg";
const std::string kLink = "1;030111;;;;;;;;;;;;;";

std::shared_ptr<oDataCall> Entry(const std::string& number, std::string_view data) {
  const auto item = std::make_shared<oDataCall>();
  item->DataNumber(number);
  item->Key = number;
  if (!data.empty()) item->MutableCard().BookVCardData = data;
  BookAddVCardToItem(*item);
  return item;
}

std::string Show(const CallCard& card) {
  const auto term = [](bool active, const std::string& name, const std::string& date, const std::string& year) {
    return (active ? "|+" : "|-") + name + " " + date + " " + year;
  };
  return (card.BookVCbCallActive ? "+|" : "-|") + card.BookVCardLinkNumber + " " + card.BookVCsName +
         term(card.BookVCbActiv1, card.BookVCsTermName1, card.BookVCsDate1, card.BookVCsYear1) +
         term(card.BookVCbActiv2, card.BookVCsTermName2, card.BookVCsDate2, card.BookVCsYear2) +
         term(card.BookVCbActiv3, card.BookVCsTermName3, card.BookVCsDate3, card.BookVCsYear3) + "|" +
         card.BookVCsNote + "|" + card.BookVCsImage + (card.BookVCardLogo ? " +" : " -");
}

TEST(modVCardTest, ReadsCardsOfAnyAge) {
  using Case = std::tuple<std::string, std::string>;
  for (const auto& [data, card] :
       {Case{kCard, "+| Anna Meier|+Geburtstag 24.12. 1970|-Hochzeit 01.05. 1999|+  |Zeile 1\r\nZeile 2|anna.jpg +"},
        Case{"0;;A;1;24.12./1970;1;T2;01.05.;0;T3;02.06./1/2;N1;N2;a.jpg",  // without the first term's name
             "-| A|+Geburtstag 24.12. 1970|+T2 01.05. |-T3 02.06. 1|N1\r\nN2|a.jpg +"},
        Case{kLink, "+|030111 |-  |-  |-  || -"}, Case{"1;;A", "+| A|-Geburtstag  |-  |-  || -"},
        Case{";", "-| |-Geburtstag  |-  |-  || -"}, Case{"", "-| |-  |-  |-  || -"}}) {
    EXPECT_EQ(Show(Entry("1", data)->Card()), card) << data;
  }
}

TEST(modVCardTest, WritesWhatItReadsAndDropsALinkToItself) {
  EXPECT_EQ(BookEditMakeVCardString(*Entry("030222", kCard)), kCard);
  EXPECT_EQ(BookEditMakeVCardString(*Entry("030222", kLink)), kLink);
  EXPECT_EQ(BookEditMakeVCardString(*Entry("030222", "")), "");
  const auto self = Entry("030111", kLink);
  EXPECT_EQ(BookEditMakeVCardString(*self), "1;;;0;;/;0;;/;0;;/;;;");
  EXPECT_EQ(self->Card().BookVCardLinkNumber, "");
}

TEST(modVCardTest, NoTextOfACardCanEndItsFieldOrTheCard) {
  const auto item = Entry("1", kCard);
  CallCard& card = item->MutableCard();
  card.BookVCsName = std::string("a;b\0c\r\nd)vcd]e", 14);
  card.BookVCsDate1 = "24/12/";
  card.BookVCsNote = "x\ny\r\nz\r;";
  card.BookVCsImage = "[vcd(;";
  EXPECT_EQ(BookEditMakeVCardString(*item),
            std::string("1;;a b\0c  d vcd]e;", 18) +
                "1;Geburtstag;24.12./1970;0;Hochzeit;01.05./1999;1;;/;x<CR>y<CR>z<CR> ;;[vcd  ");
}

TEST(modVCardTest, TheCollectionHoldsMastersAndADeletedMasterTakesItsLinksWithIt) {
  clsCollection book;
  const auto linked = Entry("030222", kLink);
  for (const auto& item : {Entry("030111", kCard), linked, Entry("030333", ""), Entry("030444", "1;0301;;;")})
    book.Add(item);
  book.AddByKeyValue("text", "no entry");
  NotedProgress progress;
  modVCard cards([&]() -> const clsCollection& { return book; }, progress);
  for (const bool isUp : {false, true}) {
    progress.up = isUp;
    cards.LoadVCardArray();
    ASSERT_EQ(cards.VCardArray().Count(), 1u);
    EXPECT_EQ(progress.shown.empty(), !isUp);
  }
  EXPECT_EQ(cards.VCardArray().ItemByKeyAs<oDataCall>("030111")->Card().BookVCsName, "Anna Meier");

  const auto copy = std::make_shared<oDataCall>(*linked);
  for (const char* deleted : {"", "030111"})
    vCardsRemove_LinksWithoutMaster(book, deleted);
  EXPECT_TRUE(book.ItemByKeyAs<oDataCall>("030111")->HaveVCard());
  EXPECT_EQ(BookEditMakeVCardString(*linked) + linked->Card().BookVCardData, "");
  EXPECT_EQ(book.ItemByKeyAs<oDataCall>("030444")->Card().BookVCardLinkNumber, "0301");
  EXPECT_EQ(copy->Card().BookVCardLinkNumber, "030111");  // a call that shows the card keeps it
}

}  // namespace
}  // namespace vorlix
