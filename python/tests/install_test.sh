#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# install_test.sh PYTHON FOLDER: what users do, without a network: a source package, which holds the headers, a wheel of
# it, and an installed package that runs its examples.
set -euo pipefail
python=$1 folder=$2
source=$(cd "$(dirname "$0")/.." && pwd -P)
unset PYTHONPATH
rm -rf "$folder"
mkdir -p "$folder"
cp -RL "$source" "$folder/source"  # the build writes beside the sources
cd "$folder"
"$python" -m build --no-isolation --outdir dist source >log 2>&1 || { cat log; exit 1; }
tar -tzf dist/*.tar.gz | grep /include/qel/morpho/attribute_profile.hpp >/dev/null
"$python" -m venv --system-site-packages venv
venv/bin/pip install --quiet --no-index --no-deps dist/*.whl
venv/bin/python -m pytest -q -p no:cacheprovider --doctest-modules --pyargs attribute_profile
venv/bin/python - <<'END'
import importlib.metadata, importlib.resources, attribute_profile
assert importlib.metadata.version("attribute-profile") == attribute_profile.__version__
assert importlib.resources.files(attribute_profile).joinpath("py.typed").is_file()
END
