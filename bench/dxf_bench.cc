// Load and save throughput of the DXF engine on one large drawing, and the
// peak memory of a load.
//
//   dxf_bench FILE [benchmark flags]   MB/s of Document::Load, ToString and
//                                      Save (as loaded, and with edits)
//   dxf_bench --peak FILE              peak resident memory of one load
//   dxf_bench --threads FILE [RUNS]    tokenizing the file's first 64 KiB,
//                                      128 KiB, ...: one thread against two,
//                                      to see where the second one pays
//   dxf_bench --corpus DIR [RUNS] [--each]
//                                      load+save of every drawing in DIR:
//                                      ms per MB overall and the slowest;
//                                      --each lists every file, costliest
//                                      first, load and save apart
//
// Peak memory is measured in its own process run so that nothing else the
// benchmark allocated counts.
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "dxf/document.h"
#include "dxf/file_map.h"
#include "dxf/tag_reader.h"

namespace {

std::string g_file;

void BM_Load(benchmark::State& state) {
  for (auto _ : state) {
    std::unique_ptr<lmt::dxf::Document> doc;
    lmt::dxf::Status s = lmt::dxf::Document::Load(g_file, &doc);
    if (!s.ok()) {
      state.SkipWithError(s.ToString().c_str());
      break;
    }
    benchmark::DoNotOptimize(doc);
  }
  state.SetBytesProcessed(
      static_cast<int64_t>(state.iterations()) *
      static_cast<int64_t>(std::filesystem::file_size(g_file)));
}
BENCHMARK(BM_Load)->Unit(benchmark::kMillisecond)->MinTime(2.0)->UseRealTime();

// Saves the drawing; with state.range(0) = N > 0, after recolouring every
// Nth model-space entity first, so that formatted records break the runs of
// untouched text (as after creating layouts).
void BM_Save(benchmark::State& state) {
  std::unique_ptr<lmt::dxf::Document> doc;
  if (!lmt::dxf::Document::Load(g_file, &doc).ok()) {
    state.SkipWithError("load failed");
    return;
  }
  if (const auto every = static_cast<size_t>(state.range(0));
      every > 0 && doc->model_space() != nullptr) {
    const auto& ids = doc->model_space()->entities;
    for (size_t i = 0; i < ids.size(); i += every) {
      doc->entity(ids[i]).SetColor(3);
    }
  }
  std::string out_path = g_file + ".bench-out.dxf";
  size_t bytes = 0;
  for (auto _ : state) {
    lmt::dxf::Status s = doc->Save(out_path);
    if (!s.ok()) {
      state.SkipWithError(s.ToString().c_str());
      break;
    }
    bytes += std::filesystem::file_size(out_path);
  }
  std::filesystem::remove(out_path);
  state.SetBytesProcessed(static_cast<int64_t>(bytes));
}
BENCHMARK(BM_Save)
    ->Arg(0)
    ->Arg(10)
    ->Unit(benchmark::kMillisecond)
    ->MinTime(2.0)
    ->UseRealTime();

long MaxRssKb() {
  rusage ru;
  getrusage(RUSAGE_SELF, &ru);
  return ru.ru_maxrss;
}

int Peak(const std::string& file) {
  long before = MaxRssKb();
  std::unique_ptr<lmt::dxf::Document> doc;
  lmt::dxf::Status s = lmt::dxf::Document::Load(file, &doc);
  if (!s.ok()) {
    std::fprintf(stderr, "%s\n", s.ToString().c_str());
    return 1;
  }
  long after = MaxRssKb();
  double size_mb = static_cast<double>(std::filesystem::file_size(file)) / 1e6;
  double peak_mb = static_cast<double>(after) * 1024 / 1e6;
  double grown_mb = static_cast<double>(after - before) * 1024 / 1e6;
  std::printf(
      "file %.1f MB; peak RSS after load %.1f MB (%.2fx file); grown by the "
      "load %.1f MB (%.2fx file)\n",
      size_mb, peak_mb, peak_mb / size_mb, grown_mb, grown_mb / size_mb);
  std::string out_path = file + ".peak-out.dxf";
  s = doc->Save(out_path);
  std::filesystem::remove(out_path);
  if (!s.ok()) {
    std::fprintf(stderr, "%s\n", s.ToString().c_str());
    return 1;
  }
  double saved_mb = static_cast<double>(MaxRssKb()) * 1024 / 1e6;
  std::printf("peak RSS after load and save %.1f MB (%.2fx file)\n", saved_mb,
              saved_mb / size_mb);
  return 0;
}

// Best of `runs` tokenizing times of data, in ms, with ASCII text of
// `two_thread_bytes` and more on two threads.
double TokenizeMs(std::string_view data, size_t two_thread_bytes, int runs) {
  size_t old = lmt::dxf::SetTwoThreadBytes(two_thread_bytes);
  double best = 1e30;
  for (int r = 0; r < runs; ++r) {
    lmt::dxf::Arena arena;
    lmt::dxf::TagFile file;
    auto start = std::chrono::steady_clock::now();
    // A prefix ends without 0 EOF.
    lmt::dxf::Status s = lmt::dxf::ReadTags(data, "bench", &arena, &file,
                                            /*allow_missing_eof=*/true);
    std::chrono::duration<double, std::milli> t =
        std::chrono::steady_clock::now() - start;
    if (!s.ok()) std::fprintf(stderr, "%s\n", s.ToString().c_str());
    best = std::min(best, t.count());
  }
  lmt::dxf::SetTwoThreadBytes(old);
  return best;
}

int Threads(const std::string& path, int runs) {
  lmt::dxf::FileMap file;
  lmt::dxf::Status s = file.Open(path, size_t{2} << 30);
  if (!s.ok()) {
    std::fprintf(stderr, "%s\n", s.ToString().c_str());
    return 1;
  }
  const std::string_view all = file.data();
  std::printf("%10s %12s %12s %8s\n", "bytes", "1 thread ms", "2 threads ms",
              "speedup");
  // 64 KiB, 96 KiB, 128 KiB, 192 KiB, ...
  for (size_t n = size_t{64} << 10;; n = n % 3 == 0 ? n / 3 * 4 : n / 2 * 3) {
    n = std::min(n, all.size());
    // Cut before a record, so that no tag is cut in two.
    size_t cut = all.substr(0, n).rfind("\n  0\n");
    cut = n == all.size() || cut == std::string_view::npos ? n : cut + 1;
    const std::string_view data = all.substr(0, cut);
    const double one = TokenizeMs(data, SIZE_MAX, runs);
    const double two = TokenizeMs(data, 0, runs);
    std::printf("%10zu %12.3f %12.3f %8.2f\n", data.size(), one, two,
                one / two);
    if (n == all.size()) break;
  }
  return 0;
}

}  // namespace

// Best of `runs` load+save times of each drawing in `dir`, in process (no
// start-up cost). Files the engine refuses are counted apart.
int Corpus(const std::string& dir, int runs, bool each) {
  std::vector<std::filesystem::path> files;
  for (const auto& e : std::filesystem::directory_iterator(dir)) {
    if (e.is_regular_file()) files.push_back(e.path());
  }
  std::sort(files.begin(), files.end());
  std::string out_path =
      // Named per process: runs side by side must not replace each other's.
      (std::filesystem::temp_directory_path() /
       ("dxf_bench_corpus-" + std::to_string(::getpid()) + ".dxf"))
          .string();
  double total_ms = 0, total_mb = 0, worst = 0;
  std::string worst_name;
  int refused = 0;
  struct Row {
    double ms, load_ms, save_ms, mb;
    std::string name;
  };
  std::vector<Row> rows;
  using Ms = std::chrono::duration<double, std::milli>;
  for (const auto& f : files) {
    double best = 1e30, best_load = 1e30, best_save = 1e30;
    bool ok = true;
    for (int r = 0; r < runs && ok; ++r) {
      auto start = std::chrono::steady_clock::now();
      std::unique_ptr<lmt::dxf::Document> doc;
      ok = lmt::dxf::Document::Load(f.string(), &doc).ok();
      auto loaded = std::chrono::steady_clock::now();
      ok = ok && doc->Save(out_path).ok();
      auto saved = std::chrono::steady_clock::now();
      doc.reset();
      Ms t = std::chrono::steady_clock::now() - start;
      best = std::min(best, t.count());
      best_load = std::min(best_load, Ms(loaded - start).count());
      best_save = std::min(best_save, Ms(saved - loaded).count());
    }
    if (!ok) {
      ++refused;
      continue;
    }
    double mb = static_cast<double>(std::filesystem::file_size(f)) / 1e6;
    rows.push_back({best, best_load, best_save, mb, f.filename().string()});
    total_ms += best;
    total_mb += mb;
    if (mb >= 0.1 && best / mb > worst) {
      worst = best / mb;
      worst_name = f.filename().string();
    }
  }
  std::filesystem::remove(out_path);
  std::printf(
      "%zu files, %.1f MB, %d refused; load+save best of %d: %.1f ms, "
      "%.2f ms per MB; slowest file of 0.1 MB or more: %s, %.2f ms per MB\n",
      files.size(), total_mb, refused, runs, total_ms, total_ms / total_mb,
      worst_name.c_str(), worst);
  if (each) {
    std::sort(rows.begin(), rows.end(),
              [](const Row& a, const Row& b) { return a.ms > b.ms; });
    std::printf("%9s %9s %9s %8s %9s  file\n", "ms", "load ms", "save ms", "MB",
                "ms per MB");
    for (const Row& r : rows) {
      std::printf("%9.3f %9.3f %9.3f %8.3f %9.2f  %s\n", r.ms, r.load_ms,
                  r.save_ms, r.mb, r.ms / r.mb, r.name.c_str());
    }
  }
  return 0;
}

int main(int argc, char** argv) {
  if (argc >= 3 && std::strcmp(argv[1], "--peak") == 0) return Peak(argv[2]);
  if (argc >= 3 && std::strcmp(argv[1], "--threads") == 0) {
    return Threads(argv[2], argc >= 4 ? std::atoi(argv[3]) : 20);
  }
  if (argc >= 3 && std::strcmp(argv[1], "--corpus") == 0) {
    bool each = argc >= 5 && std::strcmp(argv[4], "--each") == 0;
    return Corpus(argv[2], argc >= 4 ? std::atoi(argv[3]) : 3, each);
  }
  if (argc < 2 || argv[1][0] == '-') {
    std::fprintf(stderr,
                 "usage: dxf_bench FILE [benchmark flags] | --peak FILE | "
                 "--threads FILE [RUNS] | --corpus DIR [RUNS] [--each]\n");
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
