// Plain command-line options such as `--scale 1:100` or `--names Sheet-`:
// friendlier spellings of `--set SECTION.KEY=VALUE`. Each one is only a
// translation into the same control writes, held in one table, so that the
// settings, the --set entries and these options stay one state: the writes
// are applied where the --set entries are, and an option that contradicts a
// --set (or another option) of the same control is a bad command line.
#ifndef LMT_CLI_PLAIN_OPTIONS_H_
#define LMT_CLI_PLAIN_OPTIONS_H_

#include <string>
#include <string_view>
#include <vector>

#include "cli/cli_options.h"
#include "core/status.h"
#include "core/windows.h"

namespace lmt::cli {

// The shape of a plain option's argument.
enum class PlainArg {
  kNone,       // a flag
  kWord,       // exactly the form's usage word, e.g. "from-width"
  kText,       // a non-empty text
  kTwoTexts,   // two non-empty texts, as two arguments
  kPositive,   // a number > 0 ("." or "," as decimal separator)
  kRatio,      // P:M, two numbers > 0
  kPoint,      // X,Y, two numbers ("." as decimal separator)
  kNumbering,  // a naming template: digits and "/"
  kTagValue,   // TAG=VALUE, TAG non-empty
  kNumber,     // a number, signed ("." or "," as decimal separator)
  kFile,       // a drawing file: ends in .dxf or .dwg, or holds a slash
};

// One control write. In `value`, "$1" and "$2" stand for the argument's
// parts; in `key`, "#" stands for the option's use number (1, 2, 3).
struct ControlWrite {
  std::string_view section;
  std::string_view key;
  std::string_view value;
};

// One accepted shape of an option's argument and what it writes. `usage`
// names the parts ("P:M", "X,Y", "FILE LAYOUT") or is the word of kWord.
struct PlainForm {
  PlainArg arg;
  std::string_view usage;
  std::string_view summary;  // one line for the help table
  std::vector<ControlWrite> writes;
};

struct PlainOption {
  std::string_view name;  // "--scale"
  std::vector<PlainForm> forms;
  // Above 0: each use writes its own "#" controls, up to this many uses.
  // At 0 a repeated use writes the same controls again.
  int numbered_uses = 0;
};

const std::vector<PlainOption>& PlainOptions();

// The table entry named `name` ("--scale"), or nullptr.
const PlainOption* FindPlainOption(std::string_view name);

// How many argument strings `option` takes from the command line (0 to 2).
int PlainArgumentCount(const PlainOption& option);

// The writes of one use (1-based) of `option` with `args`, each carrying
// the option as typed for messages. InvalidArgument with a message for the
// user when the argument fits none of the option's forms, or a numbered
// option is used more often than it has controls for.
Result<std::vector<PlainWrite>> TranslatePlainOption(
    const PlainOption& option, const std::vector<std::string_view>& args,
    int use);

// Applies the plain writes and then the --set entries to the models, as
// ApplySets does, after checking that no write contradicts another one or
// a --set of the same control (InvalidArgument naming both).
Status ApplyPlainAndSets(const std::vector<PlainWrite>& plain,
                         const std::vector<SetAssignment>& sets,
                         core::Windows& windows);

// The option table as a Markdown table: option, meaning, controls set.
// `layomat help options` prints it and README.md carries it.
std::string PlainOptionsMarkdown();

}  // namespace lmt::cli

#endif  // LMT_CLI_PLAIN_OPTIONS_H_
