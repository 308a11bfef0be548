#!/usr/bin/env bash
# Builds the DXF reader's libFuzzer target with clang and runs it for a short
# while (LMT_FUZZ_SECONDS, default 30) from a corpus of our own test drawings,
# the regression files of bugs the fuzzer found before and, when the shared
# folder is there (LMT_SHARED_DIR, else ../shared), its sample drawings.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${LMT_FUZZ_SECONDS:-30}
dir=build-fuzz
CC=clang CXX=clang++ cmake -S . -B "$dir" -G Ninja -DLMT_BUILD_FUZZ=ON \
  -DLMT_BUILD_TESTS=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$dir" --target dxf_reader_fuzz -j "$(nproc)"
corpus=$(mktemp -d)
trap 'rm -rf "$corpus"' EXIT
cp testdata/dxf/fuzz_regressions/* "$corpus"/ 2>/dev/null || true
shared=${LMT_SHARED_DIR:-../shared}
for f in testdata/*.dxf testdata/*/*.dxf "$shared"/dxf-samples/*.dxf; do
  [[ -f $f && $(stat -c %s "$f") -lt 200000 ]] && cp "$f" "$corpus"/
done
# Regressions first: each must load without a crash.
"$dir"/src/dxf/dxf_reader_fuzz testdata/dxf/fuzz_regressions/* >/dev/null 2>&1
"$dir"/src/dxf/dxf_reader_fuzz -max_total_time="$seconds" -max_len=65536 \
  -rss_limit_mb=2048 -print_final_stats=1 "$corpus" 2>&1 | tail -12
