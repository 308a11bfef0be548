#!/usr/bin/env bash
# `layomat plot` on the layouts of the benchmark drawing (1,000 frames, made
# by make_bench_drawing.py): one multi-page PDF of every sheet. Prints the
# best time of RUNS and the pages per second.
#
# Usage: bench/plot_bench.sh [RUNS]   (after building build/ with cairo)
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-3}
data=build/bench_data
mkdir -p "$data"
drawing=$data/frames.dxf
[[ -f $drawing ]] || /usr/bin/python3 bench/make_bench_drawing.py "$drawing"
settings=$(mktemp)
trap 'rm -f "$settings"' EXIT
sheets=$data/plot-sheets.dxf
build/layomat create-layouts "$drawing" -o "$sheets" --settings "$settings" \
  --set OknoLmt.TextStrokaNameFile=20 >/dev/null 2>&1

best=
for ((i = 0; i < runs; i++)); do
  start=$EPOCHREALTIME
  build/layomat plot "$sheets" -o "$data/plot.pdf" --settings "$settings" \
    >/dev/null 2>&1
  end=$EPOCHREALTIME
  best=$(awk -v s="$start" -v e="$end" -v b="$best" \
    'BEGIN { t = e - s; print (b == "" || t < b) ? t : b }')
done
pages=$(pdfinfo "$data/plot.pdf" | awk '/^Pages:/ {print $2}')
printf 'layomat plot: %s pages, best %.2f s of %d runs, %.0f pages/s, %s bytes\n' \
  "$pages" "$best" "$runs" "$(awk -v p="$pages" -v b="$best" 'BEGIN{print p/b}')" \
  "$(stat -c %s "$data/plot.pdf")"
