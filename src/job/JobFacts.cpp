#include "job/JobFacts.h"

namespace JobLayer {

JobFacts& JobFacts::instance() {
  static JobFacts facts{RawString(), "UCPV"_text, true};
  return facts;
}

} // namespace JobLayer
