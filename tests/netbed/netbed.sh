#!/usr/bin/env bash
# A test bed of network namespaces: a loader PC and its scales on one LAN, so
# that the address table, the echo and a scale's MAC change are all real and
# touch nothing outside the bed.
#
#   netbed.sh up <name> <scale-count>   builds the bed and prints the scales
#   netbed.sh down <name>               removes every namespace of the bed
#
# Namespaces:
#   <name>-pc   the loader: bridge br0 (MAC 02:46:43:00:00:01), 10.77.0.1/24,
#               and one port sc<i> of the bridge for each scale
#   <name>-s<i> scale i (1 .. count): eth0, 10.77.0.(10+i)/24, MAC
#               02:46:43:00:00:<10+i in hex>; its other end is sc<i> above
# lo is up in every namespace.
#
# `up` prints one line, the value the tests read from FIRMCAST_NETBED_SCALES:
# the scales separated by ';', each "<namespace>,<ip>,<mac>", e.g.
#   fcnb42-s1,10.77.0.11,02:46:43:00:00:0b;fcnb42-s2,10.77.0.12,02:46:43:00:00:0c
set -euo pipefail

readonly kSubnet=10.77.0
readonly kMacPrefix=02:46:43:00:00
readonly kMaxScales=200

usage() {
    echo "usage: $0 up <name> <scale-count> | down <name>" >&2
    exit 2
}

# The namespaces of bed <name>, by their names.
bed_namespaces() {
    ip netns list | awk '{print $1}' | grep -E "^$1-(pc|s[0-9]+)\$" || true
}

down() {
    local name=$1 ns
    for ns in $(bed_namespaces "$name"); do
        ip netns delete "$ns" 2>/dev/null || true
    done
}

scale_mac() {
    printf '%s:%02x' "$kMacPrefix" $((10 + $1))
}

add_scale() {
    local name=$1 i=$2
    local pc="$name-pc" ns="$name-s$i"
    ip netns add "$ns"
    ip -n "$pc" link add "sc$i" type veth peer name eth0 netns "$ns"
    ip -n "$pc" -batch - <<END
link set dev sc$i master br0
link set dev sc$i up
END
    ip -n "$ns" -batch - <<END
link set dev lo up
link set dev eth0 address $(scale_mac "$i")
address add $kSubnet.$((10 + i))/24 dev eth0
link set dev eth0 up
END
}

up() {
    local name=$1 count=$2 i
    [[ $name =~ ^[A-Za-z0-9_]{1,20}$ ]] || { echo "bad bed name: $name" >&2; exit 2; }
    if ! [[ $count =~ ^[0-9]+$ ]] || ((count < 1 || count > kMaxScales)); then
        echo "scale count must be 1 to $kMaxScales" >&2
        exit 2
    fi
    local pc="$name-pc"
    ip netns add "$pc"
    # From here on the namespaces are this bed's own: half a bed is no use to
    # anybody, so a failure removes what was built. The name is put in now:
    # the local variable is gone by the time the trap runs.
    # shellcheck disable=SC2064
    trap "down $name" EXIT
    # The bridge forwards at once: no spanning tree, no forwarding delay.
    ip -n "$pc" -batch - <<END
link set dev lo up
link add br0 address $kMacPrefix:01 type bridge stp_state 0 forward_delay 0
address add $kSubnet.1/24 dev br0
link set dev br0 up
END
    local scales=()
    for ((i = 1; i <= count; i++)); do
        add_scale "$name" "$i"
        scales+=("$name-s$i,$kSubnet.$((10 + i)),$(scale_mac "$i")")
    done
    trap - EXIT
    local IFS=';'
    echo "${scales[*]}"
}

case ${1:-} in
up)
    [[ $# -eq 3 ]] || usage
    up "$2" "$3"
    ;;
down)
    [[ $# -eq 2 ]] || usage
    down "$2"
    ;;
*)
    usage
    ;;
esac
