#!/usr/bin/env bash
# Builds ORXDB, creates the starter tool database beside the program, shows tools of it, looks
# machining data up for one, and adds and deletes a tool.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/install-packages.sh
cmake --preset release
cmake --build --preset release --target orxdb ORXDB

unset ORXDB_DATABASE
orxdb=build/release/bin/orxdb
show() {
  printf '\n$ orxdb'
  local argument
  for argument in "$@"; do
    case $argument in
      *[!A-Za-z0-9_,-]*) printf ' "%s"' "$argument" ;;
      *) printf ' %s' "$argument" ;;
    esac
  done
  printf '\n'
  "$orxdb" "$@"
}

if [ -e build/release/CAM/TOOLS/tools.mdb ]; then
  echo "Keeping the tool database of an earlier run, build/release/CAM/TOOLS/tools.mdb."
else
  show create
fi
show types
show list TAP --where "Thread_Series = 'M' AND Diameter BETWEEN 3 AND 12" --order "Diameter DESC" \
  --columns Name,Diameter,Pitch,Tap_Drill,Material,TappingHead
show list FLAT_END_MILL --where "Unit = 'in' AND Name LIKE '*1/2*'" --order "Diameter, Name" \
  --columns Name,Diameter,Unit,Flute_Length,Material,Coating
show feeds END_MILLING_FS --material "Alloy steel" --hardness 200
show heads 6
show factor T25 0.22
show add FLAT_END_MILL Name="Demo end mill" Diameter=6 Unit=mm Material=HSS
show list FLAT_END_MILL --where "Name = 'Demo end mill'" --columns Name,Diameter,Unit,Material
added=$("$orxdb" list FLAT_END_MILL --where "Name = 'Demo end mill'" --columns ID --csv | tail -n +2 | tr -d '\r')
# shellcheck disable=SC2086 # one word for each tool
show delete FLAT_END_MILL $added
