#include "dxf/status.h"

namespace lmt::dxf {

std::string Status::ToString() const {
  switch (code_) {
    case Code::kOk:
      return "OK";
    case Code::kIOError:
      return "IO error: " + message_;
    case Code::kCorruption:
      return "Corruption: " + message_;
    case Code::kInvalidArgument:
      return "Invalid argument: " + message_;
  }
  return message_;
}

}  // namespace lmt::dxf
