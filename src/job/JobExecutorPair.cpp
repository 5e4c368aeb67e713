#include "job/JobExecutorPair.h"

namespace JobLayer {

namespace {
constexpr int32_t NumberLength = 12; // the sign in front of the number, its own sign and digits
}

RawString JobExecutorPair::text() const {
  if (number == 0) return name;
  RawString target = RawString::withCapacity(name.length() + NumberLength);
  target.append5(name, "#"_text);
  target.appendInt64(number);
  return target;
}

const JobExecutorPair& JobExecutorPair::executor() {
  static const JobExecutorPair pair{"Executor"_text, 0};
  return pair;
}

const JobExecutorPair& JobExecutorPair::user() {
  static const JobExecutorPair pair{"User"_text, 0};
  return pair;
}

const JobExecutorPair& JobExecutorPair::system() {
  static const JobExecutorPair pair{"System"_text, 0};
  return pair;
}

JobExecutorPair JobExecutorPair::command(int32_t number) {
  return {"Command"_text, number};
}

JobExecutorPair JobExecutorPair::variable(int32_t number) {
  return {"Variable"_text, number};
}

} // namespace JobLayer
