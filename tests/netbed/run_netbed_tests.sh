#!/usr/bin/env bash
# Runs a test binary inside the loader namespace of a fresh test bed
# (netbed.sh), and removes the bed afterwards whatever happens: a failing
# test, Ctrl-C, a kill. Exits with the binary's status, or 77 with a line
# "SKIPPED: <reason>" when the machine cannot build a bed.
#
#   run_netbed_tests.sh <test-binary> [gtest arguments]
#
# The binary finds the bed in its environment:
#   FIRMCAST_NETBED=1
#   FIRMCAST_NETBED_LOADER   the loader's namespace (the one it runs in)
#   FIRMCAST_NETBED_SCALES   "<namespace>,<ip>,<mac>;..." one entry a scale
#   FIRMCAST_NETBED_BIN      the folder of the firmcast programs, passed on
#                            when the caller sets it
# A bed is named fcnb<pid of this runner>; a bed whose runner is gone (killed
# with SIGKILL, say) is removed by the next run.
set -euo pipefail

# FIRMCAST_NETBED_SCALE_COUNT: how many scales the bed has (3 unless given).
readonly kScales=${FIRMCAST_NETBED_SCALE_COUNT:-3}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
readonly netbed="$here/netbed.sh"

skip() {
    echo "SKIPPED: $*"
    exit 77
}

[[ $# -ge 1 ]] || { echo "usage: $0 <test-binary> [gtest arguments]" >&2; exit 2; }
binary=$1
shift
[[ -x $binary ]] || { echo "$binary: not an executable" >&2; exit 2; }

[[ $(id -u) -eq 0 ]] || skip "network namespaces need root, and this runs as uid $(id -u)"
command -v ip >/dev/null || skip "the ip command (iproute2) is not installed"
ip netns list >/dev/null 2>&1 || skip "ip netns does not work here"

remove_stale_beds() {
    local ns pid
    for ns in $(ip netns list | awk '{print $1}' | grep -E '^fcnb[0-9]+-pc$' || true); do
        pid=${ns#fcnb}
        pid=${pid%-pc}
        if ! kill -0 "$pid" 2>/dev/null; then
            "$netbed" down "fcnb$pid"
        fi
    done
}
remove_stale_beds

bed="fcnb$$"
child=

# shellcheck disable=SC2317  # run by the traps
teardown() {
    if [[ -n $child ]] && kill -0 "$child" 2>/dev/null; then
        kill -TERM "$child" 2>/dev/null || true
        wait "$child" 2>/dev/null || true
    fi
    child=
    "$netbed" down "$bed" || true
}
trap teardown EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
trap 'exit 129' HUP

if ! ip netns add "$bed-pc" 2>/dev/null; then
    skip "cannot create a network namespace here"
fi
ip netns delete "$bed-pc"

scales=$("$netbed" up "$bed" "$kScales")

export FIRMCAST_NETBED=1
export FIRMCAST_NETBED_LOADER="$bed-pc"
export FIRMCAST_NETBED_SCALES="$scales"
if [[ -n ${FIRMCAST_NETBED_BIN:-} ]]; then
    export FIRMCAST_NETBED_BIN
fi

# The binary runs in the background so that a signal reaches the traps at
# once instead of after the tests end.
ip netns exec "$bed-pc" "$binary" "$@" &
child=$!
status=0
wait "$child" || status=$?
child=
exit "$status"
