// Status and Result<T>: how failures travel through the add-in.
//
// The add-in never lets an error reach its caller. A CAD host may refuse any
// member call; that refusal comes back as a Status (or as a Result<T> holding
// one) and the routine decides, at the point where the behaviour needs it,
// whether to skip the object, keep an earlier value or stop the command.
// Nothing here throws. Reading a value out of a failed Result is a bug and
// aborts (LMT_CHECK).
#ifndef LMT_CORE_STATUS_H_
#define LMT_CORE_STATUS_H_

#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "core/check.h"

namespace lmt {

enum class StatusCode {
  kOk = 0,
  kRefused,          // the host refused or failed a member call
  kNotFound,         // a named object, key or file does not exist
  kInvalidArgument,  // a caller passed something the callee cannot take
  kNotSupported,     // this host cannot do that at all
  kCancelled,        // the user cancelled a prompt or a pick
  kIOError,          // a file could not be read or written
  kCorruption,       // a file was read but its content is malformed
};

class [[nodiscard]] Status {
 public:
  Status() = default;  // ok
  Status(StatusCode code, std::string message)
      : code_(code), message_(std::move(message)) {}

  static Status Ok() { return Status(); }
  static Status Refused(std::string msg) {
    return {StatusCode::kRefused, std::move(msg)};
  }
  static Status NotFound(std::string msg) {
    return {StatusCode::kNotFound, std::move(msg)};
  }
  static Status InvalidArgument(std::string msg) {
    return {StatusCode::kInvalidArgument, std::move(msg)};
  }
  static Status NotSupported(std::string msg) {
    return {StatusCode::kNotSupported, std::move(msg)};
  }
  static Status Cancelled(std::string msg) {
    return {StatusCode::kCancelled, std::move(msg)};
  }
  static Status IOError(std::string msg) {
    return {StatusCode::kIOError, std::move(msg)};
  }
  static Status Corruption(std::string msg) {
    return {StatusCode::kCorruption, std::move(msg)};
  }

  bool ok() const { return code_ == StatusCode::kOk; }
  StatusCode code() const { return code_; }
  const std::string& message() const { return message_; }
  std::string ToString() const;

  // Marks a status as deliberately dropped where the behaviour says a
  // failure changes nothing (for example a layer that refuses Freeze).
  void IgnoreError() const {}

 private:
  StatusCode code_ = StatusCode::kOk;
  std::string message_;
};

std::string_view StatusCodeName(StatusCode code);

// A value or the Status that says why there is none.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : data_(std::move(value)) {}  // NOLINT: implicit on purpose
  Result(Status status) : data_(std::move(status)) {  // NOLINT
    LMT_CHECK(!std::get<Status>(data_).ok());
  }

  bool ok() const { return std::holds_alternative<T>(data_); }
  explicit operator bool() const { return ok(); }

  const T& value() const& {
    LMT_CHECK(ok());
    return std::get<T>(data_);
  }
  T& value() & {
    LMT_CHECK(ok());
    return std::get<T>(data_);
  }
  T&& value() && {
    LMT_CHECK(ok());
    return std::get<T>(std::move(data_));
  }
  const T& operator*() const& { return value(); }
  T& operator*() & { return value(); }
  const T* operator->() const { return &value(); }
  T* operator->() { return &value(); }

  template <typename U>
  T value_or(U&& fallback) const& {
    return ok() ? std::get<T>(data_)
                : static_cast<T>(std::forward<U>(fallback));
  }

  // The failure, or an ok Status when there is a value.
  Status status() const { return ok() ? Status() : std::get<Status>(data_); }

 private:
  std::variant<T, Status> data_;
};

}  // namespace lmt

#endif  // LMT_CORE_STATUS_H_
