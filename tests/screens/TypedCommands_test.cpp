#include "screens/TypedCommands.h"

#include <gmock/gmock.h>

#include "core/null_ports.h"
#include "fakes/BookOfNames.h"
#include "fakes/FakeClock.h"
#include "fakes/LineFakes.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class TypedCommandsTest : public testing::Test, public CallFeedView, public NoBlocking {
 protected:
  TypedCommandsTest() {
    settings.General.CallMode_CAPI = false;
    settings.General.CallMode_AVM = true;
  }

  void ShowLine(const std::string& line) override { shown.push_back(line); }
  std::string FuncBlocking_GetDescription(int code) override { return "Grund " + std::to_string(code); }

  std::shared_ptr<oDataCall> AddEntry(const std::string& number, const std::string& name) {
    const auto entry = std::make_shared<oDataCall>(&numbers);
    entry->DataNumber(number);
    entry->Key = number;
    entry->Name(name);
    entries.Add(entry);
    book.names[number] = name;
    return entry;
  }
  std::shared_ptr<oDataCall> AddCall(int minute, const std::string& number) {
    const auto call = std::make_shared<oDataCall>(&numbers);
    call->CallDateTime = DateTime::FromCivil(2026, 11, 21, 8, minute, 0);
    call->DataNumber(number);
    call->MSN = "1234";
    journal.insert(journal.begin(), call);
    return call;
  }
  std::vector<std::string> Run(const std::string& line) {
    shown.clear();
    commands.Run(line);
    return shown;
  }
  fakes::Tape Taken() { return std::exchange(tape, {}); }

  std::vector<std::string> shown;
  fakes::Tape tape;  // lines of the simulated router, without date and time
  FakeClock clock;
  Settings settings;
  PlainNumbers numbers;
  fakes::FewOwnNumbers ownNumbers;
  JournalCache cache;
  JournalFlags flags;
  BookOfNames book{cache, flags};
  clsCollection entries;
  TypedCommands::Calls journal;
  fSimulation simulation{{clock, settings, ownNumbers, [](int) {},
                          [this](const std::string& line) { tape.push_back(line.substr(line.find(';'))); },
                          [](const std::string&) {}, [] { return 0; }, [] {}}};
  bool isBusy = false;
  TypedCommands commands{{*this, numbers, ownNumbers, book, *this, simulation, [this] { return isBusy; },
                          [this](std::size_t count) {
                            journal.resize(std::min(journal.size(), count));
                            return journal;
                          },
                          [this]() -> const clsCollection& { return entries; }}};
};

TEST_F(TypedCommandsTest, ANumberIsShownHoweverPeopleWriteIt) {
  AddEntry("030123456", "M\xFCller")->CallCountIn = 7;
  for (const char* typed : {"030123456", " 030 / 123-456 ", "(030) 123.456"}) {
    EXPECT_THAT(Run(typed), ElementsAre("Nummer       030123456  [030123456]", "Ort          -",
                                        "Name         M\xFCller", "Adresse      -", "Anrufe       7 ein, 0 aus"))
        << typed;
  }
  EXPECT_THAT(Run("0171")[2], HasSubstr("nicht im Telefonbuch"));
}

TEST_F(TypedCommandsTest, WhatIsNoCommandAndNoNumberGetsTheListOfCommands) {
  EXPECT_THAT(Run(" \t "), IsEmpty());
  for (const char* typed : {"help", "+", "030x", "\x1B[2J", "ring abc"})
    EXPECT_THAT(Run(typed), SizeIs(5)) << typed;
  EXPECT_THAT(tape, IsEmpty());
}

TEST_F(TypedCommandsTest, TheJournalEndsWithTheNewestCall) {
  EXPECT_THAT(Run("journal"), ElementsAre("Es befinden keine Daten im Journal!"));
  AddCall(1, "0301");
  const auto dialled = AddCall(2, "0302");
  dialled->AVMDirection = CallDirection::kOutgoing;
  dialled->AVMCallperiod = 61;
  const auto refused = AddCall(3, "03\t03");
  refused->BlockIndex = 6;
  refused->NewCall = true;
  EXPECT_THAT(Run("JOURNAL"),
              ElementsAre("21.11.2026 08:01:00  ein  0301 an 1234", "21.11.2026 08:02:00  aus  0302 von 1234, 0:01:01",
                          "21.11.2026 08:03:00  ein  03 03 an 1234, Grund 6, neu"));
  EXPECT_THAT(Run("journal 2"), SizeIs(2));
  EXPECT_THAT(Run("journal -1"), SizeIs(1));
}

TEST_F(TypedCommandsTest, TheBookIsSearchedInNameAddressAndNumber) {
  EXPECT_THAT(Run("book"), ElementsAre("Kein Eintrag gefunden."));
  for (int i = 0; i < 22; ++i)
    AddEntry("0301" + std::to_string(i), "Gasthof");
  AddEntry("0171", "Anna")->Address("Am Markt");
  EXPECT_THAT(Run("book MARKT"), ElementsAre(HasSubstr("Anna")));
  EXPECT_THAT(Run("book 0171"), ElementsAre(HasSubstr("Anna")));
  EXPECT_THAT(Run("book gasthof"), SizeIs(21));
  EXPECT_EQ(shown.back(), "... 2 weitere");
}

TEST_F(TypedCommandsTest, RingTakesANumberAsItIsDialledWhileNobodyIsCalling) {
  isBusy = true;
  EXPECT_THAT(Run("ring 030 77"), SizeIs(1));
  EXPECT_FALSE(simulation.IsOpen());
  isBusy = false;
  EXPECT_THAT(Run("ring 030 77"), ElementsAre(HasSubstr("echte Anrufe nicht gesehen")));
  Run("ring 030123 77");
  EXPECT_THAT(Run("ring 0301"), ElementsAre("Keine Leitung frei."));
  Run("hang up");
  Run("ring +4312345");
  Run("ring");
  EXPECT_THAT(Taken(), ElementsAre(";RING;0;30;77;ISDN;", ";RING;0;030123;77;ISDN;", ";DISCONNECT;0;15;",
                                   ";DISCONNECT;0;15;", ";RING;0;004312345;;ISDN;", ";RING;0;;;ISDN;"));
}

TEST_F(TypedCommandsTest, AForgottenSimulationEndsByItself) {
  const auto isOpenAfter = [&](int seconds) {
    for (int second = 0; second < seconds; ++second)
      commands.TimerTick();
    return simulation.IsOpen();
  };
  Run("ring 030123 77");
  EXPECT_TRUE(isOpenAfter(TypedCommands::kSecondsOfASimulation - 1));
  EXPECT_FALSE(isOpenAfter(1));
  EXPECT_THAT(Taken(), SizeIs(2));
  simulation.Form_Load();  // by its window, which ends it
  EXPECT_TRUE(isOpenAfter(TypedCommands::kSecondsOfASimulation + 1));
}

}  // namespace
}  // namespace vorlix
