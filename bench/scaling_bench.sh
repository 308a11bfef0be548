#!/usr/bin/env bash
# How `layomat create-layouts` scales: drawings of 250, 1,000 and 4,000
# frames with 150 entities per frame (make_bench_drawing.py), each run RUNS
# times. Prints per drawing its size, the best wall time, the CPU time of
# that run, the peak memory (max RSS) and the time per frame, so a cost
# that grows faster than the drawing shows as a growing last column.
#
# Usage: [LAYOMAT=build-rel/layomat] bench/scaling_bench.sh [RUNS]
# (after building build/; LAYOMAT picks another build)
set -euo pipefail
cd "$(dirname "$0")/.."
layomat=${LAYOMAT:-build/layomat}
runs=${1:-3}
data=build/bench_data
mkdir -p "$data"
settings=$(mktemp)
report=$(mktemp)
trap 'rm -f "$settings" "$report"' EXIT

for frames in 250 1000 4000; do
  drawing=$data/frames-$frames.dxf
  [[ -f $drawing ]] ||
    /usr/bin/python3 bench/make_bench_drawing.py "$drawing" "$frames" \
      $((frames * 150))
  best= cpu= rss=
  for ((i = 0; i < runs; i++)); do
    /usr/bin/time -f '%e %U %S %M' -o "$report" \
      "$layomat" create-layouts "$drawing" -o "$data/scaling-out.dxf" \
      --settings "$settings" --set OknoLmt.TextStrokaNameFile=20 \
      >/dev/null 2>&1
    read -r wall user sys kb <"$report"
    if [[ -z $best ]] || awk -v a="$wall" -v b="$best" 'BEGIN{exit !(a < b)}'
    then
      best=$wall cpu=$(awk -v u="$user" -v s="$sys" 'BEGIN{print u + s}')
      rss=$kb
    fi
  done
  mb=$(awk -v b="$(stat -c %s "$drawing")" 'BEGIN{printf "%.1f", b / 1e6}')
  awk -v f="$frames" -v mb="$mb" -v w="$best" -v c="$cpu" -v k="$rss" \
    'BEGIN { printf "%5d frames, %6.1f MB: best %.3f s (cpu %.3f s), " \
             "max RSS %.1f MB (%.2fx file), %.3f ms per frame\n",
             f, mb, w, c, k * 1024 / 1e6, k * 1024 / 1e6 / mb, w * 1000 / f }'
done
rm -f "$data/scaling-out.dxf"
