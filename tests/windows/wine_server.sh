#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# wine_server.sh start|stop FOLDER WINESERVER EMULATOR...
#
# Wine's programs of one FOLDER share a server, which Debian has end with the last of them: a program that starts at that
# moment is refused ("Connection reset by peer"), and the first one's output stays open as long as the server runs. So one
# server is started before the tests, with Wine's services, and is there until they are all done. What an interrupted run
# leaves behind ends by itself ten minutes after its last program.
set -euo pipefail
what=$1 wineserver=$3
export WINEPREFIX=$2
emulator=("${@:4}")

mkdir -p "$WINEPREFIX"
"$wineserver" -k || true  # none runs, as a rule
"$wineserver" -w
if [[ $what == start ]]; then
  "$wineserver" -p600 >/dev/null 2>&1
  "${emulator[@]}" wineboot --init >/dev/null 2>&1
fi
