#!/usr/bin/env bash
# The whole `layomat create-layouts` run on the benchmark drawing (1,000
# frames among about 150,000 entities, about 23 MB, made by
# make_bench_drawing.py) beside ezdxf doing the same job
# (ezdxf_create_layouts.py). Prints the best of RUNS for each and the ratio,
# then the same run split into four drawings (--sheets-per-file 250).
#
# Usage: [LAYOMAT=build-rel/layomat] bench/create_layouts_bench.sh [RUNS]
# (after building build/; LAYOMAT picks another build)
set -euo pipefail
layomat=${LAYOMAT:-build/layomat}
runs=${1:-5}
source "$(dirname "$0")/common.sh"

# best_of OUT [OPTIONS...]: the best time of RUNS runs into OUT.
best_of() {
  local out=$1
  shift
  best_of_runs "$runs" "$layomat" create-layouts "$drawing" -o "$out" \
    --settings "$settings" --set OknoLmt.TextStrokaNameFile=20 "$@"
}

best=$(best_of "$data/layomat-out.dxf")
layouts=$(grep -c "^AcDbLayout" "$data/layomat-out.dxf" || true)
printf 'layomat create-layouts: best %.3f s of %d runs (%s LAYOUT objects)\n' \
  "$best" "$runs" "$layouts"

ezdxf_out=$(/usr/bin/python3 bench/ezdxf_create_layouts.py "$drawing" \
  "$data/ezdxf-out.dxf")
echo "ezdxf: $ezdxf_out"
ezdxf_time=$(echo "$ezdxf_out" | awk '{print $(NF-1)}')
awk -v e="$ezdxf_time" -v b="$best" 'BEGIN { printf "ratio: %.1f x\n", e / b }'

split=$(best_of "$data/layomat-split.dxf" --sheets-per-file 250)
parts=$(ls "$data"/layomat-split-*.dxf | wc -l)
printf 'layomat create-layouts --sheets-per-file 250: best %.3f s of %d runs ' \
  "$split" "$runs"
printf '(%s drawings)\n' "$parts"
