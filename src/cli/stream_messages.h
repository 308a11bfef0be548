// Message boxes of the command line: one line "title: text" each, line
// breaks inside the text turned into blanks so that a message stays one line.
#ifndef LMT_CLI_STREAM_MESSAGES_H_
#define LMT_CLI_STREAM_MESSAGES_H_

#include <ostream>

#include "core/environment.h"

namespace lmt::cli {

class StreamMessageSink : public core::MessageSink {
 public:
  explicit StreamMessageSink(std::ostream& stream) : stream_(stream) {}
  void Show(std::string_view title, std::string_view text,
            core::MessageIcon icon) override;

 private:
  std::ostream& stream_;
};

}  // namespace lmt::cli

#endif  // LMT_CLI_STREAM_MESSAGES_H_
