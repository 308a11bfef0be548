# The preamble of the benchmarks that run `layomat` on the benchmark
# drawing; sourced, not run. Moves to the source tree and sets:
#   data      build/bench_data, made if missing
#   drawing   the benchmark drawing, made by make_bench_drawing.py once
#   settings  an empty settings file, removed on exit
# and defines best_of_runs.
cd "$(dirname "${BASH_SOURCE[0]}")/.."
data=build/bench_data
mkdir -p "$data"
drawing=$data/frames.dxf
[[ -f $drawing ]] || /usr/bin/python3 bench/make_bench_drawing.py "$drawing"
settings=$(mktemp)
trap 'rm -f "$settings"' EXIT

# best_of_runs RUNS COMMAND...: runs COMMAND (its output dropped) RUNS
# times; prints the best wall time in seconds.
best_of_runs() {
  local runs=$1 best= start end i
  shift
  for ((i = 0; i < runs; i++)); do
    start=$EPOCHREALTIME
    "$@" >/dev/null 2>&1
    end=$EPOCHREALTIME
    best=$(awk -v s="$start" -v e="$end" -v b="$best" \
      'BEGIN { t = e - s; print (b == "" || t < b) ? t : b }')
  done
  echo "$best"
}
