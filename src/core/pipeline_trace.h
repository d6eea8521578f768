// The pipeline's trace lines, each in the category that the user switches on.
#pragma once

#include <string>
#include <string_view>

#include "services/clsErrorHandling.h"

namespace vorlix::trace {

inline void AVM(std::string_view text) {
  ErrorHandling().LogDebug_AVM(text);
}
inline void NCID(std::string_view text) {
  ErrorHandling().LogDebug_NCID(text);
}
inline void Export(std::string_view text) {
  ErrorHandling().LogDebug_Export(text);
}

// "CAPI Debug " and the text; built only when somebody reads it.
inline void CAPI(std::string_view text) {
  if (ErrorHandling().Switches.LogCAPI) ErrorHandling().LogDebug_CAPI("CAPI Debug " + std::string(text));
}
inline void NewCall(std::string_view step) {
  if (ErrorHandling().Switches.LogCAPI) CAPI("CAPIConnect Helper " + std::string(step));
}
inline void EndFrame(std::string_view mark) {
  if (ErrorHandling().Switches.LogCAPI) CAPI("CAPIDisconnect Helper " + std::string(mark));
}
inline void CallEnd(std::string_view step) {
  if (ErrorHandling().Switches.LogCAPI) CAPI("CAPIDisconnect - " + std::string(step));
}
// For whoever follows the export or the call.
inline void JournalWrite(std::string_view step) {
  if (ErrorHandling().Switches.LogExport) {
    Export(step);
  } else {
    ErrorHandling().LogDebug_CAPI(step);
  }
}
inline void Blocking(std::string_view step) {
  if (ErrorHandling().Switches.LogOther) ErrorHandling().LogDebug_Other("Get blocking " + std::string(step));
}

}  // namespace vorlix::trace
