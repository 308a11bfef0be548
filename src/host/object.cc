#include "host/object.h"

#include <string>

namespace lmt::host {

Status Object::Unsupported(std::string_view member) {
  return Status::NotSupported(std::string(member) +
                              " is not supported by this host");
}

}  // namespace lmt::host
