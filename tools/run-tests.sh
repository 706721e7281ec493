#!/usr/bin/env bash
# Fresh machine to passing tests: installs what is missing, builds and runs all tests twice,
# once in an optimised build and once under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/tools/install-deps.sh"
jobs=$(nproc)

cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build" -j"$jobs"
(cd "$root/build" && ctest --output-on-failure -j"$jobs")

cmake -S "$root" -B "$root/build-asan" -DCMAKE_BUILD_TYPE=Debug -DVQM_SANITIZE=ON -DVQM_BUILD_BENCH=OFF >/dev/null
cmake --build "$root/build-asan" -j"$jobs"
(cd "$root/build-asan" && ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 ctest --output-on-failure -j"$jobs")
