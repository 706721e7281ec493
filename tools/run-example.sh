#!/usr/bin/env bash
# Fresh machine to exported example: installs what is missing, builds, exports examples/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bash "$root/tools/install-deps.sh"
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$root/build" -j"$(nproc)" --target vqmexport VQMExporter
mkdir -p "$root/out"
"$root/build/vqmexport" "$root/examples/crate.ma" -f "$root/out/crate.vqm" -shap -n -uvs -l -cams
echo "wrote $root/out/crate.vqm"
ls -l "$root/out"
