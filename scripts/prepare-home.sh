#!/usr/bin/env bash
# Prepares the program's folder (where config.ini, the log folder and the
# site's tools live): the folder of the programs unless FIRMCAST_HOME says
# otherwise. Safe to run again.
#
# The MAC database: unless odbc.ini (ODBCINI, else odbc.ini in the program's
# folder) already names the data source "MacConnection", it gets one on the
# embedded engine, SQLite through the SQLite ODBC driver, in the file
# MacConnection.db of the program's folder; then the two tables and the
# counter's row are created where missing.
set -euo pipefail
bin=${1:?usage: prepare-home.sh BIN_DIR}
home=${FIRMCAST_HOME:-$bin}
mkdir -p "$home"
home=$(cd "$home" && pwd)

odbc_ini=${ODBCINI:-$home/odbc.ini}
if ! grep -qs '^\[MacConnection\]' "$odbc_ini"; then
    # The busy time-out is always given (milliseconds): a station that finds
    # the counter taken by another waits for it rather than failing at once.
    cat >>"$odbc_ini" <<INI
[MacConnection]
Description=Firmcast MAC database (embedded)
Driver=SQLite3
Database=$home/MacConnection.db
Timeout=100000
JournalMode=WAL
SyncPragma=NORMAL
INI
fi
if [ -x "$bin/firmcast-macdb" ]; then
    ODBCINI=$odbc_ini "$bin/firmcast-macdb" init >/dev/null ||
        echo "prepare-home: the MAC database of $odbc_ini could not be prepared" >&2
fi
