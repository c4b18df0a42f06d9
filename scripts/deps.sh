#!/usr/bin/env bash
# Installs, from Debian's packages, whatever the build, the programs and the
# tests need and this machine lacks. Safe to run again: it only installs what
# is missing.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config
    googletest libgtest-dev libgmock-dev
    qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev
    xvfb xauth x11-utils xdotool imagemagick
    clang libclang-rt-14-dev
    zlib1g-dev libssl-dev srecord
    libsqlite3-dev sqlite3
    unixodbc-dev odbcinst libsqliteodbc odbc-postgresql postgresql
    iproute2 libcap2-bin
)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
