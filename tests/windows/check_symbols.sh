#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# check_symbols.sh OBJDUMP MODULE
#
# Checks what the module for Windows shows its host and what it wants: two exports, of the host the operations alone,
# and beside it nothing but the system's own libraries.
set -euo pipefail
objdump=$1 module=$2
same() {  # WHAT EXPECTED ACTUAL
  [[ $2 == "$3" ]] || { printf '%s: wrong %s\n%s\n' "$module" "$1" "$(diff <(echo "$2") <(echo "$3"))"; exit 1; }
}
lines() { printf '%s\n' "$@" | sort; }

headers=$("$objdump" -p "$module")
imports_of() {
  awk -v library="$1" '/DLL Name:/ { wanted = $3 == library } wanted && /^\t[0-9a-f]+\t/ { print $NF }' <<<"$headers" | sort
}
same "exports" "$(lines mexFunction mexVersion)" \
  "$(awk '/^\[Ordinal\/Name Pointer\] Table/ { found = 1; next } !NF { found = 0 } found { print $NF }' <<<"$headers" | sort)"
libraries=$(awk '/DLL Name:/ { print $3 }' <<<"$headers" | sort)
printf 'imports: %s\n' "${libraries//$'\n'/ }"
same "libraries" "$(lines KERNEL32.dll libmex.dll libmx.dll msvcrt.dll)" "$libraries"
same "imports of libmex" "$(lines mexErrMsgTxt mexPrintf)" "$(imports_of libmex.dll)"
same "imports of libmx" "$(lines mxArrayToString mxCreateNumericArray_700 mxGetClassID mxGetM mxGetN \
  mxGetNumberOfDimensions_700 mxGetNumberOfElements mxGetPr mxIsChar mxIsDouble mxIsEmpty mxIsLogical mxIsNumeric \
  mxIsSparse)" "$(imports_of libmx.dll)"
