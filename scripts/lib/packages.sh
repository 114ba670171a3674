# SPDX-License-Identifier: MIT
# shellcheck shell=bash
#
# For the scripts beside this folder: installs what Debian packages are missing, and ends with one clear line when
# something fails.

# fail TEXT: one line on the standard error, then the end.
fail() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# step TEXT COMMAND...: says what comes and runs it; a failure of the command is the script's, named by TEXT.
step() {
  local what=$1
  shift
  printf '\n== %s\n' "$what"
  "$@" || fail "failed: $what"
}

# need_packages NAME...: prints the packages that are missing and installs them with apt-get, as root or by sudo.
need_packages() {
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
    fail "this is no Debian system; install by hand what these Debian packages hold: $*"
  local name missing=() root=()
  for name in "$@"; do
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) == installed ]] || missing+=("$name")
  done
  ((${#missing[@]})) || return 0
  printf 'Installing Debian packages: %s\n' "${missing[*]}"
  if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "run this as root, or install sudo, to install: ${missing[*]}"
    root=(sudo)
  fi
  step "apt-get update" "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
  step "apt-get install" "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends "${missing[@]}"
}
