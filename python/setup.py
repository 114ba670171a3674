# SPDX-License-Identifier: MIT
"""Compiles the module `_attribute_profile` and gives the version; all else stands in pyproject.toml."""
import glob
import pathlib
import re
import sys

import pybind11
from pybind11.setup_helpers import ParallelCompile, Pybind11Extension
from setuptools import Extension, setup


def read_version():
    """The project's version. A source package, which has left the project, has it in its metadata."""
    file, line = pathlib.Path("PKG-INFO"), r"Version: (\S+)"
    if not file.exists():
        file, line = pathlib.Path("../CMakeLists.txt"), r"project\(.* VERSION (\S+)"
    return re.search("^" + line, file.read_text(), re.MULTILINE)[1]


version = read_version()
# A fused multiply-add would change the sums of the attributes: see the flag's reason in ../CMakeLists.txt.
name = "attribute_profile._attribute_profile"
sources = sorted(glob.glob("src/*.cpp") + glob.glob("src/types/*.cpp"))
flags = ["-O3", "-g0", "-ffp-contract=off"]
macros = [("ATTRIBUTE_PROFILE_VERSION", f'"{version}"')]

if sys.platform == "win32":
    # MinGW-w64's GCC, with its run-time in the module: Microsoft's compiler knows neither the flag nor all sources.
    options = {"build_ext": {"compiler": "mingw32"}}
    module = Extension(name, sources, include_dirs=["include", pybind11.get_include()], language="c++",
                       define_macros=macros, extra_compile_args=[*flags, "-DNDEBUG", "-std=c++17", "-fvisibility=hidden"],
                       extra_link_args=["-static"])
else:
    options = {}
    module = Pybind11Extension(name, sources, include_dirs=["include"], define_macros=macros, cxx_std=17,
                               extra_compile_args=flags, extra_link_args=["-pthread"])

ParallelCompile().install()
setup(version=version, ext_modules=[module], options=options)
