#!/usr/bin/env bash
# Takes the screenshots of the main screen for the documentation, under Xvfb
# (scripts/screenshot.sh): the model step of each kind of device, the kinds
# of G scale behind the boot ROM button, the way
# step on RS-232 and on Ethernet, the file step with a folder of firmware
# files, the scale list of the Ethernet way with three scales, a load in
# progress, an Ethernet load of three scales in progress and at its end, the
# scale record form, the graphic display's load screen, and the visor screen
# during a load and at its end. The program
# firmcast_screens walks the real screen to each of
# them. Writes docs/screenshots/firmcast-<scene>.png.
#
# Usage: scripts/firmcast_screenshots.sh [SCENE...]   (default: all)
#   BUILD_DIR  the build folder (default: build)
#   OUT_DIR    where the pictures go (default: docs/screenshots)
#   SIZE       the virtual screen, such as 1024x600 (default: 1280x1024)
# Exit status as scripts/screenshot.sh: 77 when Xvfb or ImageMagick is missing.
set -euo pipefail

top=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$top/build}
case $build in /*) ;; *) build=$top/$build ;; esac
out=${OUT_DIR:-$top/docs/screenshots}
size=${SIZE:-1280x1024}
program=$build/bin/firmcast_screens

# Each scene and how long it is left to come on screen; the load is given
# time to be well on its way.
declare -A settle=(
    [model-scales]=2 [model-labellers]=2 [model-visors]=2 [boot-rom]=2
    [way-rs232]=2 [way-ethernet]=2 [file]=2 [scales]=3 [load]=7
    [ethernet-load]=6 [ethernet-end]=12 [record-form]=6 [display]=6
    [visor-load]=4 [visor-end]=9
)
# The window photographed, when it is not the main one.
# The visor's scenes photograph the visor's own window, once it is on RS-232
# with COM2.
declare -A titles=([record-form]="Scale Data" [visor-load]="Firmcast working on port COM2"
    [visor-end]="Firmcast working on port COM2")
scenes=("$@")
[[ ${#scenes[@]} -gt 0 ]] || scenes=(model-scales model-labellers model-visors boot-rom way-rs232 way-ethernet file scales load
                                     ethernet-load ethernet-end record-form display visor-load visor-end)

for scene in "${scenes[@]}"; do
    [[ -n ${settle[$scene]:-} ]] || { echo "firmcast_screenshots: no scene $scene" >&2; exit 2; }
    title_option=()
    [[ -z ${titles[$scene]:-} ]] || title_option=(--title "${titles[$scene]}")
    "$top/scripts/screenshot.sh" --out "$out/firmcast-$scene.png" --settle "${settle[$scene]}" \
        --size "$size" "${title_option[@]}" \
        "$program" "$scene"
done
