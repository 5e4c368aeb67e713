#include "job/JobMenuList.h"

#include "job/JobCommand.h"
#include "job/JobIconSource.h"
#include "job/JobVariableExpander.h"
#include "job/JobWindowContext.h"

#include <memory>

namespace JobLayer {

bool JobMenuUnit::IsSameList(const JobParamList& list) const {
  return params.isSameList(list);
}

void JobMenuUnit::readValues(const JobExecutorPair& caller) {
  JobVariableExpander expander(caller);
  title = expander.expandAndStore(params.text("Title"_text));
  const RawString iconFile = params.text("IconFile"_text);
  if (iconFile.isEmpty()) return;
  const RawString file = expander.expandAndStore(iconFile);
  const RawString index = expander.expandAndStore(params.text("IconIndex"_text));
  icon = JobIconSource::iconNumber(file, decimalIndexOf(index));
}

bool JobMenuPopupMenu::IsSameList(const JobParamList& list) const {
  return source.isSameList(list);
}

JobParamList JobMenuPopupMenu::converted(const JobParamList& block) {
  JobParamList list;
  for (const JobParamUnit& unit : block.elements()) {
    if (unit.key.equals("Separator"_text)) {
      list.addBlock("Separator"_text, JobParamList());
    } else if (unit.type() == JobParamUnit::TypeText) {
      JobParamList choice;
      choice.addText("Pickup"_text, static_cast<const JobParamText&>(unit).value);
      JobParamList item;
      item.addText("Title"_text, unit.key);
      item.addBlock("Define"_text, choice);
      list.addBlock("MenuItem"_text, item);
    }
  }
  return list;
}

JobMenuList& JobMenuList::instance() {
  static JobMenuList list;
  return list;
}

JobMenuUnit* JobMenuList::findId(int32_t id) const {
  for (JobMenuUnit& unit : elements())
    if (unit.id == id) return &unit;
  return nullptr;
}

JobMenuSubMenu* JobMenuList::findMenu(const JobParamList& block) const {
  for (JobMenuUnit& unit : elements())
    if (unit.type == JobMenuUnit::TypeMenu && unit.IsSameList(block))
      return static_cast<JobMenuSubMenu*>(&unit);
  return nullptr;
}

void JobMenuList::hangInto(JobMenuSubMenu& parent, const JobMenuSubMenu& child) {
  parent.handle.appendSubmenu(child.handle, static_cast<uint32_t>(child.id));
}

bool JobMenuList::runMenu(const JobParamList& block, bool isPickup, JobParamExecutor& executor,
                          const JobExecutorPair& caller) {
  JobMenuSubMenu* menu = findMenu(block);
  JobMenuSubMenu* const outer = current;
  if (!menu) {
    const int32_t id = ++counter;
    menu = isPickup ? new JobMenuPopupMenu(id, block) : new JobMenuSubMenu(id, block);
    menu->readValues(caller);
    append(menu);
    current = menu;
    const JobParamList script = menu->params;
    const bool built = executor.Execute(script, caller);
    current = outer;
    if (!built) return false; // it stays as it is and is found half built
  }
  if (!outer) return show(*menu, executor, caller);
  hangInto(*outer, *menu);
  return true;
}

bool JobMenuList::addItem(const JobParamList& block, const JobExecutorPair& caller) {
  if (!current) return false;
  auto item = std::make_unique<JobMenuItem>(++counter, block);
  item->readValues(caller);
  current->handle.appendItem(static_cast<uint32_t>(item->id));
  append(item.release());
  return true;
}

bool JobMenuList::addSeparator() {
  if (!current) return false;
  current->handle.appendSeparator();
  return true;
}

bool JobMenuList::show(JobMenuSubMenu& menu, JobParamExecutor& executor,
                       const JobExecutorPair& caller) {
  JobIconSource::requestMenuRepaint();
  const auto id = static_cast<int32_t>(JobWindowContext::instance().TrackMenu(menu.handle));
  const JobMenuUnit* chosen = id == 0 ? nullptr : findId(id);
  if (!chosen) return false;
  const JobParamList script = chosen->params;
  return executor.Execute(script, caller);
}

} // namespace JobLayer
