#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# version_test.sh VERSION DATE [PAGE]: the files that repeat the version of CMakeLists.txt agree with it, and so does the
# manual page; what the citation format asks for is there.
set -euo pipefail
version=$1 date=$2
cd "$(dirname "$0")/.."

fail() { printf 'FAILED: %s\n' "$1"; exit 1; }
for line in 'cff-version: 1\.2\.0' 'message: .+' 'title: .+' 'authors:' '  - name: The attribute_profile authors' \
            "version: ${version//./\\.}" "date-released: $date"; do
  grep -Eqx -- "$line" CITATION.cff || fail "CITATION.cff: no line '$line'"
done
[[ $(grep -m 1 '^## [0-9]' CHANGELOG.md) == "## $version ($date)" ]] || fail "CHANGELOG.md: another version or date"
for other in $(grep -Eoh '[_-][0-9]+\.[0-9]+\.[0-9]+' README.md docs/*.md python/README.md | sort -u); do
  [[ ${other:1} == "$version" ]] || fail "documents: a file of version ${other:1}"
done
[[ -z ${3-} ]] || grep -Eq "^\.TH .*attribute-profile ${version//./\\.}\"" "$3" || fail "$3: another version"
