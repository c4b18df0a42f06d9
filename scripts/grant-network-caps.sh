#!/usr/bin/env bash
# Lets the built programs clear the PC's address table (CAP_NET_ADMIN) and
# send echo requests on a raw socket (CAP_NET_RAW) without running as root.
# A build replaces the programs, and the capabilities with them, so the run
# command grants them again each time. Where they cannot be granted the
# program still runs: it writes once to its log that it lacks them, and those
# operations then fail silently.
set -uo pipefail
bin=${1:?usage: grant-network-caps.sh <folder of the programs>}

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    if sudo -n true 2>/dev/null; then
        SUDO="sudo -n"
    else
        echo "firmcast: not root and no sudo: the programs run without CAP_NET_ADMIN and CAP_NET_RAW" >&2
        exit 0
    fi
fi
for program in firmcast firmcast-batch; do
    [ -x "$bin/$program" ] || continue
    if ! $SUDO setcap cap_net_admin,cap_net_raw+ep "$bin/$program"; then
        echo "firmcast: could not grant the network capabilities to $program" >&2
    fi
done
exit 0
