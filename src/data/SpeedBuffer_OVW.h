// The numbers that were analysed once, kept in "\data\cache.ovw" beyond the end of the program: the same caller costs
// one analysis. What comes from the file has no rest of the number and no place or country of its own; the shown texts
// hold them.
#pragma once

#include <memory>
#include <string>

#include "core/oDataNumber.h"
#include "data/clsFiles.h"

namespace vorlix {

class SpeedBuffer_OVW {
 public:
  // `path` is the file's real path; `files` must outlive the object.
  SpeedBuffer_OVW(clsFiles& files, std::string path) : files_(files), path_(std::move(path)) {}

  // The record of a number, or nothing when there is none or the file had no code for it. Good until the buffer
  // changes.
  const oDataNumber* Find(const std::string& number) const;
  // Keeps a record under its DataNumber, in place of one that Find does not give.
  void Keep(const std::string& number, const NumberTexts& texts);

  // Adds what the file holds. A file in the old format, fields between ";", is deleted.
  void Load();
  // Rewrites the file. A record with a "|" or a line end in it is left out: the file could not give it back.
  void Save();
  std::size_t Count() const { return records_.Count(); }
  void Clear() { records_.Clear(); }

 private:
  clsFiles& files_;
  std::string path_;
  clsCollection records_;
};

}  // namespace vorlix
