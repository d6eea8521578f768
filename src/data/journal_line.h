// One line of the journal file, as text and as a record. Ten fields, separated by TAB:
//
//   date, time, number, own number, block function, service, new-call mark, note, direction, period
//
// The mark is "1" for a call not yet seen and "2" for one that the service took. Lines of old versions and of
// remote-control calls end with the note. Whatever bytes a field was given, none can end the field or the line: control
// characters become blanks, a note's line ends and TABs are written as "<CR>" and "<TB>".
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/oDataCall.h"

namespace vorlix {

// The fields of a line, which must outlive them; what stands behind the tenth is left out.
struct JournalFields {
  explicit JournalFields(std::string_view line);
  std::array<std::string_view, 10> text;
  std::size_t count = 0;
};

// Whether the fields make a record, at least eight of them; repairs an empty new-call mark.
bool J_CheckItem(JournalFields& fields);

// A note between its form on the screen and its form in the file.
std::string NotizParsing(bool toFile, std::string_view text);

// Fields 0 to 3, the same in every form of a line.
std::string JournalLineHead(const oDataCall& call);
// Fields 7 to 9.
std::string JournalLineTail(const oDataCall& call);
// A line of a rewritten file with its line end; all ten fields, whatever the line had before.
std::string RewrittenJournalLine(const oDataCall& call, bool resetViewed);

// The record of a line, or nothing if it is none. The note stays in file form. `analysis` must outlive the record.
std::shared_ptr<oDataCall> ReadJournalLine(std::string_view line, NumberAnalysis& analysis);

// The lines of a journal in the order of the file; the text must outlive them. An editor may have left LF alone, and
// the lines since then end in CR LF: both end a line.
std::vector<std::string_view> JournalLines(std::string_view text);

}  // namespace vorlix
