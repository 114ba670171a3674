#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# filter_pgm.sh PROGRAM: runs the example on small pictures worked out by hand, and on faulty calls.
set -u
program=$1
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
failures=0

# opens AREA INPUT OUTPUT: the program makes the file OUTPUT of the file INPUT, both given as text for printf %b.
opens() {
  printf '%b' "$2" >"$dir/in.pgm"
  printf '%b' "$3" >"$dir/expected.pgm"
  if ! "$program" "$dir/in.pgm" "$dir/out.pgm" "$1" || ! cmp "$dir/expected.pgm" "$dir/out.pgm"; then
    printf 'FAILED with area %s: %s\n' "$1" "$2"
    failures=$((failures + 1))
  fi
}

# fails STATUS TEXT ARGUMENT...: the program ends with STATUS and exactly the line TEXT on its standard error.
fails() {
  local status=$1 text=$2 output got
  shift 2
  output=$("$program" "$@" 2>&1)
  got=$?
  if [[ $got != "$status" || $output != "$text" ]]; then
    printf 'FAILED (%s): %s\n  got %s: %s\n' "$*" "$text" "$got" "$output"
    failures=$((failures + 1))
  fi
}

# refuses TEXT INPUT: the program rejects the file INPUT.
refuses() {
  printf '%b' "$2" >"$dir/in.pgm"
  fails 1 "filter_pgm: $1" "$dir/in.pgm" "$dir/out.pgm" 3
}

plain='P2\n6 3\n9\n1 5 5 1 9 1\n1 5 1 1 8 1\n0 1 1 1 1 1\n'
opens 0 "$plain" "$plain"
opens 2 "P2 # a comment\n6 3 9 # and one more\n${plain#P2?n6 3?n9?n}" "${plain/9 1/8 1}"
opens 3 "$plain" 'P2\n6 3\n9\n1 5 5 1 1 1\n1 5 1 1 1 1\n0 1 1 1 1 1\n'
opens 4 "$plain" 'P2\n6 3\n9\n1 1 1 1 1 1\n1 1 1 1 1 1\n0 1 1 1 1 1\n'
opens 2 'P5\n3 3\n255\n\0aa\0cb\377aa' 'P5\n3 3\n255\n\0aa\0bbaaa'
# Two bytes a sample, the high one first: "1a" < "1b" < "a1".
opens 2 'P5\n3 1\n65535\n1aa11b' 'P5\n3 1\n65535\n1a1b1b'

fails 2 'usage: filter_pgm input.pgm output.pgm AREA'
fails 1 "filter_pgm: cannot read $dir/none.pgm" "$dir/none.pgm" "$dir/out.pgm" 3
printf 'P2 1 1 9 5' >"$dir/in.pgm"
fails 1 "filter_pgm: cannot write $dir/none/out.pgm" "$dir/in.pgm" "$dir/none/out.pgm" 3
for area in '' -1 3x 4294967296; do
  fails 1 'filter_pgm: AREA is not a number of pixels' "$dir/in.pgm" "$dir/out.pgm" "$area"
done
refuses 'not a PGM file' 'P6 1 1 9 5'
refuses 'missing or bad height (1 to 32765)' 'P2 1 32766 9 1'
refuses 'missing or bad greatest value (1 to 65535)' 'P5 1 1 65536\n1'
refuses 'missing or bad sample' 'P2 1 1 9 10'
refuses 'the file ends before the last sample' 'P5 2 1 65535\nabc'
refuses 'a sample exceeds the greatest value' 'P5 1 1 96\na'
exit $((failures > 0))
