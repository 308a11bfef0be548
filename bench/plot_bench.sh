#!/usr/bin/env bash
# `layomat plot` on the layouts of the benchmark drawing (1,000 frames, made
# by make_bench_drawing.py): one multi-page PDF of every sheet. Prints the
# best time of RUNS and the pages per second.
#
# Usage: bench/plot_bench.sh [RUNS]   (after building build/ with cairo)
set -euo pipefail
runs=${1:-3}
source "$(dirname "$0")/common.sh"
sheets=$data/plot-sheets.dxf
build/layomat create-layouts "$drawing" -o "$sheets" --settings "$settings" \
  --set OknoLmt.TextStrokaNameFile=20 >/dev/null 2>&1

best=$(best_of_runs "$runs" build/layomat plot "$sheets" -o "$data/plot.pdf" \
  --settings "$settings")
pages=$(pdfinfo "$data/plot.pdf" | awk '/^Pages:/ {print $2}')
printf 'layomat plot: %s pages, best %.2f s of %d runs, %.0f pages/s, %s bytes\n' \
  "$pages" "$best" "$runs" "$(awk -v p="$pages" -v b="$best" 'BEGIN{print p/b}')" \
  "$(stat -c %s "$data/plot.pdf")"
