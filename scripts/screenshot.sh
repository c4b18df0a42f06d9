#!/usr/bin/env bash
# Takes a screenshot of a GUI program under a private Xvfb display, so it works
# without any display (CI). Starts Xvfb, starts the program on it, waits for
# the program's window to be shown, photographs it with ImageMagick's import,
# writes a PNG and stops the program and Xvfb again.
#
# Usage: scripts/screenshot.sh [options] [PROGRAM [ARGS...]]
#   PROGRAM           default: build/bin/firmcast
#   -o, --out PATH    the PNG to write (default: docs/screenshots/NAME.png)
#   -n, --name NAME   the picture's name (default: PROGRAM's file name)
#   -t, --title TEXT  wait for a window whose title contains TEXT
#                     (default: the first window the program shows)
#   -s, --size WxH    size of the virtual screen (default: 1280x1024)
#   --root            photograph the whole screen, not only the window
#   --settle SECONDS  time the window gets to paint once shown (default: 1)
#   --timeout SECONDS how long to wait for Xvfb and the window (default: 30)
#
# Exit status: 0 the PNG is written; 1 it failed; 2 bad usage; 77 Xvfb,
# xwininfo or import is missing (the caller may count that as skipped).
set -euo pipefail

top=$(cd "$(dirname "$0")/.." && pwd)
out="" name="" title="" size=1280x1024 root=0 settle=1 timeout=30

usage() { sed -n '6,17p' "$0" | sed 's/^# \{0,1\}//' >&2; exit 2; }

while [[ $# -gt 0 ]]; do
    case $1 in
        -o|--out) out=$2; shift 2 ;;
        -n|--name) name=$2; shift 2 ;;
        -t|--title) title=$2; shift 2 ;;
        -s|--size) size=$2; shift 2 ;;
        --root) root=1; shift ;;
        --settle) settle=$2; shift 2 ;;
        --timeout) timeout=$2; shift 2 ;;
        -h|--help) usage ;;
        --) shift; break ;;
        -*) echo "screenshot: unknown option $1" >&2; usage ;;
        *) break ;;
    esac
done
program=${1:-$top/build/bin/firmcast}
[[ $# -gt 0 ]] && shift
name=${name:-$(basename "$program")}
out=${out:-$top/docs/screenshots/$name.png}

for tool in Xvfb xwininfo import; do
    if ! command -v "$tool" >/dev/null; then
        echo "screenshot: skipped, $tool is not installed" >&2
        exit 77
    fi
done
if [[ ! -x $program ]]; then
    echo "screenshot: no program $program (build it first)" >&2
    exit 1
fi

work=$(mktemp -d)
xvfb_pid="" program_pid=""

stop() {
    local pid=$1
    [[ -n $pid ]] && kill -0 "$pid" 2>/dev/null || return 0
    kill "$pid" 2>/dev/null || true
    for _ in $(seq 20); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
    kill -9 "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
}
cleanup() {
    stop "$program_pid"
    stop "$xvfb_pid"
    rm -rf "$work"
}
trap cleanup EXIT

fail() {
    echo "screenshot: $1" >&2
    for log in "$work"/*.log; do
        [[ -s $log ]] && { echo "--- $(basename "$log"):" >&2; tail -n 20 "$log" >&2; }
    done
    exit 1
}

# Waits up to the time-out for `$@` to succeed.
wait_for() {
    local tries=$((timeout * 10))
    for _ in $(seq "$tries"); do
        "$@" && return 0
        sleep 0.1
    done
    return 1
}

# Xvfb picks a free display number itself and writes it when it is ready.
Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3>"$work/display" >"$work/xvfb.log" 2>&1 &
xvfb_pid=$!
xvfb_ready() {
    kill -0 "$xvfb_pid" 2>/dev/null || fail "Xvfb did not start"
    [[ -s $work/display ]]
}
wait_for xvfb_ready || fail "Xvfb gave no display within ${timeout} s"
export DISPLAY=":$(head -n 1 "$work/display")"

QT_QPA_PLATFORM=xcb "$program" "$@" >"$work/program.log" 2>&1 &
program_pid=$!

# The first top-level window that is shown (and has the title asked for).
# Nothing else runs on this display, so every window is the program's.
window_id=""
find_window() {
    kill -0 "$program_pid" 2>/dev/null || fail "the program ended before it showed a window"
    local id info
    for id in $(xwininfo -root -children 2>/dev/null | grep -oE '^ +0x[0-9a-f]+'); do
        info=$(xwininfo -id "$id" 2>/dev/null) || continue
        grep -q 'Map State: IsViewable' <<<"$info" || continue
        [[ -z $title ]] || head -n 2 <<<"$info" | grep -qF -- "$title" || continue
        window_id=$id
        return 0
    done
    return 1
}
wait_for find_window || fail "no window${title:+ titled \"$title\"} within ${timeout} s"
sleep "$settle"

mkdir -p "$(dirname "$out")"
target=$window_id
[[ $root -eq 1 ]] && target=root
import -display "$DISPLAY" -window "$target" "png:$out" 2>"$work/import.log" || fail "import failed"
[[ $(head -c 4 "$out" | tail -c 3) == PNG ]] || fail "$out is not a PNG"
echo "screenshot: $out"
