// WinInputLayout: where the parts of an input form stand. Pure arithmetic in pixels over the sizes
// that the parts measured themselves.
//
//   WinInputLayout layout;
//   layout.margin = 4;
//   layout.prompt = {120, 18};
//   layout.rows.push_back({{40, 18}, {20, 20}, {20, 20}});
//   layout.finish = layout.cancel = {50, 24};
//   layout.compute();
#pragma once

#include "win/WinRect.h"

#include <vector>

namespace WinLayer {

class WinInputLayout {
 public:
  struct Row {
    WinSize label;
    WinSize edit;
    WinSize hint; // no width: the row has no button
    WinRect labelRect{};
    WinRect editRect{};
    WinRect hintRect{};
  };

  // --- What is to be placed
  int32_t margin = 0;
  WinSize prompt; // no height: there is none
  std::vector<Row> rows;
  WinSize finish;
  WinSize cancel;

  // --- Where it stands: prompt and rows in their area, buttons in theirs, both from (0, 0)
  WinSize fields; // the area's own size, before the two are joined
  WinSize buttons;
  WinRect promptRect;
  WinRect finishRect;
  WinRect cancelRect;
  WinRect fieldsArea; // in the client, both as wide as the wider
  WinRect buttonsArea;
  WinSize client;

  void compute();

 private:
  void placeFields();
  void placeButtons();
  void joinAreas();
};

} // namespace WinLayer
