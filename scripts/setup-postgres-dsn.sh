#!/usr/bin/env bash
# Sets up the shared MAC database on PostgreSQL, for several stations on one
# counter: creates the database when it is missing, writes its data source
# through psqlODBC into odbc.ini, and creates the two tables and the
# counter's row there (firmcast-macdb init). Run it on every station with
# the same server; safe to run again.
#
#   setup-postgres-dsn.sh [--host H] [--port P] [--user U] [--password W]
#                         [--database D] [--dsn NAME] [--ini FILE]
#
# Defaults: host localhost, port 5432, user firmcast, database firmcast_mac,
# data source MacConnection, odbc.ini in the program's folder (ODBCINI,
# else FIRMCAST_HOME, else build/bin). The user must exist on the server
# and be allowed to create the database, or the database must exist.
# A host that begins with "/" is the folder of the server's Unix socket.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
host=localhost port=5432 user=firmcast password="" database=firmcast_mac dsn=MacConnection
home=${FIRMCAST_HOME:-$top/build/bin}
ini=${ODBCINI:-$home/odbc.ini}
while [ $# -gt 0 ]; do
    case "$1" in
        --host) host=$2 ;;
        --port) port=$2 ;;
        --user) user=$2 ;;
        --password) password=$2 ;;
        --database) database=$2 ;;
        --dsn) dsn=$2 ;;
        --ini) ini=$2 ;;
        *) echo "setup-postgres-dsn: unknown option $1" >&2; exit 2 ;;
    esac
    shift 2
done

export PGHOST=$host PGPORT=$port PGUSER=$user PGPASSWORD=$password
exists=$(psql -d postgres -Atc "SELECT 1 FROM pg_database WHERE datname = '$database'")
if [ "$exists" != 1 ]; then
    psql -d postgres -qc "CREATE DATABASE \"$database\""
fi

# The data source's section, in place of any earlier one of the same name.
mkdir -p "$(dirname "$ini")"
touch "$ini"
awk -v name="[$dsn]" '
    /^\[/ { skip = ($0 == name) }
    !skip { print }' "$ini" >"$ini.new"
cat >>"$ini.new" <<INI
[$dsn]
Description=Firmcast MAC database (shared)
Driver=PostgreSQL ANSI
Servername=$host
Port=$port
Database=$database
Username=$user
Password=$password
INI
mv "$ini.new" "$ini"

tool=${FIRMCAST_MACDB:-$top/build/bin/firmcast-macdb}
ODBCINI=$ini "$tool" --dsn "$dsn" init
echo "Data source $dsn in $ini points at $database on $host:$port"
