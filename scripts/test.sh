#!/usr/bin/env bash
# Installs what is missing (test peers included), builds everything with warnings as errors and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh --tests
build=${ZETTELWERK_TEST_BUILD:-build-test}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZETTELWERK_WERROR=ON \
  -DZETTELWERK_SANITIZE="${ZETTELWERK_SANITIZE:-OFF}" >/dev/null
cmake --build "$build" -j "$(nproc)"
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
chmod 700 "$XDG_RUNTIME_DIR"
cd "$build"
ctest --output-on-failure -j "$(nproc)" --timeout 600
