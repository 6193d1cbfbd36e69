#!/usr/bin/env bash
# Installs what is missing (test peers included), builds everything with warnings as errors and runs all tests;
# then runs every test once more under ASan and UBSan, and each libFuzzer target for a short while.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh --tests
build=${ZETTELWERK_TEST_BUILD:-build-test}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZETTELWERK_WERROR=ON \
  -DZETTELWERK_SANITIZE="${ZETTELWERK_SANITIZE:-OFF}" >/dev/null
cmake --build "$build" -j "$(nproc)"
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
chmod 700 "$XDG_RUNTIME_DIR"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" --timeout 600

# A second build folder with the sanitizers: every test program, the windows' included (UBSan halts on a finding).
sanitized=${ZETTELWERK_SANITIZE_BUILD:-build-sanitize}
cmake -S . -B "$sanitized" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZETTELWERK_WERROR=ON \
  -DZETTELWERK_SANITIZE=ON -DZETTELWERK_BENCH=OFF >/dev/null
cmake --build "$sanitized" -j "$(nproc)"
export LSAN_OPTIONS="suppressions=$PWD/cmake/lsan.supp" UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
ctest --test-dir "$sanitized" --output-on-failure -j "$(nproc)" --timeout 900

# The libFuzzer targets, built with clang, each run for twenty seconds, so that the fuzz build cannot rot unseen.
fuzzing=${ZETTELWERK_FUZZ_BUILD:-build-fuzz}
CXX=clang++ cmake -S . -B "$fuzzing" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZETTELWERK_WERROR=ON \
  -DZETTELWERK_FUZZ=ON -DZETTELWERK_BENCH=OFF >/dev/null
cmake --build "$fuzzing" -j "$(nproc)" --target zw_fuzzers
ctest --test-dir "$fuzzing" -L '^fuzz$' --output-on-failure -j "$(nproc)"
