#!/usr/bin/env bash
# Prepares the program's folder (where config.ini, the log folder and the
# site's tools live): the folder of the programs unless FIRMCAST_HOME says
# otherwise. Safe to run again.
set -euo pipefail
bin=${1:?usage: prepare-home.sh BIN_DIR}
home=${FIRMCAST_HOME:-$bin}
mkdir -p "$home"
