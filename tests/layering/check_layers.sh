#!/usr/bin/env bash
# Checks the layering of the tree: each folder includes only the folders its
# row below allows, the system's own folders include no operating-system or
# Qt header, no program of the product links the virtual world or the
# simulators (firmcast-sim alone links sim/), and the network helper links
# nothing but its own sources.
#   check_layers.sh SOURCE_DIR [BUILD_DIR]
set -u
top=${1:?source folder}
build=${2:-}
cd "$top" || exit 1
failures=0

# folder | the folders its files may include (besides itself)
allowed() {
    case "$1" in
        platform) echo "" ;;
        platform/linux) echo "platform" ;;
        platform/qt) echo "platform platform/linux" ;;
        common | firmware | serial | visor | display) echo "platform common firmware" ;;
        ethernet) echo "platform common firmware" ;;
        # The scale record form proves a new address by the echo.
        mac) echo "platform common firmware ethernet" ;;
        control) echo "platform common firmware serial ethernet mac visor display" ;;
        sim/device) echo "platform" ;;
        sim/host) echo "platform platform/linux sim/device" ;;
        sim) echo "platform sim/device" ;;
        virtual) echo "platform sim/device" ;;
        # The record of devices loaded listens to the main screen's loads.
        record) echo "platform common firmware serial ethernet mac visor display control" ;;
        operator) echo "platform common firmware serial ethernet mac visor display control" ;;
        gui) echo "platform platform/qt common firmware serial ethernet mac visor display control" ;;
        app) echo "platform platform/linux platform/qt common firmware serial ethernet mac visor display control record operator gui" ;;
    esac
}

# The system's own folders: standard C++ headers only.
system_folders="platform common firmware serial ethernet mac visor display control record"

fail() {
    echo "$1"
    failures=$((failures + 1))
}

check_folder() {
    local folder=$1 ok=" $1 $(allowed "$1") " file line target
    for file in "$folder"/*.cpp "$folder"/*.h; do
        [ -e "$file" ] || continue
        while IFS= read -r line; do
            target=${line#*\"}
            target=${target%\"*}
            target=${target%/*}
            if [ "$folder" = app ] && [ "$file" = app/firmcast_sim_main.cpp ] &&
                [[ $target == sim || $target == sim/host ]]; then
                continue
            fi
            [[ $ok == *" $target "* ]] || fail "$file includes $target/, which $folder/ may not use"
        done < <(grep -h '^#include "' "$file")
        if [[ " $system_folders " == *" $folder "* ]]; then
            while IFS= read -r line; do
                fail "$file includes the system header $line; the system reaches the machine through platform/"
            done < <(grep -h '^#include <' "$file" | grep -E '\.h>|<Q')
        fi
    done
}

for folder in platform platform/linux platform/qt common firmware serial ethernet mac visor display \
              control record sim/device sim/host sim virtual operator gui app; do
    check_folder "$folder"
done

# The programs' link lines, where a build is at hand: the last command
# ninja runs to make each program.
link_line() {
    ninja -C "$build" -t commands "$1" 2>/dev/null | tail -n 1
}
if [ -n "$build" ] && command -v ninja >/dev/null && [ -f "$build/build.ninja" ]; then
    for program in firmcast firmcast-batch firmcast-macdb firmcast-sim; do
        link=$(link_line "$program")
        [ -n "$link" ] || continue
        [[ $link == *" -o bin/$program "* ]] || fail "no link line found for $program"
        [[ $link == *libfc_virtual.a* ]] && fail "$program links the virtual world"
        [[ $link == *libfc_operator.a* ]] && [ "$program" != firmcast-batch ] &&
            fail "$program links the scripted operator"
        if [ "$program" != firmcast-sim ] && [[ $link =~ libfc_sim(_host|_device)?\.a ]]; then
            fail "$program links the simulators"
        fi
    done
    # The network helper holds capabilities: it links nothing of ours, no
    # toolkit and no database.
    link=$(link_line firmcast-net-helper)
    if [[ $link != *" -o bin/firmcast-net-helper "* ]]; then
        fail "no link line found for firmcast-net-helper"
    elif [[ $link =~ libfc_|Qt6|odbc|sqlite ]]; then
        fail "firmcast-net-helper links more than its own sources"
    fi
fi

if [ "$failures" -gt 0 ]; then
    echo "$failures layering faults"
    exit 1
fi
echo "layering: every folder includes only what it may"
