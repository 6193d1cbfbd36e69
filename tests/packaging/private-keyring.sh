#!/usr/bin/env bash
# Runs a test program on a private D-Bus session with a gnome-keyring of its own in a temporary home, so that no
# test ever reaches the machine's or the user's keyring. Without dbus-run-session or gnome-keyring-daemon the
# program runs without a keyring and skips what needs one.
set -euo pipefail
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home XDG_RUNTIME_DIR=$home/run XDG_DATA_HOME=$home/data XDG_CONFIG_HOME=$home/config
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
if ! command -v dbus-run-session >/dev/null || ! command -v gnome-keyring-daemon >/dev/null; then
  echo "no private keyring can be started here: dbus-run-session or gnome-keyring-daemon missing"
  exec "$@"
fi
# The daemon creates and unlocks a login keyring with the password it reads; the session ends it with the bus.
exec dbus-run-session -- bash -c 'printf zettelwerk | gnome-keyring-daemon --unlock --components=secrets >/dev/null &&
  ZW_PRIVATE_KEYRING=1 exec "$@"' keyring "$@"
