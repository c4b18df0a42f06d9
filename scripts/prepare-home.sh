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

# The graphic display's driver: the folder korvacom with the driver program
# korvacom and its switch file Korctrl.txt. A site's own driver put there is
# never replaced; the Linux driver built here is installed when there is none,
# and refreshed while it is the one installed here (the marker file says so).
korvacom=$home/korvacom
mkdir -p "$korvacom"
if [ -x "$bin/firmcast-korvacom" ]; then
    if [ ! -e "$korvacom/korvacom" ] || [ -e "$korvacom/.installed-by-firmcast" ]; then
        cp -f "$bin/firmcast-korvacom" "$korvacom/korvacom.new"
        mv -f "$korvacom/korvacom.new" "$korvacom/korvacom"
        touch "$korvacom/.installed-by-firmcast"
    fi
fi
if ! ls "$korvacom" | grep -qix 'korctrl.txt'; then
    # The first switch file: serial on COM1 at 19200 baud, 8 bits, no parity;
    # the loader rewrites the switches it knows before each load.
    printf '%s\r\n' '-v 19200' '-p COM1' '-b 8' '-t TX.TXT' '-r RX.TXT' '-a 0' '-e 0' \
        '-m 0' '-d 00#127.0.0.1:3000' '-E 1' '-j 3001,3000' '-A 1' >"$korvacom/Korctrl.txt"
fi

# The display screen's database: Database/KorvaFirmcast.mdb, an SQLite file
# with its parameter table, made when missing.
database=$home/Database/KorvaFirmcast.mdb
if [ ! -e "$database" ]; then
    mkdir -p "$home/Database"
    sqlite3 "$database" "CREATE TABLE DAT_Parametro (Parametro TEXT PRIMARY KEY, ValorParametro TEXT);
INSERT INTO DAT_Parametro VALUES ('VERSION', 'D');" ||
        echo "prepare-home: the display database $database could not be made" >&2
fi
