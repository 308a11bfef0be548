#include "host/skip_log.h"

namespace lmt::host {

int SkipLog::Count(std::string_view step) const {
  int count = 0;
  for (const Skip& skip : skips_) count += skip.step == step ? 1 : 0;
  return count;
}

}  // namespace lmt::host
