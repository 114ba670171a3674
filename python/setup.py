# SPDX-License-Identifier: MIT
"""Compiles the module `_attribute_profile`; all else stands in pyproject.toml."""
import glob

from pybind11.setup_helpers import ParallelCompile, Pybind11Extension
from setuptools import setup

# A fused multiply-add would change the sums of the attributes: see the flag's reason in ../CMakeLists.txt.
module = Pybind11Extension(
    "attribute_profile._attribute_profile",
    sorted(glob.glob("src/*.cpp") + glob.glob("src/types/*.cpp")),
    include_dirs=["include"],
    cxx_std=17,
    extra_compile_args=["-O3", "-g0", "-ffp-contract=off"],
    extra_link_args=["-pthread"],
)

ParallelCompile().install()
setup(ext_modules=[module])
