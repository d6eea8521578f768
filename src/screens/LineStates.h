// How the sources of calls stand, as the display asks for it.
#pragma once

namespace vorlix {

// The sources in use and whether their line is up.
struct LineStates {
  struct One {
    bool used = false;
    bool up = false;
    bool IsLost() const { return used && !up; }
  };
  One CAPI, AVM, NCID;
  bool IsLineLost() const { return CAPI.IsLost() || AVM.IsLost() || NCID.IsLost(); }
};

class LineStateSource {
 public:
  virtual ~LineStateSource() = default;
  virtual LineStates Read() const = 0;
};

}  // namespace vorlix
