#!/usr/bin/env bash
# Installs what is missing, builds Zettelwerk and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZETTELWERK_TESTS=OFF -DZETTELWERK_BENCH=OFF >/dev/null
cmake --build build --target zettelwerk zettelwerk-cli
exec build/ui/zettelwerk
