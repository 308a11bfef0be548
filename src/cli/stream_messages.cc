#include "cli/stream_messages.h"

#include <string>

namespace lmt::cli {

void StreamMessageSink::Show(std::string_view title, std::string_view text,
                             core::MessageIcon icon) {
  if (errors_only_ && icon != core::MessageIcon::kCritical) return;
  std::string line;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
      continue;  // the LF that follows makes the blank
    }
    line += (text[i] == '\n' || text[i] == '\r') ? ' ' : text[i];
  }
  stream_ << title << ": " << line << '\n';
  stream_.flush();
}

}  // namespace lmt::cli
