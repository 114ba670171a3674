#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# install_test.sh PYTHON FOLDER VERSION: what users do, without a network: a source package, which holds the headers, a
# wheel of it, and an installed package of that version that runs its examples.
set -euo pipefail
python=$1 folder=$2 version=$3
project=$(cd "$(dirname "$0")/../.." && pwd -P)
unset PYTHONPATH
rm -rf "$folder"
mkdir -p "$folder/source"
cp -RL "$project/CMakeLists.txt" "$project/python" "$folder/source"  # the build writes beside the sources
cd "$folder"
"$python" -m build --no-isolation --outdir dist source/python >log 2>&1 || { cat log; exit 1; }
tar -tzf dist/*.tar.gz | grep /include/qel/morpho/attribute_profile.hpp >/dev/null
"$python" -m venv --system-site-packages venv
venv/bin/pip install --quiet --no-index --no-deps dist/*.whl
venv/bin/python -m pytest -q -p no:cacheprovider --doctest-modules --pyargs attribute_profile
venv/bin/python - "$version" <<'END'
import importlib.metadata, importlib.resources, sys, attribute_profile
assert importlib.metadata.version("attribute-profile") == attribute_profile.__version__ == sys.argv[1]
assert importlib.resources.files(attribute_profile).joinpath("py.typed").is_file()
END
