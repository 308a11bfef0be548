// dxf::Status: the outcome of reading, parsing or writing a drawing file.
//
// The engine is standard library only, so it carries its own small status
// type instead of lmt::Status. A Corruption message names the file, the line
// (or byte offset for binary files) and what was expected there; callers show
// it as it is. Nothing in the engine throws.
#ifndef LMT_DXF_STATUS_H_
#define LMT_DXF_STATUS_H_

#include <string>
#include <utility>

namespace lmt::dxf {

class [[nodiscard]] Status {
 public:
  enum class Code { kOk = 0, kIOError, kCorruption, kInvalidArgument };

  Status() = default;  // ok
  static Status Ok() { return Status(); }
  static Status IOError(std::string msg) {
    return Status(Code::kIOError, std::move(msg));
  }
  static Status Corruption(std::string msg) {
    return Status(Code::kCorruption, std::move(msg));
  }
  static Status InvalidArgument(std::string msg) {
    return Status(Code::kInvalidArgument, std::move(msg));
  }

  bool ok() const { return code_ == Code::kOk; }
  Code code() const { return code_; }
  bool IsIOError() const { return code_ == Code::kIOError; }
  bool IsCorruption() const { return code_ == Code::kCorruption; }
  const std::string& message() const { return message_; }
  // "Corruption: a.dxf:12: expected a group code, got 'x'".
  std::string ToString() const;

 private:
  Status(Code code, std::string msg) : code_(code), message_(std::move(msg)) {}
  Code code_ = Code::kOk;
  std::string message_;
};

}  // namespace lmt::dxf

#endif  // LMT_DXF_STATUS_H_
