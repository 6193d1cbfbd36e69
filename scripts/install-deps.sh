#!/usr/bin/env bash
# Installs the Debian packages Zettelwerk needs. With --tests also the peers the test suite runs against.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev libgl-dev qt6-translations-l10n
  libcurl4-openssl-dev libzip-dev zlib1g-dev libssl-dev
  fonts-liberation fonts-liberation2 fonts-dejavu-core
  libgtest-dev libgmock-dev libbenchmark-dev
)
# The mail password in the desktop's keyring.
packages+=(qtkeychain-qt6-dev)
# The year's chart; its CMake package asks for Qt OpenGL's, which qt6-base-dev leaves out.
packages+=(qt6-charts-dev libqt6opengl6-dev)
if [[ "${1:-}" == "--tests" ]]; then
  packages+=(qpdf poppler-utils unzip zip xvfb xauth imagemagick python3 python3-pil python3-aiosmtpd img2pdf cups printer-driver-cups-pdf libreoffice-writer-nogui clang libclang-rt-14-dev strace libxml2-utils)
  # The package check: building, unpacking and validating the .deb, and a private keyring for the password.
  packages+=(dpkg-dev fakeroot lintian man-db desktop-file-utils appstream shared-mime-info xdg-utils dbus gnome-keyring
             libsecret-tools)
fi

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
if ((${#missing[@]} == 0)); then
  exit 0
fi

sudo=""
if [[ $(id -u) -ne 0 ]]; then
  sudo="sudo"
fi
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
