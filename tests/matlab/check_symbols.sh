#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# check_symbols.sh MODULE [SONAME...]
#
# Checks what a module shows its host and what it wants of it. Both modules export mexFunction and mexVersion only.
# With SONAMEs the module is MATLAB's: these libraries, the fifteen operations, mxIsSparse weak, no libstdc++, and no
# symbol of a glibc later than 2.17, which is the oldest that a user may have.
set -euo pipefail
module=$1
shift

same() {  # WHAT EXPECTED ACTUAL
  [[ $2 == "$3" ]] || { printf '%s: wrong %s\n%s\n' "$module" "$1" "$(diff <(echo "$2") <(echo "$3"))"; exit 1; }
}
symbols() { nm -D "$module" | awk -v types="$1" -v name="$2" '$(NF-1) ~ types && $NF ~ name { print $NF }' | sort; }
lines() { printf '%s\n' "$@" | sort; }

same "exports" "$(lines mexFunction mexVersion)" "$(symbols '^[^Uvw]$' .)"
if readelf -d "$module" | grep -E 'RPATH|RUNPATH'; then exit 1; fi
(($#)) || exit 0

same "imports" "$(lines mexErrMsgTxt mexPrintf mxArrayToString mxCreateNumericArray_700 mxGetClassID mxGetM mxGetN \
  mxGetNumberOfDimensions_700 mxGetNumberOfElements mxGetPr mxIsChar mxIsDouble mxIsEmpty mxIsLogical mxIsNumeric)" \
  "$(symbols '^U$' '^m(e)?x')"
same "weak imports" mxIsSparse "$(symbols '^[vw]$' '^m(e)?x')"
needed=$(readelf -d "$module" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
same "host libraries" "$(lines "$@")" "$(grep '^libm[exa]' <<<"$needed" | sort)"
if grep 'libstdc++' <<<"$needed"; then exit 1; fi

versions=$(objdump -T "$module" | grep -o 'GLIBC_[0-9.]*' | sort -Vu)
printf "symbol versions: %s\n" "${versions//$'\n'/ }"
if [[ $(printf '%s\n' "$versions" GLIBC_2.17 | sort -V | tail -n 1) != GLIBC_2.17 ]]; then exit 1; fi
