// Message boxes of the command line: one line "title: text" each, line
// breaks inside the text turned into blanks so that a message stays one line.
#ifndef LMT_CLI_STREAM_MESSAGES_H_
#define LMT_CLI_STREAM_MESSAGES_H_

#include <ostream>

#include "core/environment.h"

namespace lmt::cli {

class StreamMessageSink : public core::MessageSink {
 public:
  // `errors_only` (--quiet) drops every box but the critical ones.
  explicit StreamMessageSink(std::ostream& stream, bool errors_only = false)
      : stream_(stream), errors_only_(errors_only) {}
  void Show(std::string_view title, std::string_view text,
            core::MessageIcon icon) override;

 private:
  std::ostream& stream_;
  bool errors_only_;
};

}  // namespace lmt::cli

#endif  // LMT_CLI_STREAM_MESSAGES_H_
