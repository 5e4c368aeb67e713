// JobMenuList: the popup menus of scripts, built once for each parameter list and kept for the life
// of the process. JobMenuUnit: one node of them, a menu or an entry. Main thread only; nodes are
// made and never removed.
#pragma once

#include "job/JobExecutorPair.h"
#include "job/JobParam.h"
#include "raw/RawList.h"
#include "win/WinMenuHandle.h"

namespace JobLayer {

class JobParamExecutor;

class JobMenuUnit {
 public:
  enum Type : int32_t { TypeSeparator = 0, TypeItem = 1, TypeMenu = 2 };
  int32_t type;
  int32_t id; // of the menu command
  RawString title;
  JobParamList params; // the block, shared
  int32_t icon = -1;

  JobMenuUnit(int32_t nodeType, int32_t nodeId, const JobParamList& block)
      : type(nodeType), id(nodeId), params(block) {}
  virtual ~JobMenuUnit() = default;
  // Whether this node came from that very list: its identity counts, not its content.
  [[nodiscard]] virtual bool IsSameList(const JobParamList& list) const;
  // Expands the title and asks for the icon, in the name of the command that makes the node.
  void readValues(const JobExecutorPair& caller);
};

class JobMenuItem : public JobMenuUnit {
 public:
  JobMenuItem(int32_t nodeId, const JobParamList& block) : JobMenuUnit(TypeItem, nodeId, block) {}
};

class JobMenuSubMenu : public JobMenuUnit {
 public:
  WinLayer::WinMenuHandle handle;
  JobMenuSubMenu(int32_t nodeId, const JobParamList& block)
      : JobMenuUnit(TypeMenu, nodeId, block) {}
};

class JobMenuPopupMenu : public JobMenuSubMenu {
 public:
  JobParamList source; // the block as the script wrote it; `params` is converted from it
  JobMenuPopupMenu(int32_t nodeId, const JobParamList& block)
      : JobMenuSubMenu(nodeId, converted(block)), source(block) {}
  [[nodiscard]] bool IsSameList(const JobParamList& list) const override;
  // Entries become items that define Pickup; "Separator" of either kind a separator.
  static JobParamList converted(const JobParamList& block);
};

class JobMenuListAllocator : public RawLayer::RawListAllocator<JobMenuUnit> {
 public:
  void destroy(JobMenuUnit* element) override { delete element; }
};

class JobMenuList : public RawLayer::RawListR<JobMenuListAllocator, JobMenuUnit> {
 public:
  int32_t counter = 0;               // the last id given
  JobMenuSubMenu* current = nullptr; // the menu that is being built

  static JobMenuList& instance();
  [[nodiscard]] JobMenuUnit* findId(int32_t id) const; // null when missing
  // The whole of the commands Menu (`isPickup` false) and PickupMenu: finds or builds the menu of
  // the block; inside another one it is hung in there, else it is shown and the choice is run.
  bool runMenu(const JobParamList& block, bool isPickup, JobParamExecutor& executor,
               const JobExecutorPair& caller);
  // Each false outside a menu.
  bool addItem(const JobParamList& block, const JobExecutorPair& caller);
  bool addSeparator();

 private:
  [[nodiscard]] JobMenuSubMenu* findMenu(const JobParamList& block) const;
  static void hangInto(JobMenuSubMenu& parent, const JobMenuSubMenu& child);
  bool show(JobMenuSubMenu& menu, JobParamExecutor& executor, const JobExecutorPair& caller);
};

} // namespace JobLayer
