#include "host/host_list.h"

#include "host/host_kind.h"

namespace lmt::host {

bool OnHostKindClick(int kind_index, bool started,
                     const std::function<void()>& open_nanocad_registration) {
  if (started && kind_index == static_cast<int>(HostKind::kNanoCad) &&
      open_nanocad_registration) {
    open_nanocad_registration();
  }
  return kind_index == static_cast<int>(HostKind::kAutoCad);
}

}  // namespace lmt::host
