#!/usr/bin/env bash
# Sets up everything on a fresh Debian 12 machine and starts Firmcast:
# installs what is missing, builds into build/, prepares the program's
# folder (with its MAC database), then runs build/bin/firmcast with the
# given level (0..3).
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/deps.sh"
"$top/scripts/build.sh"
home=${FIRMCAST_HOME:-$top/build/bin}
# The data sources of the program, "MacConnection" among them.
export ODBCINI=${ODBCINI:-$home/odbc.ini}
"$top/scripts/prepare-home.sh" "$top/build/bin"
"$top/scripts/grant-network-caps.sh" "$top/build/bin"
exec "$top/build/bin/firmcast" "$@"
