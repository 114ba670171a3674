# SPDX-License-Identifier: MIT
"""Compiles the module `_attribute_profile` and gives the version; all else stands in pyproject.toml."""
import glob
import pathlib
import re

from pybind11.setup_helpers import ParallelCompile, Pybind11Extension
from setuptools import setup


def read_version():
    """The project's version. A source package, which has left the project, has it in its metadata."""
    file, line = pathlib.Path("PKG-INFO"), r"Version: (\S+)"
    if not file.exists():
        file, line = pathlib.Path("../CMakeLists.txt"), r"project\(.* VERSION (\S+)"
    return re.search("^" + line, file.read_text(), re.MULTILINE)[1]


version = read_version()
# A fused multiply-add would change the sums of the attributes: see the flag's reason in ../CMakeLists.txt.
module = Pybind11Extension(
    "attribute_profile._attribute_profile",
    sorted(glob.glob("src/*.cpp") + glob.glob("src/types/*.cpp")),
    include_dirs=["include"],
    define_macros=[("ATTRIBUTE_PROFILE_VERSION", f'"{version}"')],
    cxx_std=17,
    extra_compile_args=["-O3", "-g0", "-ffp-contract=off"],
    extra_link_args=["-pthread"],
)

ParallelCompile().install()
setup(version=version, ext_modules=[module])
