"""Builds the Python package twzo_units with the project's CMake build.

The extension module and the two libraries it needs go inside the package, so a wheel
carries everything. CMake, a C++17 compiler, Boost headers and pybind11 must be there
(scripts/deps.sh installs them on Debian).
"""

import os
import pathlib
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).resolve().parent


class CMakeBuild(build_ext):
    def build_extension(self, ext):
        build = pathlib.Path(self.build_temp).resolve() / "cmake"
        staging = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent.parent
        subprocess.run(
            [
                "cmake", "-S", str(ROOT), "-B", str(build),
                "-DCMAKE_BUILD_TYPE=Release",
                "-DTW_BUILD_TESTS=OFF",
                "-DTW_BUILD_PYTHON=ON",
                "-DTW_PYTHON_BUNDLE_LIBRARIES=ON",
                "-DTW_PYTHON_INSTALL_DIR=.",
                f"-DPython3_EXECUTABLE={sys.executable}",
            ],
            check=True,
        )
        jobs = str(os.cpu_count() or 1)
        subprocess.run(["cmake", "--build", str(build), "--target", "twzo_units_python", "-j", jobs], check=True)
        subprocess.run(
            ["cmake", "--install", str(build), "--component", "python", "--prefix", str(staging)], check=True
        )


setup(
    packages=["twzo_units"],
    package_dir={"": "python"},
    package_data={"twzo_units": ["__init__.pyi", "py.typed"]},
    ext_modules=[Extension("twzo_units._native", sources=[])],
    cmdclass={"build_ext": CMakeBuild},
    zip_safe=False,
)
