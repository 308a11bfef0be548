#include "core/status.h"

namespace lmt {

std::string_view StatusCodeName(StatusCode code) {
  switch (code) {
    case StatusCode::kOk:
      return "OK";
    case StatusCode::kRefused:
      return "Refused";
    case StatusCode::kNotFound:
      return "Not found";
    case StatusCode::kInvalidArgument:
      return "Invalid argument";
    case StatusCode::kNotSupported:
      return "Not supported";
    case StatusCode::kCancelled:
      return "Cancelled";
    case StatusCode::kIOError:
      return "IO error";
    case StatusCode::kCorruption:
      return "Corruption";
  }
  return "Unknown";
}

std::string Status::ToString() const {
  if (ok()) return "OK";
  std::string out(StatusCodeName(code_));
  if (!message_.empty()) {
    out += ": ";
    out += message_;
  }
  return out;
}

}  // namespace lmt
