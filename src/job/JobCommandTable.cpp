#include "job/JobCommandTable.h"

#include "job/JobCommandAbort.h"
#include "job/JobCommandBreak.h"
#include "job/JobCommandElse.h"
#include "job/JobCommandFor.h"
#include "job/JobCommandForeach.h"
#include "job/JobCommandIf.h"
#include "job/JobCommandWhile.h"

namespace JobLayer {

std::span<const JobCommandRow> jobCommandTable() {
  // The whole order is Define, Expand, Action, Menu, MenuItem, Separator, PickupMenu, Shell,
  // OpenFolder, OpenFile, Pickup, AskMessage, PutMessage, InputText, If, Else, While, For, Foreach,
  // Break, ToClipboard, PopupWindow, QuitLauncher, AbortExecution, RebootLauncher.
  static constexpr JobCommandRow rows[] = {
      jobCommandIf,      //
      jobCommandElse,    //
      jobCommandWhile,   //
      jobCommandFor,     //
      jobCommandForeach, //
      jobCommandBreak,   //
      jobCommandAbort,   //
  };
  return rows;
}

} // namespace JobLayer
