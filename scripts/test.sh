#!/usr/bin/env bash
# Installs what is missing (test peers included), builds everything with warnings as errors and runs all tests;
# then runs the window-free tests (core, app, net, ledger, export, lists, mail, service) once more under ASan and UBSan.
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

# A second build folder with the sanitizers, only the window-free test programs (UBSan halts on a finding).
sanitized=${ZETTELWERK_SANITIZE_BUILD:-build-sanitize}
cmake -S . -B "$sanitized" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZETTELWERK_WERROR=ON \
  -DZETTELWERK_SANITIZE=ON >/dev/null
cmake --build "$sanitized" -j "$(nproc)" --target zw_toolkit_free_tests
export LSAN_OPTIONS="suppressions=$PWD/cmake/lsan.supp" UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
ctest --test-dir "$sanitized" -L '^(core|app|net|ledger|export|lists|mail|service)$' --output-on-failure -j "$(nproc)" --timeout 600
