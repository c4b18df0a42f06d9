#!/usr/bin/env bash
# Gives the network helper, and it alone, the two capabilities the Ethernet
# loader needs: CAP_NET_ADMIN to delete rows of the PC's address table and
# CAP_NET_RAW to send echo requests on a raw socket. The window and the
# headless program hold none: they ask the helper (firmcast-net-helper, a
# small program with no toolkit and no database that does only those two
# things). An earlier build that gave the programs themselves the
# capabilities is put right here. A build replaces the helper, and its
# capabilities with it, so the run command grants them again each time.
# Where they cannot be granted the programs still run: they write once to
# their log what they may not do, and those operations then fail silently.
set -uo pipefail
bin=${1:?usage: grant-network-caps.sh <folder of the programs>}

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    if sudo -n true 2>/dev/null; then
        SUDO="sudo -n"
    else
        echo "firmcast: not root and no sudo: the network helper runs without CAP_NET_ADMIN and CAP_NET_RAW" >&2
        exit 0
    fi
fi
for program in firmcast firmcast-batch; do
    [ -x "$bin/$program" ] || continue
    if [ -n "$($SUDO getcap "$bin/$program" 2>/dev/null)" ]; then
        $SUDO setcap -r "$bin/$program" ||
            echo "firmcast: could not take the capabilities away from $program" >&2
    fi
done
helper="$bin/firmcast-net-helper"
if [ -x "$helper" ] && ! $SUDO setcap cap_net_admin,cap_net_raw+ep "$helper"; then
    echo "firmcast: could not grant the network capabilities to firmcast-net-helper" >&2
fi
exit 0
