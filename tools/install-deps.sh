#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need, when any is missing.
set -euo pipefail
packages=(cmake g++ make libgtest-dev libbenchmark-dev libmeshoptimizer-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq "${missing[@]}"
fi
