#include "app/SingleCopy.h"

#include "app/SystemFolders.h"
#include "platform/HelperProtocol.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"

namespace vorlix {

SingleCopy::Outcome SingleCopy::Take(MessageLink::Receiver& receiver, Manner manner) {
  if (folders_.ProgramData().empty() || folders_.ProgramFolder().empty()) {
    fault_ = LoadLangKey("Message_ErrorMakeDir", "Verzeichnis konnte nicht angelegt werden!"_ansi);
    return Outcome::kFailed;
  }
  const WindowHandle handle = HandleForText(CanonicalFolder(folders_.ProgramData()));
  const LinkOpening opening = link_.Open(handle, receiver, manner == Manner::kTakeOver);
  if (opening) return Outcome::kTaken;
  if (opening.state == LinkOpening::State::kInUse) {
    if (manner == Manner::kBringToFront) link_.Send(handle, kComeForward, {});
    return Outcome::kOtherRuns;
  }
  ErrorHandling().ErrorLogForceWrite("SingleCopy.Take", {handle}, 0, opening.reason);
  fault_ =
      LoadLangKey("Message_ErrorEndpoint", "Die Verbindung für die Hilfsprogramme kann nicht angelegt werden:"_ansi) +
      " " + opening.reason;
  return Outcome::kFailed;
}

}  // namespace vorlix
