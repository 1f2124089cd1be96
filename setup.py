"""Builds the shared library with CMake while the package is built, and puts
it inside the package, so that an installed k_bond needs no environment
variable. Metadata lives in pyproject.toml.

CMake and a C++20 compiler must be on PATH; KBOND_JOBS sets the build jobs
(default 2)."""

import os
import shutil
import subprocess

from setuptools import setup
from setuptools.command.build_py import build_py
from setuptools.dist import Distribution

ROOT = os.path.dirname(os.path.abspath(__file__))
LIBRARY_FILES = ("k_bond.dll", "libk_bond.so", "libk_bond.dylib")


class BuildWithLibrary(build_py):
    """build_py that also builds the k_bond target and copies the library
    into the built package."""

    def run(self):
        super().run()
        build_dir = os.path.join(self.get_finalized_command("build").build_temp, "k_bond")
        configure = ["cmake", "-S", ROOT, "-B", build_dir, "-DCMAKE_BUILD_TYPE=Release",
                     "-DKBOND_BUILD_TESTS=OFF", "-DKBOND_BUILD_BENCH=OFF"]
        if shutil.which("ninja") and not os.path.exists(os.path.join(build_dir, "CMakeCache.txt")):
            configure += ["-G", "Ninja"]
        subprocess.run(configure, check=True)
        jobs = os.environ.get("KBOND_JOBS", "2")
        subprocess.run(["cmake", "--build", build_dir, "--config", "Release", "--target", "k_bond",
                        "-j", jobs], check=True)
        built = [os.path.join(d, name) for d in (build_dir, os.path.join(build_dir, "Release"))
                 for name in LIBRARY_FILES]
        library = next((p for p in built if os.path.exists(p)), None)
        if library is None:
            raise RuntimeError(f"CMake built no k_bond library in {build_dir}")
        target = os.path.join(self.build_lib, "k_bond")
        os.makedirs(target, exist_ok=True)
        self.copy_file(library, os.path.join(target, os.path.basename(library)))


class BinaryDistribution(Distribution):
    """The wheel carries a compiled library: tag it with the platform."""

    def has_ext_modules(self):
        return True


commands = {"build_py": BuildWithLibrary}
try:
    from wheel.bdist_wheel import bdist_wheel

    class PlatformWheel(bdist_wheel):
        """Any Python 3 on this platform: the library is loaded through
        ctypes, not linked against the interpreter."""

        def get_tag(self):
            return ("py3", "none", super().get_tag()[2])

    commands["bdist_wheel"] = PlatformWheel
except ImportError:
    pass

setup(cmdclass=commands, distclass=BinaryDistribution)
