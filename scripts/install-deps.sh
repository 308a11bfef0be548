#!/usr/bin/env bash
# Installs what building and testing Layomat needs on Debian 12 (run as root).
# Packages already present are left alone, so a second run costs nothing.
set -euo pipefail
packages=(cmake ninja-build g++ clang libclang-rt-14-dev googletest libgtest-dev
          libbenchmark-dev python3 python3-ezdxf python3-matplotlib libcairo2-dev
          poppler-utils fonts-dejavu-core go-md2man man-db)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" \
    || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "installing: ${missing[*]}"
  apt-get update -qq
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}"
fi
