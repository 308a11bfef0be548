// The user of the command line: a host::User that answers the add-in's
// picks and prompts from the options instead of a screen.
//
//   picks        the next queued answer (QueuePick and its helpers, one per
//                pick the command will make, in order); with nothing queued
//                a pick is an empty pick (Enter)
//   points       the queued point, else --start, else cancelled
//   distances    cancelled
//   Yes/No       Yes with --yes, else No
//   input boxes  the default text, as if OK were pressed
//   messages     one line "title: text" on the error stream; while held,
//                the messages of success wait (see HoldSuccessMessages);
//                with --quiet only the critical ones (the errors)
//   progress     on the error stream, only when it is a terminal and not
//                --quiet
//
// Window focus, event pumps and waits do nothing: there is no window, and
// the embedded host finishes every command before it returns.
#ifndef LMT_CLI_CLI_USER_H_
#define LMT_CLI_CLI_USER_H_

#include <deque>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/cli_options.h"
#include "cli/stream_messages.h"
#include "host/user.h"

namespace lmt::cli {

class CliUser : public host::User {
 public:
  // `options` and `err` must outlive the user; `title` is the product name
  // that titles message boxes that have no title of their own. `progress`
  // switches the progress display on (pass IsTerminal(stderr)).
  CliUser(const CliOptions& options, std::ostream& err, std::string title,
          bool progress);

  // Answers the next pick with these handles (hex, as DXF writes them).
  void QueuePick(std::vector<std::string> handles);
  // The answers of the usual picks, from the options; each queues nothing
  // when its option is absent, so that pick is empty.
  void QueueTemplatePick();      // --template
  void QueueWindowPick();        // --pick
  void QueueSortPolylinePick();  // --sort-polyline
  void QueueViewportPick();      // --viewport
  void QueuePoint(host::Point point);

  // Messages shown so far, in order (as shown, held ones included).
  const std::vector<host::Message>& messages() const { return messages_; }

  // From now on messages of success (an information icon and only an OK
  // button, as a command's final "done") wait instead of being written, so
  // that a command that saves afterwards claims success only once its file
  // is written; the others are written at once. Release writes the waiting
  // ones in order and stops holding; Drop forgets them and stops holding.
  void HoldSuccessMessages() { holding_ = true; }
  void ReleaseHeldMessages();
  void DropHeldMessages();

  void ActivateCadWindow(std::string_view) override {}
  void BringToFront() override {}
  void PumpEvents() override {}
  void Wait(std::chrono::milliseconds) override {}
  void SetProgressRange(int32_t maximum) override;
  void SetProgressValue(int32_t value) override;
  void SetStatusText(std::string_view text) override;
  void ShowProgress(bool visible) override;

 protected:
  host::Answer DoShowMessage(const host::Message& message) override;
  std::optional<std::string> DoInputBox(std::string_view prompt,
                                        std::string_view title,
                                        std::string_view default_text) override;
  Result<std::vector<std::string>> DoPickEntities(
      const host::SelectionFilter& filter) override;
  Result<host::Point> DoPickPoint(
      std::string_view prompt, const std::optional<host::Point>& base) override;
  Result<double> DoPickDistance(
      std::string_view prompt, const std::optional<host::Point>& base) override;

 private:
  void DrawProgress();
  void Write(const host::Message& message);

  const CliOptions& options_;
  std::ostream& err_;
  std::string title_;
  StreamMessageSink sink_;
  bool progress_;
  std::deque<std::vector<std::string>> picks_;
  std::deque<host::Point> points_;
  std::vector<host::Message> messages_;
  bool holding_ = false;
  std::vector<host::Message> held_;
  int32_t progress_max_ = 0;
  int32_t progress_value_ = 0;
  int32_t progress_drawn_ = -1;  // the per-mille last drawn
  bool progress_visible_ = false;
};

// Whether standard error is a terminal.
bool StderrIsTerminal();

}  // namespace lmt::cli

#endif  // LMT_CLI_CLI_USER_H_
