#!/bin/sh
# Batch benchmark: replace-attributes over N small drawings (default 1000),
# generated into a temporary folder from testdata/batch/attributes.dxf with
# a distinct SHEET value each; prints files per second.
#
#   bench/batch_bench.sh [BUILD_DIR] [N]
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build}
count=${2:-1000}
layomat=$build/layomat
[ -x "$layomat" ] || { echo "no $layomat; build first" >&2; exit 2; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/in"
i=1
while [ "$i" -le "$count" ]; do
  sed "s/^12\$/S$i/" "$root/testdata/batch/attributes.dxf" \
    > "$work/in/d$i.dxf"
  i=$((i + 1))
done
start=$(date +%s.%N)
XDG_CONFIG_HOME="$work" "$layomat" replace-attributes "$work"/in/*.dxf \
  --set OknoFunctionReplaceAtribut.UniTextNameAtribut1=SHEET \
  --set OknoFunctionReplaceAtribut.OptionValueAtribut11=True \
  --set OknoFunctionReplaceAtribut.UniTextZamShTOAtribut1=S \
  --set OknoFunctionReplaceAtribut.UniTextZamNaAtribut1=Sheet- \
  --set OknoFunctionReplaceAtribut.CheckBlockVnutriBloka=1 \
  --set OknoFunctionReplaceAtribut.OptionSaveKuda2=True \
  --set OknoFunctionReplaceAtribut.UniTextNamePapkaSave=out \
  > "$work/written.txt" 2> "$work/messages.txt"
end=$(date +%s.%N)
written=$(wc -l < "$work/written.txt")
[ "$written" -eq "$count" ] || { cat "$work/messages.txt" >&2; exit 1; }
grep -q "^Sheet-$count\$" "$work/in/out/d$count.dxf" || {
  echo "d$count.dxf: SHEET not rewritten" >&2; exit 1; }
awk -v n="$count" -v s="$start" -v e="$end" 'BEGIN {
  t = e - s; printf "replace-attributes: %d files in %.2f s, %.0f files/s\n", n, t, n / t }'
