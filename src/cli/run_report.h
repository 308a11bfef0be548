// What a command that writes drawings did, for `--json`: one entry per item
// it went over (a layout row, a viewport, an erased object, a batch file)
// saying what became of it and why, the totals and the files written.
// Commands fill a RunReport as they print their text lines and write it
// instead of them when --json is given, so that standard output then holds
// one JSON document and nothing else.
//
// The shape, stable for scripts:
//   {"command": "create-layouts", "status": 0,
//    "items": [{"kind": "layout", "name": "Sheet-1", "result": "made"},
//              {"kind": "layout", "name": "X", "result": "skipped",
//               "reason": "..."}, ...],
//    "totals": {"made": 9, "skipped": 0, ...},
//    "outputs": ["sheets.dxf"], "warnings": ["..."]}
// "warnings" holds what the text output prints as "warning: ..." lines
// (empty for commands that have none). An item carries "reason" only when it
// was skipped or failed, and may carry further fields of its kind (a layout's
// "frame").
#ifndef LMT_CLI_RUN_REPORT_H_
#define LMT_CLI_RUN_REPORT_H_

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/registry.h"
#include "host/outcome.h"
#include "host/skip_log.h"

namespace lmt::cli {

// Item results.
inline constexpr std::string_view kMade = "made";
inline constexpr std::string_view kSkipped = "skipped";
inline constexpr std::string_view kFailed = "failed";

struct ReportItem {
  std::string kind;    // "layout", "viewport", "object", "file"
  std::string name;    // layout name, handle or path
  std::string result;  // kMade, kSkipped, kFailed or a kind's own word
  std::string reason;  // why it was skipped or failed; empty otherwise
  // Further fields: name and a JSON value as text (JsonNumber, JsonString,
  // or an object built from them).
  std::vector<std::pair<std::string, std::string>> fields;
  // The same facts in words, for --verbose; not part of the JSON.
  std::string detail;
};

class RunReport {
 public:
  explicit RunReport(std::string_view command) : command_(command) {}

  void Add(ReportItem item) { items_.push_back(std::move(item)); }
  // Totals keep the order they are first given in; a name given again
  // replaces its value.
  void SetTotal(std::string_view name, int64_t value);
  void AddOutput(std::string path) { outputs_.push_back(std::move(path)); }
  void AddWarning(std::string text) { warnings_.push_back(std::move(text)); }

  const std::vector<ReportItem>& items() const { return items_; }
  // The total given for `name`, 0 when none was.
  int64_t Total(std::string_view name) const;
  const std::vector<std::string>& outputs() const { return outputs_; }
  const std::vector<std::string>& warnings() const { return warnings_; }

  // The document described above, and a line break.
  void WriteJson(std::ostream& out, int status) const;

 private:
  std::string command_;
  std::vector<ReportItem> items_;
  std::vector<std::pair<std::string, int64_t>> totals_;
  std::vector<std::string> outputs_;
  std::vector<std::string> warnings_;
};

// A number as JSON text: the shortest form that reads back equal; a value
// that is not finite becomes null.
std::string JsonNumber(double value);

// One kSkipped item of `kind` per host refusal in `skips`, its reason
// naming the step ("switch: ...").
void AddSkips(RunReport& report, std::string_view kind,
              const host::SkipLog& skips);

// The line a command writes to standard error for a host refusal it passed
// over: "layomat: OBJECT: STEP: REASON" ("OBJECT: " left out when not known).
void WriteSkip(const host::Skip& skip, std::ostream& err);
// WriteSkip for each of `skips`.
void WriteSkips(const host::SkipLog& skips, std::ostream& err);

// One line per item, "RESULT<TAB>KIND<TAB>NAME", with the reason or the
// detail after another tab; for --verbose where a command has no item
// lines of its own.
void WriteItemsText(const RunReport& report, std::ostream& out);

// Writes `report` when --json was given, and returns `status`: a command's
// last words on every path that ends after it started work.
int FinishReport(CommandContext& context, const RunReport& report, int status);

}  // namespace lmt::cli

#endif  // LMT_CLI_RUN_REPORT_H_
