"""Loading: the prototypes follow the header, every export is bound, and an
installed copy of the package finds the library next to itself."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import k_bond
from k_bond import _library
from k_bond._prototypes import PROTOTYPES

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


class Loading(unittest.TestCase):
    def test_prototypes_are_generated_from_the_current_header(self):
        script = os.path.join(ROOT, "scripts", "generate_python_prototypes.py")
        proc = subprocess.run([sys.executable, script, "--check"], capture_output=True,
                              text=True)
        self.assertEqual(proc.returncode, 0, proc.stderr)

    def test_every_export_of_the_header_is_bound(self):
        with open(os.path.join(ROOT, "include", "k_bond.h")) as f:
            declared = set(re.findall(r"KVL_API\s+(KVL\w+)\s*\(", f.read()))
        self.assertEqual(set(PROTOTYPES), declared)
        self.assertEqual(_library.missing_exports(), ())
        lib = _library.library()
        for name, (restype, arguments) in PROTOTYPES.items():
            fn = getattr(lib, name)
            self.assertEqual(len(fn.argtypes), len(arguments), name)
            self.assertIs(fn.restype, restype, name)

    def test_versions(self):
        self.assertEqual(k_bond.library_version(), "v2002.0p0nt")
        with open(os.path.join(ROOT, "CMakeLists.txt")) as f:
            cmake = re.search(r"project\(k_bond VERSION ([\d.]+)", f.read()).group(1)
        self.assertEqual(k_bond.__version__, cmake)

    def test_a_copied_package_finds_the_library_next_to_itself(self):
        with tempfile.TemporaryDirectory() as tmp:
            package = os.path.join(tmp, "site", "k_bond")
            shutil.copytree(os.path.dirname(k_bond.__file__), package,
                            ignore=shutil.ignore_patterns("__pycache__", "*.so", "*.dll"))
            shutil.copy(k_bond.library_path(), os.path.join(package, _library.LIBRARY_FILES[0]))
            env = {k: v for k, v in os.environ.items() if k not in ("KBOND_LIBRARY", "PYTHONPATH")}
            env["PYTHONPATH"] = os.path.join(tmp, "site")
            code = "import k_bond; print(k_bond.library_path()); print(k_bond.library_version())"
            out = subprocess.run([sys.executable, "-c", code], env=env, cwd=tmp,
                                 capture_output=True, text=True, check=True).stdout.split()
        self.assertEqual(out, [os.path.join(package, _library.LIBRARY_FILES[0]), "v2002.0p0nt"])


if __name__ == "__main__":
    unittest.main()
