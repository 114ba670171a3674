# SPDX-License-Identifier: MIT
"""Compiles the module `_attribute_profile`; all else stands in pyproject.toml."""
import glob
import sys

import pybind11
from pybind11.setup_helpers import ParallelCompile, Pybind11Extension
from setuptools import Extension, setup

# A fused multiply-add would change the sums of the attributes: see the flag's reason in ../CMakeLists.txt.
name = "attribute_profile._attribute_profile"
sources = sorted(glob.glob("src/*.cpp") + glob.glob("src/types/*.cpp"))
flags = ["-O3", "-g0", "-ffp-contract=off"]

if sys.platform == "win32":
    # MinGW-w64's GCC, with its run-time in the module: Microsoft's compiler knows neither the flag nor all sources.
    options = {"build_ext": {"compiler": "mingw32"}}
    module = Extension(name, sources, include_dirs=["include", pybind11.get_include()], language="c++",
                       extra_compile_args=[*flags, "-DNDEBUG", "-std=c++17", "-fvisibility=hidden"],
                       extra_link_args=["-static"])
else:
    options = {}
    module = Pybind11Extension(name, sources, include_dirs=["include"], cxx_std=17, extra_compile_args=flags,
                               extra_link_args=["-pthread"])

ParallelCompile().install()
setup(ext_modules=[module], options=options)
