#!/usr/bin/env bash
# Puts the manual page the build made (BUILD/layomat.1, from
# docs/layomat.1.md) where man finds it on Debian: /usr/local/share/man/man1.
# Says so and does nothing else when the build made no page (go-md2man
# missing) or the folder cannot be written (not root).
set -euo pipefail
page=${1:-build}/layomat.1
target=/usr/local/share/man/man1
if [[ ! -f $page ]]; then
  echo "no $page (go-md2man missing?): manual page not installed"
elif mkdir -p "$target" 2>/dev/null && install -m 644 "$page" "$target/"; then
  echo "manual page installed: man layomat"
else
  echo "cannot write $target: read the manual with man -l $page"
fi
