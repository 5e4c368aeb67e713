#include "job/JobCommandTable.h"

#include "job/JobCommandAbort.h"
#include "job/JobCommandAction.h"
#include "job/JobCommandAskMessage.h"
#include "job/JobCommandBreak.h"
#include "job/JobCommandDefine.h"
#include "job/JobCommandElse.h"
#include "job/JobCommandExpand.h"
#include "job/JobCommandFor.h"
#include "job/JobCommandForeach.h"
#include "job/JobCommandIf.h"
#include "job/JobCommandInputText.h"
#include "job/JobCommandMenu.h"
#include "job/JobCommandMenuItem.h"
#include "job/JobCommandOpenFile.h"
#include "job/JobCommandOpenFolder.h"
#include "job/JobCommandPickup.h"
#include "job/JobCommandPickupMenu.h"
#include "job/JobCommandPopupWindow.h"
#include "job/JobCommandPutMessage.h"
#include "job/JobCommandQuit.h"
#include "job/JobCommandReboot.h"
#include "job/JobCommandSeparator.h"
#include "job/JobCommandShell.h"
#include "job/JobCommandToClipboard.h"
#include "job/JobCommandWhile.h"

namespace JobLayer {

std::span<const JobCommandRow> jobCommandTable() {
  static constexpr JobCommandRow rows[] = {
      jobCommandDefine,      //
      jobCommandExpand,      //
      jobCommandAction,      //
      jobCommandMenu,        //
      jobCommandMenuItem,    //
      jobCommandSeparator,   //
      jobCommandPickupMenu,  //
      jobCommandShell,       //
      jobCommandOpenFolder,  //
      jobCommandOpenFile,    //
      jobCommandPickup,      //
      jobCommandAskMessage,  //
      jobCommandPutMessage,  //
      jobCommandInputText,   //
      jobCommandIf,          //
      jobCommandElse,        //
      jobCommandWhile,       //
      jobCommandFor,         //
      jobCommandForeach,     //
      jobCommandBreak,       //
      jobCommandToClipboard, //
      jobCommandPopupWindow, //
      jobCommandQuit,        //
      jobCommandAbort,       //
      jobCommandReboot,      //
  };
  return rows;
}

} // namespace JobLayer
