#!/usr/bin/env bash
# The real program under a private Xvfb, as an operator starts it:
#  - "firmcast" shows its window titled "Firmware Loader 1.22 A";
#  - "firmcast 7" shows a box titled "Firmcast" (the parameter is not valid),
#    and once the box is answered the program ends, without its main window.
# Exit 77 (skipped) where Xvfb, xwininfo or xdotool is missing.
set -u
firmcast=${1:?usage: firmcast_start_test.sh PATH_TO_FIRMCAST}
for tool in Xvfb xwininfo xdotool; do
    command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done

display=""
for n in $(seq 120 160); do
    [ -e "/tmp/.X$n-lock" ] || { display=":$n"; break; }
done
Xvfb "$display" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
home=$(mktemp -d)
cleanup() { kill "$xvfb" 2>/dev/null; [ -n "${app:-}" ] && kill "$app" 2>/dev/null; rm -rf "$home"; }
trap cleanup EXIT
export DISPLAY=$display FIRMCAST_HOME=$home
for _ in $(seq 50); do xwininfo -root >/dev/null 2>&1 && break; sleep 0.1; done

# Waits up to 20 s for a window whose name is exactly $1.
wait_for_window() {
    for _ in $(seq 200); do
        xwininfo -root -tree 2>/dev/null | grep -q "\"$1\"" && return 0
        sleep 0.1
    done
    return 1
}

fail=0
"$firmcast" & app=$!
if wait_for_window "Firmware Loader 1.22 A"; then
    echo "ok: firmcast shows \"Firmware Loader 1.22 A\""
else
    echo "FAIL: no window \"Firmware Loader 1.22 A\""; fail=1
fi
kill "$app"; wait "$app" 2>/dev/null; app=""

"$firmcast" 7 & app=$!
if wait_for_window "Firmcast"; then
    echo "ok: firmcast 7 shows its box"
    if xwininfo -root -tree | grep -q '"Firmware Loader 1.22 A"'; then
        echo "FAIL: the main window is shown behind the box"; fail=1
    fi
    xdotool search --name '^Firmcast$' windowactivate --sync key Return 2>/dev/null ||
        xdotool search --name '^Firmcast$' key --window %1 Return
    for _ in $(seq 100); do kill -0 "$app" 2>/dev/null || break; sleep 0.1; done
    if kill -0 "$app" 2>/dev/null; then
        echo "FAIL: firmcast 7 goes on after its box"; fail=1
    else
        wait "$app"; status=$?
        echo "ok: firmcast 7 ended (status $status)"
        [ "$status" -ne 0 ] || { echo "FAIL: firmcast 7 ended with status 0"; fail=1; }
    fi
else
    echo "FAIL: firmcast 7 shows no box"; fail=1
fi
app=""
exit $fail
