#include "companions/SocketNCID/NCIDLines.h"

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/MessageLink.h"
#include "services/text.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// Own number and number of the call that is handed over; "-" where none is.
std::string CallOf(const std::string& line) {
  const auto lines = NCIDLinesToHandOver(line);
  if (lines.size() != 1) return "-";
  const auto fields = Split(lines[0], "*");
  return fields.size() > 8 && fields[5] == "LINE" && fields[7] == "NMBR" ? fields[6] + "|" + fields[8] : lines[0];
}

TEST(NCIDLines, AnnouncementsOfCallsAreHandedOverAndNothingElse) {
  const std::string rest = " *DATE*11212026*TIME*0220*LINE*GW0*NMBR*03012345*MESG*NONE*NAME*Caller*";
  for (const char* label : {"CID:", "PID:", "RID:"})
    EXPECT_THAT(NCIDLinesToHandOver(label + rest), ElementsAre(label + rest));
  // A second call on a busy line: there is one at a time, so the first ends. One that was hung up is over at once.
  EXPECT_THAT(NCIDLinesToHandOver("WID:" + rest), ElementsAre("HUP", "WID:" + rest));
  EXPECT_THAT(NCIDLinesToHandOver("HUP:" + rest), ElementsAre("HUP", "HUP:" + rest, "HUP"));
  for (const char* label : {"CIDLOG:", "HUPLOG:", "OUT:", "BLK:", "END:", "CIDINFO:", "MSG:", "cid:", " CID:", "xCID:",
                            "CID", "200 Server:", "MSG: CID:", ""})
    EXPECT_THAT(NCIDLinesToHandOver(label + rest), IsEmpty()) << label;
  for (const char* line : {"CID:", "CID: text", "CID: *", "CID: * *TEXT*030*", "HUP: text", "", ":"})
    EXPECT_THAT(NCIDLinesToHandOver(line), IsEmpty()) << line;
}

TEST(NCIDLines, FieldsComeInAnyOrderWithStarsInAndBeforeThemAndAWordInPlaceOfANumberIsAWithheldOne) {
  for (const auto& [line, call] : {
           std::pair{"CID: *DATE*22102010*TIME*1502*LINE**NMBR*0899*MESG*NONE*NAME*NO NAME*", "|0899"},
           {"CID: ***DATE*03032022*TIME*0935*LINE*WC09*NMBR*4185*MESG*NONE*NAME*X*", "WC09|4185"},
           {"CID: *DATE*06252005*TIME*1312*NMBR*1407*MESG*NONE*NAME*NO LINE*", "|1407"},
           {"CID: *NAME*X*MESG*NONE*NMBR*0301*FNMBR*030-1*CTRY*DE*LINE*7*TIME*1*DATE*1*", "7|0301"},
           {"CID:*line*7*Nmbr*0301", "7|0301"},
           {"CID: *LINE*7*NMBR***622*MESG*NONE*NAME*Phone*", "7|622"},
           {"CID: *LINE*A*B*NMBR*1212*MESG*NONE*NAME*Star*Name*", "A|1212"},
           {"CID: *LINE*7*NMBR*0301*MESG*NONE*NAME*x*NMBR*0999*LINE*8*", "7|0301"},
           {"CID: *LINE*LINE*NMBR*0301*", "LINE|0301"},
           {"CID: *LINE**NMBR**MESG*NONE*", "|"},
           {"CID: *LINE*7*NMBR*+49 30 123*", "7|+4930123"},
           {"CID: *LINE*B\xC3\xBCro \xFC*NMBR*1*", "B\xFCro \xFC|1"},
           {"CID: *LINE*7*NMBR", "7|"},
           {"CID: *LINE*7*NMBR***", "7|"},
           {"CID: *LINE*7*NMBR*OUT-OF-AREA*MESG*NONE*NAME*PRIVATE 1*", "7|"},
           {"CID: *LINE*7*NMBR*-*MESG*NONE*NAME*1*", "7|"},
           {"CID: *LINE*7*NMBR*NO NUMBER*MESG*NONE*NAME*1*", "7|"},
       })
    EXPECT_EQ(CallOf(line), call) << line;
}

TEST(NCIDLines, WhateverAServerWritesTheNumberFitsIntoAMessage) {
  std::string line = "CID: ";
  for (const char* key : {"NAME", "MESG", "DATE", "TIME", "LINE"})
    line += "*" + std::string(key) + "*" + std::string(300, '9');
  const auto lines = NCIDLinesToHandOver(line + "*NMBR*0301234567*");
  ASSERT_THAT(lines, SizeIs(1));
  EXPECT_LE(lines[0].size(), MessageLink::kMostText);
  EXPECT_THAT(lines[0], testing::HasSubstr("*NMBR*0301234567*MESG*"));
}

TEST(NCIDLines, NoLineOfAnyShapeGivesMoreThanACall) {
  std::mt19937 random(3);
  const std::string words[] = {"*", "*NMBR*", "*LINE*", "**", "\xC3", "0171", "MESG", "PRIVATE"};
  int calls = 0;
  for (int i = 0; i < 20000; ++i) {
    std::string line = "CID: ";
    for (unsigned k = random() % 10; k > 0; --k)
      line += random() % 4 == 0 ? std::string(1, static_cast<char>(random() % 256)) : words[random() % 8];
    for (const std::string& text : NCIDLinesToHandOver(line)) {
      ++calls;
      EXPECT_TRUE(text.starts_with("CID: *DATE*") && Split(text, "*").size() == 14) << text;
    }
  }
  EXPECT_GT(calls, 1000);
}

}  // namespace
}  // namespace vorlix
