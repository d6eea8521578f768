// The tables of the numbering plans: countries, area codes of each country, images of the networks. They are plain text
// below "\base\", edited by hand: one record a line, fields between "|", lines that begin with ";" are comments. What a
// line lacks stays empty; control characters in it become blanks; blanks around a field are dropped.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "data/Folders.h"
#include "data/PrefixIndex.h"
#include "data/clsFiles.h"

namespace vorlix {

struct StateRow {
  std::string Code;    // with its "00"
  std::string second;  // kept, of no use to the analysis
  std::string Name;
  std::string Flag;  // file name of the image
};

struct AreaRow {
  std::string Code;  // without a leading zero
  std::string Name;
};

// Rows in file order, searched as if from the last to the first.
template <class Row>
class CodeTable {
 public:
  // A file that is missing or has no record leaves one empty row, which no number finds.
  CodeTable() : rows_(1) {}
  // Rows with a longer code stand in the table, but no number finds them.
  explicit CodeTable(std::vector<Row> rows, std::size_t longestCode = std::string::npos)
      : rows_(std::move(rows)), hasRecords_(!rows_.empty()) {
    std::vector<PrefixIndex::Code> codes;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      if (rows_[i].Code.size() <= longestCode) codes.push_back({rows_[i].Code, i});
    }
    index_ = PrefixIndex(std::move(codes));
    if (!hasRecords_) rows_.resize(1);
  }

  bool HasRecords() const { return hasRecords_; }
  const std::vector<Row>& Rows() const { return rows_; }
  // The first row from the end whose code begins the text, or nothing.
  const Row* Find(std::string_view text) const {
    const std::size_t row = index_.LastRow(text);
    return row == PrefixIndex::kNoRow ? nullptr : &rows_[row];
  }

 private:
  std::vector<Row> rows_;
  bool hasRecords_ = false;
  PrefixIndex index_;
};

std::vector<StateRow> ReadStates(std::string_view text);
std::vector<AreaRow> ReadAreas(std::string_view text);

// The logical name of a country's area codes; the country without "00".
std::string AreaFileName(std::string_view country);

// The area codes of foreign countries. A file is read again only once it has changed.
class ForeignAreas {
 public:
  // Both must outlive the object.
  ForeignAreas(clsFiles& files, const Folders& folders) : files_(files), folders_(folders) {}

  // The table of a country, its code with or without "00"; nothing when there is no file or no row in it. Good until
  // the next call.
  const CodeTable<AreaRow>* Load(std::string_view country);

 private:
  struct Loaded {
    std::string path;
    FileInfo info;
    CodeTable<AreaRow> table;
  };
  void Read(Loaded& loaded, const FileInfo& info);

  clsFiles& files_;
  const Folders& folders_;
  std::map<std::string, Loaded, std::less<>> loaded_;
};

// Which network a national number belongs to, as "key=image" lines.
class Provider {
 public:
  Provider() = default;
  explicit Provider(std::string_view text);

  // The image's file name of the first line whose key stands behind the number's first character, as a rule its zero,
  // or is the number; empty where no line does. A leading zero of a line is dropped in the table itself, one each time
  // that the line is looked at.
  std::string ImageOf(std::string_view number);

 private:
  std::vector<std::string> lines_;
};

}  // namespace vorlix
