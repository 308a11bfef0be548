// The frame search over a large drawing in the embedded host: the benchmark
// drawing of make_bench_drawing.py (1,000 A3_FRAME references with SHEET and
// TITLE attributes among 150,000 lines, circles and texts).
//
//   frames_bench FILE [benchmark flags]
//
// Each run is one "Select All" search with a block template (the block name
// criterion on, attribute tag SHEET), ordering and naming included; the
// drawing is opened once. Counters: frames found and host calls per frame
// (each costs about a millisecond when the host is reached over COM).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>

#include "core/globals.h"
#include "core/windows.h"
#include "dxfhost/application.h"
#include "frames/frame_commands.h"
#include "host/automation_runtime.h"
#include "host/session.h"
#include "host/user.h"

namespace {

using namespace lmt;

std::string g_file;

// No screen: every prompt is cancelled, every message dropped.
class QuietUser : public host::User {
 public:
  void ActivateCadWindow(std::string_view) override {}
  void BringToFront() override {}
  void PumpEvents() override {}
  void Wait(std::chrono::milliseconds) override {}
  void SetProgressRange(int32_t) override {}
  void SetProgressValue(int32_t) override {}
  void SetStatusText(std::string_view) override {}
  void ShowProgress(bool) override {}

 protected:
  host::Answer DoShowMessage(const host::Message&) override {
    return host::Answer::kNo;
  }
  std::optional<std::string> DoInputBox(std::string_view, std::string_view,
                                        std::string_view) override {
    return std::nullopt;
  }
  Result<std::vector<std::string>> DoPickEntities(
      const host::SelectionFilter&) override {
    return Status::Cancelled("bench");
  }
  Result<host::Point> DoPickPoint(std::string_view,
                                  const std::optional<host::Point>&) override {
    return Status::Cancelled("bench");
  }
  Result<double> DoPickDistance(std::string_view,
                                const std::optional<host::Point>&) override {
    return Status::Cancelled("bench");
  }
};

class OneApplication : public host::AutomationRuntime {
 public:
  explicit OneApplication(host::ApplicationPtr app) : app_(std::move(app)) {}
  Result<host::ApplicationPtr> GetObject(std::string_view) override {
    return app_;
  }
  Result<host::ApplicationPtr> CreateObject(std::string_view) override {
    return app_;
  }

 private:
  host::ApplicationPtr app_;
};

void SearchBench(benchmark::State& state, int block_mode) {
  QuietUser user;
  std::shared_ptr<dxfhost::DxfApplication> app =
      dxfhost::DxfApplication::Create(host::HostKind::kAutoCad, &user);
  Result<host::DocumentPtr> doc = (*app->Documents())->Open(g_file);
  if (!doc.ok()) {
    state.SkipWithError(doc.status().ToString().c_str());
    return;
  }
  OneApplication runtime(app);
  core::Globals globals;
  core::Windows windows;
  windows.okno_lmt.uni_text_name_atribute.set_text("SHEET");
  windows.okno_lmt.option_block_poisk.Select(block_mode);
  windows.okno_filter.check_tolko_name_block.set_checked(true);
  windows.okno_filter.uni_text_name_block.set_text("A3_FRAME");
  host::Session session(globals, windows, user, runtime);
  frames::FrameState frame_state;
  frame_state.frame_template.kind = "BLOCK";
  frames::FrameCommands commands(session, frame_state, nullptr);

  int64_t calls = 0;
  for (auto _ : state) {
    app->gate().set_counting(true);
    app->gate().ResetCounts();
    host::Outcome outcome = commands.Search(frames::SearchMode::kAll);
    calls = app->gate().total_calls();
    if (outcome != host::Outcome::kDone) {
      state.SkipWithError("the search found nothing");
      break;
    }
  }
  const int found = frame_state.table.last_row();
  state.counters["frames"] = found;
  state.counters["calls_per_frame"] =
      found > 0 ? static_cast<double>(calls) / found : 0;
}

void BM_SearchByInnerPolyline(benchmark::State& state) {
  SearchBench(state, 0);
}
BENCHMARK(BM_SearchByInnerPolyline)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0)
    ->UseRealTime();

void BM_SearchByBoundingBox(benchmark::State& state) { SearchBench(state, 1); }
BENCHMARK(BM_SearchByBoundingBox)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0)
    ->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argv[1][0] == '-') {
    std::fprintf(stderr, "usage: frames_bench FILE [benchmark flags]\n");
    return 2;
  }
  g_file = argv[1];
  argv[1] = argv[0];
  --argc;
  ++argv;
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
