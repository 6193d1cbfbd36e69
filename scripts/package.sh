#!/usr/bin/env bash
# Builds the Debian package zettelwerk_<version>_<arch>.deb into the build folder (or --output FOLDER); --install
# installs it with apt, which also removes it again cleanly (apt remove zettelwerk).
#   bash scripts/package.sh [--build-dir FOLDER] [--output FOLDER] [--install]
set -euo pipefail
cd "$(dirname "$0")/.."
build=build-package
output=""
install=no
while (($#)); do
  case "$1" in
    --build-dir) build=$2; shift 2 ;;
    --output) output=$2; shift 2 ;;
    --install) install=yes; shift ;;
    *) echo "Aufruf: bash scripts/package.sh [--build-dir ORDNER] [--output ORDNER] [--install]" >&2; exit 2 ;;
  esac
done
if [[ ! -f "$build/CMakeCache.txt" ]]; then
  bash scripts/install-deps.sh
  # Debian's hardening flags (fortified functions, full RELRO), as a package built by Debian's tools gets them.
  export DEB_BUILD_MAINT_OPTIONS=hardening=+all
  CXXFLAGS="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)" LDFLAGS="$(dpkg-buildflags --get LDFLAGS)" \
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZETTELWERK_TESTS=OFF -DZETTELWERK_BENCH=OFF >/dev/null
fi
cmake --build "$build" --target zettelwerk zettelwerk-cli zettelwerk-dist zettelwerk-icons zettelwerk-packaging-files
build=$(cd "$build" && pwd)
output=${output:-$build}
mkdir -p "$output"
output=$(cd "$output" && pwd)
# A package folder of its own for each run, so that two runs on one build folder do not mix their trees.
staging=$(mktemp -d "$build/package.XXXXXX")
trap 'rm -rf "$staging"' EXIT
(cd "$build" && cpack -G DEB -B "$staging" >"$staging/cpack.log") || { cat "$staging/cpack.log" >&2; exit 1; }
package=$(find "$staging" -maxdepth 1 -name 'zettelwerk_*.deb' -print -quit)
[[ -n "$package" ]] || { echo "cpack made no package" >&2; exit 1; }
mv "$package" "$output/"
package=$output/$(basename "$package")
if [[ $install == yes ]]; then
  sudo=""
  [[ $(id -u) -eq 0 ]] || sudo=sudo
  $sudo apt-get install -y "$package"
fi
echo "$package"
