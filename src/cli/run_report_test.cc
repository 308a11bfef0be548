// The report behind --json: the batch files matched with the run's lists
// in order, and the document's form for texts a script must read back.
#include "cli/run_report.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/batch_cli.h"

namespace lmt::cli {
namespace {

std::vector<core::BatchFile> Files(std::initializer_list<const char*> paths) {
  std::vector<core::BatchFile> rows;
  for (const char* path : paths) rows.push_back({"name", path});
  return rows;
}

std::string Results(const RunReport& report) {
  std::string out;
  for (const ReportItem& item : report.items()) {
    out += item.name + "=" + item.result;
    if (!item.reason.empty()) out += "(" + item.reason + ")";
    if (!item.detail.empty()) out += "[" + item.detail + "]";
    out += " ";
  }
  return out;
}

TEST(BatchRunReportTest, MatchesFilesWithTheListsInOrder) {
  batch::BatchReport run;
  run.started = true;
  run.processed = 4;
  run.failures = {{"/b", Status::IOError("cannot read")},
                  {"/d", Status::IOError("cannot write")}};
  run.written = {"/out/a", "/out/c"};
  const RunReport report =
      BatchRunReport("replace-text", Files({"/a", "/b", "/c", "/d"}), run);
  EXPECT_EQ(Results(report),
            "/a=written[-> /out/a] /b=failed(cannot read) "
            "/c=written[-> /out/c] /d=failed(cannot write) ");
  EXPECT_EQ(report.Total("failed"), 2);
  EXPECT_EQ(report.outputs(), run.written);
}

TEST(BatchRunReportTest, InterruptedAndUnsavedFiles) {
  batch::BatchReport run;
  run.started = true;
  run.interrupted = true;
  run.processed = 2;  // the run saved nothing (run-script without saving)
  run.failures = {{"/x", Status::IOError("no")}};
  const RunReport report =
      BatchRunReport("run-script", Files({"/x", "/x", "/y"}), run);
  EXPECT_EQ(Results(report), "/x=failed(no) /x=done /y=skipped(not reached) ");
  EXPECT_EQ(report.Total("files"), 3);
  EXPECT_EQ(report.Total("processed"), 2);
}

TEST(RunReportTest, DocumentForm) {
  RunReport report("viewports");
  report.Add({"viewport",
              "9\"C",
              "skipped",
              "switch: line\nbreak",
              {{"at", "[" + JsonNumber(0.1) + ", " + JsonNumber(-0.0) + "]"}},
              "not in the JSON"});
  report.SetTotal("switched", 1);
  report.SetTotal("switched", 2);
  report.AddOutput("o\\ut.dxf");
  report.AddWarning("two \"A\" rows");
  std::ostringstream out;
  report.WriteJson(out, 3);
  EXPECT_EQ(out.str(),
            "{\"command\": \"viewports\", \"status\": 3,\n"
            " \"items\": [\n"
            "  {\"kind\": \"viewport\", \"name\": \"9\\\"C\", \"result\": "
            "\"skipped\", \"reason\": \"switch: line\\nbreak\", \"at\": "
            "[0.1, 0]}\n ],\n"
            " \"totals\": {\"switched\": 2},\n"
            " \"outputs\": [\"o\\\\ut.dxf\"],\n"
            " \"warnings\": [\n  \"two \\\"A\\\" rows\"\n ]}\n");
  EXPECT_EQ(JsonNumber(1e300 * 1e300), "null");
  EXPECT_EQ(JsonNumber(1.0 / 3), "0.3333333333333333");
}

}  // namespace
}  // namespace lmt::cli
