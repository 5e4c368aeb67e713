#include "job/LauncherData.h"

namespace JobLayer {

LauncherData& LauncherData::instance() {
  static LauncherData data;
  return data;
}

} // namespace JobLayer
