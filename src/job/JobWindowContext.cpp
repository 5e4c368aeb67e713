#include "job/JobWindowContext.h"

namespace JobLayer {

JobWindowContext& JobWindowContext::instance() {
  static JobWindowContext context;
  return context;
}

void JobWindowContext::installDialogs(JobDialogs* implementation) {
  dialogs_ = implementation;
}

JobDialogs& JobWindowContext::dialogs() {
  static JobMessageBoxDialogs standIn;
  return dialogs_ == nullptr ? standIn : *dialogs_;
}

} // namespace JobLayer
