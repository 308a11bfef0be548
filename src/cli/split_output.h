// Writing one run's new layouts into several drawings (--sheets-per-file N,
// --file-per-sheet): which layouts go into which file, the files' names
// beside OUT, and writing them as one set, so that either every file of the
// set is in place or none is.
//
// Names: OUT "a/b.dxf" split in three gives "a/b-1.dxf" .. "a/b-3.dxf"; the
// number is zero-padded to the width of the count ("b-01.dxf" .. "b-12.dxf")
// so that the files sort in sheet order.
#ifndef LMT_CLI_SPLIT_OUTPUT_H_
#define LMT_CLI_SPLIT_OUTPUT_H_

#include <functional>
#include <string>
#include <vector>

#include "cli/cli_options.h"
#include "cli/embedded_session.h"
#include "core/status.h"

namespace lmt::cli {

// The most layouts a drawing should hold: more tabs than this are not
// shown by every CAD program.
inline constexpr int kMaxLayoutsPerDrawing = 255;

// Layouts per output file asked for on the command line: N for
// --sheets-per-file N, 1 for --file-per-sheet, 0 for one file. With --pdf,
// --file-per-sheet keeps its plotting meaning (one PDF per sheet) and the
// drawing is written whole; --sheets-per-file with --pdf is refused, as a
// split drawing cannot be plotted as one. InvalidArgument for a bad count
// or both options.
Result<int> SheetsPerFile(const CliOptions& options);

// `names` in consecutive groups of `per_file` (the last may be shorter);
// one group holding them all when `per_file` is 0.
std::vector<std::vector<std::string>> SplitIntoFiles(
    const std::vector<std::string>& names, int per_file);

// The file names of a set of `count` files written for `out`.
// REQUIRES: count >= 1.
std::vector<std::string> SplitFileNames(const std::string& out, size_t count);

// The warning for a drawing that would hold more than
// kMaxLayoutsPerDrawing new layouts (the largest of `files`), saying how to
// split it; empty when none does.
std::string TooManyLayoutsWarning(
    const std::vector<std::vector<std::string>>& files);

// Writes the set `targets`: write(i, temporary) writes file i to a
// temporary name beside targets[i]; when all have succeeded they are
// renamed into place. When a write or a rename fails, every temporary and
// every file of the set already renamed is removed and the first failure
// is returned (an IOError naming the file), so no file of the set is left.
Status WriteFileSet(
    const std::vector<std::string>& targets,
    const std::function<Status(size_t index, const std::string& temporary)>&
        write);

// Saves the run in `embedded` as the set of files of OUT `out`, the new
// layouts `created` in groups of `per_file` (EmbeddedSession::SaveOutputSet).
// The files written, in order, with the layouts each holds.
struct SplitFile {
  std::string path;
  std::vector<std::string> layouts;
};
Result<std::vector<SplitFile>> SaveSplitOutput(
    EmbeddedSession& embedded, const std::string& out,
    const std::vector<std::string>& created, int per_file);

}  // namespace lmt::cli

#endif  // LMT_CLI_SPLIT_OUTPUT_H_
