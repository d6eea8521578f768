#include "app/SettingsSwitches.h"

namespace vorlix {

PipelineOptions PipelineSettings::Read() const {
  const auto& general = settings_.General;
  const auto& sound = settings_.Sound;
  PipelineOptions options;
  options.CallMode_CAPI = general.CallMode_CAPI;
  options.SimWrite = general.SimWrite;
  options.RejectedCallsDontShow = general.RejectedCallsDontShow;
  options.RejectedCallsDontBatch = general.RejectedCallsDontBatch;
  options.HideAllw = general.HideAllw;
  options.AsBaloon = general.AsBaloon;
  options.AutoSearch = general.AutoSearch;
  options.NewCalls = general.NewCalls;
  options.CAPIReset = general.CAPIReset;
  options.BookRefresh = bookRefresh_;
  options.CopyOption = general.CopyOption;
  options.CopyOptionMode = general.CopyOptionMode;
  options.HideTimeTray = general.HideTimeTray;
  options.myVWL = general.myVWL;
  options.myVWO = general.myVWO;
  options.ViewDataByCall = settings_.Journal.ViewDataByCall;
  options.Export = settings_.Export.Export;
  options.ExportCSV = settings_.Export.ExportCSV;
  options.AutoOpenPlan = settings_.Maps.AutoOpenPlan;
  options.AutoOpenRoute = settings_.Maps.AutoOpenRoute;
  options.HideByCall = settings_.MaxiDisplay.HideByCall;
  options.ByCall = sound.ByCall;
  options.ByBlock = sound.ByBlock;
  options.Repeat = sound.Repeat;
  options.PersonalUse = sound.PersonalUse;
  options.PersonalFail = sound.PersonalFail;
  options.SndCall = sound.SndCall;
  options.SndVipCall = sound.SndVipCall;
  options.SndBlock = sound.SndBlock;
  options.mnuBlockAll = general.BlockAll;
  options.mnuBlockAllByTime = general.BlockAllByTime;
  options.mnuNoFunctionBatch = general.MenuNoBatch;
  options.mnuNoFunctionMail = general.MenuNoMail;
  options.mnuSilentMode = general.SilentMode;
  options.startedByAuto = startedByAuto_;
  return options;
}

LineOptions LineSettings::Read() const {
  const auto& general = settings_.General;
  return {.CallMode_CAPI = general.CallMode_CAPI,
          .AVM_SaveOutgoingCalls = general.AVM_SaveOutgoingCalls,
          .Debug = general.Debug,
          .DebugAVM = general.DebugAVM,
          .DebugNCID = general.DebugNCID,
          .SpezialCuttNull = general.SpezialCuttNull,
          .NoIntern = general.NoIntern,
          .MSNLO = general.MSNLO,
          .TKnum = general.TKnum,
          .LogCount = general.LogCount,
          .myVWO = general.myVWO,
          .myVWOP = general.myVWOP,
          .BusyOnBusy = general.BusyOnBusy,
          .SpezialAddAreaCodeIfHide = general.SpezialAddAreaCodeIfHide,
          .CapiReleaseByShutdown = general.CapiReleaseByShutdown,
          .ControllerActive = general.ControllerActive};
}

LineStates SourceStates::Read() const {
  const auto& general = settings_.General;
  // A source whose helper is missing is off for this run; that it is wanted must be seen all the same.
  return {.CAPI = {general.CallMode_CAPI, capi_.IsUp()},
          .AVM = {general.CallMode_AVM || helpers_.IsMissing(kSourceAVM), helpers_.IsUp(kSourceAVM)},
          .NCID = {general.CallMode_NCID || helpers_.IsMissing(kSourceNCID), helpers_.IsUp(kSourceNCID)}};
}

ClockOptions ClockSettings(const Settings& settings) {
  ClockOptions options;
  options.UpdateAuto = settings.Update.Auto;
  options.UpdateDays = settings.Update.Days;
  options.UpdateLast = settings.Update.Last;
  options.Backup = static_cast<JournalPeriod>(settings.Journal.Backup);
  options.JournalDate = settings.Journal.Date;
  options.Max12 = settings.Journal.Max12;
  options.ErrorMessageShow = settings.ErrorMessage.Show;
  options.mnuNoFunctionMail = settings.General.MenuNoMail;
  return options;
}

}  // namespace vorlix
