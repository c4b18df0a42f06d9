#!/usr/bin/env bash
# The run command's grant, on copies of the built programs in a folder of
# its own: afterwards only the network helper holds capabilities, and a
# program that an earlier build had given them has lost them.
#   grant_network_caps_test.sh SOURCE_DIR BIN_DIR
# Exit 77 (skipped) where capabilities cannot be set here.
set -u
top=${1:?source folder}
bin=${2:?folder of the programs}
skip() {
    echo "skipped: $1"
    exit 77
}
command -v setcap >/dev/null && command -v getcap >/dev/null || skip "setcap and getcap are not installed"
[ "$(id -u)" -eq 0 ] || sudo -n true 2>/dev/null || skip "neither root nor sudo: nothing can be granted"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for program in firmcast firmcast-batch firmcast-net-helper; do
    [ -x "$bin/$program" ] || skip "$bin/$program is not built"
    cp "$bin/$program" "$work/"
done
SUDO=""
[ "$(id -u)" -eq 0 ] || SUDO="sudo -n"
# As an earlier build left them.
$SUDO setcap cap_net_admin,cap_net_raw+ep "$work/firmcast" 2>/dev/null ||
    skip "this file system takes no file capabilities"
$SUDO setcap cap_net_admin,cap_net_raw+ep "$work/firmcast-batch"

bash "$top/scripts/grant-network-caps.sh" "$work"

failures=0
check() {
    if [ "$2" != "$3" ]; then
        echo "FAILED: $1: expected '$3', got '$2'"
        failures=$((failures + 1))
    else
        echo "ok: $1"
    fi
}
caps() { $SUDO getcap "$work/$1" | sed 's/^[^ ]* //'; }
check "the helper holds both capabilities" "$(caps firmcast-net-helper)" "cap_net_admin,cap_net_raw=ep"
check "the window holds none" "$(caps firmcast)" ""
check "the headless program holds none" "$(caps firmcast-batch)" ""
# Run again: nothing changes.
bash "$top/scripts/grant-network-caps.sh" "$work"
check "a second grant leaves the helper as it was" "$(caps firmcast-net-helper)" "cap_net_admin,cap_net_raw=ep"
check "a second grant leaves the window without" "$(caps firmcast)" ""
[ "$failures" -eq 0 ]
