// The parsed command line of `layomat`: the command, its arguments, and the
// global options every command may read (settings, language, the answers to
// the user's picks and prompts, output), and the plain options translated
// into control writes (cli/plain_options.h). Options may stand before or
// after the command, as "--name value" or "--name=value"; "--" ends the
// options. Nothing here looks at files or at the window models.
#ifndef LMT_CLI_CLI_OPTIONS_H_
#define LMT_CLI_CLI_OPTIONS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "host/outcome.h"

namespace lmt::cli {

// Exit statuses of the command line.
enum ExitStatus : int {
  kExitOk = 0,         // the command ran to its end
  kExitRefused = 1,    // the command stopped with one of its refusals
  kExitUsage = 2,      // bad command line
  kExitFileError = 3,  // a file could not be read, parsed or written
};

// The exit status of a command that ended with `outcome`: only a run to
// its end is a success.
constexpr ExitStatus ExitStatusOf(host::Outcome outcome) {
  return outcome == host::Outcome::kDone ? kExitOk : kExitRefused;
}

// One --set SECTION.KEY=VALUE.
struct SetAssignment {
  std::string section;
  std::string key;
  std::string value;
};

// One control write of a plain option (cli/plain_options.h), with the
// option as typed ("--scale 1:100") for messages.
struct PlainWrite {
  std::string option;
  SetAssignment set;
};

struct Point2 {
  double x = 0;
  double y = 0;
};

struct CliOptions {
  std::string command;            // empty: none given
  std::vector<std::string> args;  // the command's positional arguments

  bool help = false;
  bool version = false;
  std::optional<std::string> settings_file;  // --settings
  std::optional<std::string> lang_file;      // --lang
  std::vector<SetAssignment> sets;           // --set, in order
  std::vector<PlainWrite> plain;             // plain options, in order

  std::optional<std::string> template_handle;  // --template (hex)
  std::vector<std::string> pick_handles;       // --pick (hex), may be empty
  bool pick_given = false;                     // --pick present
  std::optional<Point2> start;                 // --start X,Y
  std::optional<std::string> sort_polyline;    // --sort-polyline (hex)
  std::optional<std::string> viewport;         // --viewport (hex)
  bool yes = false;                            // --yes
  std::optional<std::string> output;           // -o / --output
  bool json = false;                           // --json
  bool quiet = false;    // --quiet: errors only, no per-item lines
  bool verbose = false;  // --verbose: what was done with each item
  bool explain = false;  // --explain (settings): meanings and options
  std::optional<std::string> preview;  // --preview FILE.svg
  // Plotting (layomat plot; --pdf for create-layouts).
  std::optional<std::string> layouts;  // --layouts PATTERN (* and ?)
  bool one_file = false;               // --one-file
  bool file_per_sheet = false;         // --file-per-sheet
  bool monochrome = false;             // --monochrome
  std::optional<std::string> pdf;      // --pdf FILE.pdf
  // create-layouts: plan only (--dry-run); the drawing split into files of
  // N new layouts each (--sheets-per-file N, N >= 1).
  bool dry_run = false;
  std::optional<int> sheets_per_file;
  std::optional<std::string> csv;  // frames: the table as a CSV file
  // Drawings are read recovering what a strict read refuses (--recover).
  bool recover = false;
  // create-layouts: the sheet register (a CSV of `frames --csv`, edited)
  // and the sheet index table: its layout, point and attribute columns.
  std::optional<std::string> register_file;  // --register FILE
  std::optional<std::string> index_layout;   // --index-layout NAME
  std::optional<Point2> index_at;            // --index-at X,Y
  std::vector<std::string> index_columns;    // --index-columns TAG,TAG
  // frames: the drawing with the frames highlighted, written to this file.
  std::optional<std::string> mark;
  std::optional<std::string> by;  // sort-layouts: the order
  std::optional<int> row;         // show: the frame table's row (1..)
};

// A handle option's text (1 to 16 hex digits) as the object id the host
// takes; nullopt for anything else. Unsigned: handles use all 64 bits.
std::optional<uint64_t> ParseObjectId(std::string_view handle);

// InvalidArgument with a message for the user on a bad command line.
Result<CliOptions> ParseCommandLine(const std::vector<std::string>& args);

// A global option's spelling and how many values follow it (0 or 1).
struct GlobalOption {
  std::string_view name;
  int values;
};

// Every global option the parser knows, short spellings included, in the
// order --help shows them (for completion and the manual's checks).
const std::vector<GlobalOption>& GlobalOptions();

// The usage text of the global options (for --help).
std::string GlobalOptionsHelp();

}  // namespace lmt::cli

#endif  // LMT_CLI_CLI_OPTIONS_H_
