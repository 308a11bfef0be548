// What the controls mean, for `layomat settings --explain`: one table of
// meanings, written once, for the controls the plain options set and the
// main window's controls the settings file holds; and, from the plain
// options table (cli/plain_options.h), which option sets a control. A
// control without a written meaning has none here rather than a guess.
#ifndef LMT_CLI_CONTROL_MEANINGS_H_
#define LMT_CLI_CONTROL_MEANINGS_H_

#include <string>
#include <string_view>
#include <vector>

#include "core/windows.h"

namespace lmt::cli {

struct ControlMeaning {
  std::string_view section;  // as --set spells it
  std::string_view key;
  std::string_view meaning;
};

const std::vector<ControlMeaning>& ControlMeanings();

// The meaning of slot `slot` of `control`; empty when none is written.
std::string_view MeaningOf(core::Windows& windows, const core::Control& control,
                           int slot);

// The plain options that set slot `slot` of `control`, as their help
// shows them ("--scale P:M", "--order rows", "--attribute TAG=VALUE (2nd
// use)").
std::vector<std::string> PlainOptionsOf(core::Windows& windows,
                                        const core::Control& control, int slot);

}  // namespace lmt::cli

#endif  // LMT_CLI_CONTROL_MEANINGS_H_
