// How a command of the add-in ended, the same for the frame commands, the
// layout utilities and layout creation. The COM face drops it; the command
// line maps it to its exit status in one place (cli::ExitStatusOf).
#ifndef LMT_HOST_OUTCOME_H_
#define LMT_HOST_OUTCOME_H_

namespace lmt::host {

enum class Outcome {
  kDone,          // ran to its end (its final message was shown)
  kRefused,       // stopped with one of its own refusal messages
  kInterrupted,   // the user stopped it; its work so far stays
  kNotConnected,  // no host or drawing; the connection already told the user
};

}  // namespace lmt::host

#endif  // LMT_HOST_OUTCOME_H_
